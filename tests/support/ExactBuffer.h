// A heap block of exactly the bytes it is given, so that a sanitizer sees every access beyond them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class ExactBuffer {
public:
    explicit ExactBuffer(std::size_t size, std::uint8_t fill = 0)
        : m_bytes(new std::uint8_t[size]), m_size(size)
    {
        std::fill_n(m_bytes.get(), size, fill);
    }
    explicit ExactBuffer(const std::vector<std::uint8_t>& bytes) : ExactBuffer(bytes.size())
    {
        std::copy(bytes.begin(), bytes.end(), m_bytes.get());
    }

    std::uint8_t* data() { return m_bytes.get(); }
    std::uint16_t size() const { return static_cast<std::uint16_t>(m_size); }
    std::vector<std::uint8_t> bytes() const { return {m_bytes.get(), m_bytes.get() + m_size}; }

private:
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::size_t m_size;
};
