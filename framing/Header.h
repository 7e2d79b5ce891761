// What the two header words of a packed message say.
#pragma once

#include "framing/Frame.h"

#include <cstdint>
#include <span>

namespace framing {

// So many are there, from 0; sequence numbers go round through theirs.
inline constexpr unsigned messageTypes = 64;
inline constexpr unsigned sequenceNumbers = 8;

struct Header {
    unsigned type = 0;         // 6 bits
    unsigned station = 0;      // 10 bits
    unsigned zCount = 0;       // 13 bits, in units of 0.6 s of the hour
    unsigned sequence = 0;     // 3 bits
    unsigned dataWords = 0;    // 5 bits, words behind the header
    unsigned health = 0;       // 3 bits

    std::size_t words() const { return headerWords + dataWords; }
};

constexpr unsigned stationOf(std::uint32_t firstWord)
{
    return firstWord & 0x3FF;
}

// Of the data bits of the two words.
constexpr Header headerOf(std::uint32_t first, std::uint32_t second)
{
    return {first >> 10 & 0x3F, stationOf(first),    second >> 11,
            second >> 8 & 7,    second >> 3 & 0x1FU, second & 7};
}

// Needs at least the two header words.
inline Header headerOf(std::span<const std::uint8_t> packed)
{
    const auto word = [&](std::size_t at) {
        return static_cast<std::uint32_t>(packed[at] << 16 | packed[at + 1] << 8 | packed[at + 2]);
    };
    return headerOf(word(0), word(bytesPerWord));
}

// From one header to a later one, through the end of the hour, in units of 0.6 s.
constexpr unsigned waitBetween(const Header& earlier, const Header& later)
{
    constexpr unsigned unitsPerHour = 6000;
    return (later.zCount + unitsPerHour - earlier.zCount) % unitsPerHour;
}

// True when a station would send `later` after `earlier`: less than half a minute later, and with
// one of the next sequence numbers.
constexpr bool follows(const Header& later, const Header& earlier)
{
    constexpr unsigned longestWait = 50;
    constexpr unsigned numbers = 4;
    const unsigned wait = waitBetween(earlier, later);
    const unsigned step = (later.sequence - earlier.sequence) % sequenceNumbers;
    return later.station == earlier.station && wait < longestWait && step >= 1 && step <= numbers;
}

}    // namespace framing
