// Bit fields one bit at a time: slow, obvious, and independent of the code under test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace slow {

inline bool bit(const std::vector<std::uint8_t>& bytes, std::size_t position)
{
    return (bytes.at(position / 8) & (0x80 >> position % 8)) != 0;
}

inline void setBit(std::vector<std::uint8_t>& bytes, std::size_t position, bool on)
{
    const unsigned mask = 0x80U >> position % 8;
    std::uint8_t& byte = bytes.at(position / 8);
    byte = static_cast<std::uint8_t>(on ? byte | mask : byte & ~mask);
}

inline std::uint64_t read(const std::vector<std::uint8_t>& bytes, std::size_t offset,
                          unsigned width)
{
    std::uint64_t value = 0;
    for (unsigned i = 0; i < width; ++i) {
        value = value * 2 + (bit(bytes, offset + i) ? 1 : 0);
    }
    return value;
}

// Bits of value beyond 64 count as 0.
inline void write(std::vector<std::uint8_t>& bytes, std::size_t offset, unsigned width,
                  std::uint64_t value)
{
    for (unsigned i = 0; i < width; ++i) {
        const unsigned weight = width - 1 - i;
        setBit(bytes, offset + i, weight < 64 && (value >> weight & 1) != 0);
    }
}

// `target` with the first `count` bits of `source` at bit `at`.
inline std::vector<std::uint8_t> overlay(std::vector<std::uint8_t> target, std::size_t at,
                                         const std::vector<std::uint8_t>& source, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        setBit(target, at + i, bit(source, i));
    }
    return target;
}

}    // namespace slow
