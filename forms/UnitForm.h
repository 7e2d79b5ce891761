// Forms whose words stand in units of a few whole bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// How a word of 24 data bits stands in its unit.
struct UnitForm {
    const char* name;
    std::size_t size;             // bytes of a unit
    std::size_t preambleBytes;    // bytes of a unit that show whether it has the preamble
    std::uint32_t (*data)(const std::uint8_t* unit);
    bool (*hasPreamble)(const std::uint8_t* unit);
    // How many of the units of a message have good parity before one has not; null without parity.
    std::size_t (*goodWords)(std::span<const std::uint8_t> units);
    bool isRecording;    // the units are a receiver's own
    bool hasLineEnds;    // a line end may stand between messages

    std::size_t
    words(const std::uint8_t* header) const;    // that a header declares, itself included
    bool isLineEnd(std::uint8_t byte) const
    {
        return hasLineEnds && (byte == '\n' || byte == '\r');
    }
};

// Packed messages: three bytes a word, first bit highest.
extern const UnitForm packedUnits;
// A receiver's recording: a little-endian number of 32 bits a word, data in bits 6 to 29. What its
// parity bits hold does not count.
extern const UnitForm recordedUnits;
// The same with parity in bits 0 to 5, of a word as it follows the one before in the recording.
extern const UnitForm recordedUnitsWithParity;
