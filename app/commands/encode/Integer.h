// Integers as people give them.
#pragma once

#include <cstdint>
#include <string>

// An integer of either sign of up to 64 bits.
struct Integer {
    std::uint64_t bits = 0;    // two's complement
    bool negative = false;

    std::string text() const
    {
        return negative ? std::to_string(static_cast<std::int64_t>(bits)) : std::to_string(bits);
    }
    bool operator==(const Integer&) const = default;
};
