// Words of 30 bits: 24 data bits and 6 parity bits, as in the GPS navigation message.
#pragma once

#include <array>
#include <cstdint>

namespace framing {

inline constexpr unsigned bitsPerWord = 30;
inline constexpr std::uint32_t dataMask = 0xFFFFFF;
inline constexpr std::uint32_t wordMask = 0x3FFFFFFF;

// The six parity bits D25..D30 (D30 lowest) of the 24 data bits d1..d24 (d1 highest), after a word
// whose last two bits were d29 and d30.
std::uint32_t parityOf(std::uint32_t data, bool d29, bool d30);

// A word as it is sent (30 bits, D1 highest): after a word that ended in a one, data bits are
// inverted. `previous` is the word sent before, of which only the last two bits matter.
std::uint32_t encodeWord(std::uint32_t data, std::uint32_t previous);

// The functions below take a word as received in the low 30 bits and, in the two bits above them,
// the last two bits of the word before: D29* in bit 31 and D30* in bit 30. In a stream these 32
// bits simply follow each other.

// The 24 data bits, with the inversion undone.
constexpr std::uint32_t dataOf(std::uint32_t received)
{
    const std::uint32_t inverted = (received & 0x40000000U) != 0 ? dataMask : 0;
    return ((received >> 6) & dataMask) ^ inverted;
}

using SyndromeTable = std::array<std::array<std::uint8_t, 256>, 4>;
extern const SyndromeTable syndromeTable;

// True when all six parity bits are right. Parity is linear in the 32 bits, so that the syndrome of
// a word is the sum of the syndromes of its four bytes.
inline bool hasGoodParity(std::uint32_t received)
{
    return (syndromeTable[0][received & 0xFF] ^ syndromeTable[1][(received >> 8) & 0xFF] ^
            syndromeTable[2][(received >> 16) & 0xFF] ^ syndromeTable[3][received >> 24]) == 0;
}

}    // namespace framing
