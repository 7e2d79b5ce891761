#include "framing/parity.h"

#include <bit>
#include <initializer_list>

namespace framing {
namespace {

struct Equation {
    bool startsWithD29;    // else with D30 of the previous word
    std::uint32_t data;    // the data bits that enter the sum
};

constexpr Equation equation(int previousBit, std::initializer_list<unsigned> dataBits)
{
    std::uint32_t mask = 0;
    for (const unsigned bit : dataBits) {
        mask |= 1U << (24 - bit);
    }
    return {previousBit == 29, mask};
}

// D25 to D30.
constexpr std::array<Equation, 6> equations = {
    equation(29, {1, 2, 3, 5, 6, 10, 11, 12, 13, 14, 17, 18, 20, 23}),
    equation(30, {2, 3, 4, 6, 7, 11, 12, 13, 14, 15, 18, 19, 21, 24}),
    equation(29, {1, 3, 4, 5, 7, 8, 12, 13, 14, 15, 16, 19, 20, 22}),
    equation(30, {2, 4, 5, 6, 8, 9, 13, 14, 15, 16, 17, 20, 21, 23}),
    equation(30, {1, 3, 5, 6, 7, 9, 10, 14, 15, 16, 17, 18, 21, 22, 24}),
    equation(29, {3, 5, 6, 8, 9, 10, 11, 13, 15, 19, 22, 23, 24}),
};

constexpr std::uint32_t computeParity(std::uint32_t data, bool d29, bool d30)
{
    std::uint32_t parity = 0;
    for (const Equation& sum : equations) {
        const bool odd = (std::popcount(data & sum.data) & 1) != 0;
        const bool bit = odd != (sum.startsWithD29 ? d29 : d30);
        parity = parity << 1 | (bit ? 1U : 0U);
    }
    return parity;
}

constexpr std::uint32_t syndromeOf(std::uint32_t received)
{
    const bool d29 = (received & 0x80000000U) != 0;
    const bool d30 = (received & 0x40000000U) != 0;
    return computeParity(dataOf(received), d29, d30) ^ (received & 0x3F);
}

constexpr SyndromeTable makeSyndromeTable()
{
    SyndromeTable table{};
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        for (std::uint32_t value = 0; value < 256; ++value) {
            table[byte][value] = static_cast<std::uint8_t>(syndromeOf(value << (8 * byte)));
        }
    }
    return table;
}

}    // namespace

constexpr SyndromeTable syndromeTable = makeSyndromeTable();

std::uint32_t parityOf(std::uint32_t data, bool d29, bool d30)
{
    return computeParity(data, d29, d30);
}

std::uint32_t encodeWord(std::uint32_t data, std::uint32_t previous)
{
    const bool d29 = (previous & 2) != 0;
    const bool d30 = (previous & 1) != 0;
    const std::uint32_t sent = (d30 ? ~data : data) & dataMask;
    return sent << 6 | parityOf(data, d29, d30);
}

}    // namespace framing
