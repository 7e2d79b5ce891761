// The bits of an AIS message, as its sentences carry them: six in a character.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

class AisBits {
public:
    // More than a message can have that is read here; what comes behind is left out.
    static constexpr std::size_t most = 1024;

    // Appends a payload without its last bits, which are fill. False, and the bits are good for
    // nothing, when it has a character that stands for no bits.
    [[nodiscard]] bool append(std::string_view payload, unsigned fillBits);
    // Appends the lowest bits of a number, highest first.
    void append(std::uint32_t number, unsigned bits);

    std::size_t size() const { return count; }
    std::uint32_t numberAt(std::size_t begin, unsigned bits) const;
    std::int32_t signedAt(std::size_t begin, unsigned bits) const;    // two's complement
    // All bytes; zeros follow the last bit.
    std::span<const std::uint8_t> bytes() const { return storage; }

    // The characters for all bits, the last one filled up with zeros.
    std::string payload() const;
    unsigned fillBits() const { return static_cast<unsigned>((6 - count % 6) % 6); }

private:
    std::array<std::uint8_t, most / 8> storage{};
    std::size_t count = 0;
};
