#include "StreamBuilder.h"

#include <array>
#include <string_view>

namespace {

// One line for each parity bit: the bit of the word before, then d1 to d24.
struct Equation {
    int previousBit;
    std::string_view terms;
};

constexpr std::array<Equation, 6> equations = {{
    {29, "111.11...11111..11.1..1."},
    {30, ".111.11...11111..11.1..1"},
    {29, "1.111.11...11111..11.1.."},
    {30, ".1.111.11...11111..11.1."},
    {30, "1.1.111.11...11111..11.1"},
    {29, "..1.11.1111.1.1...1..111"},
}};

}    // namespace

std::uint32_t referenceParity(std::uint32_t data, bool d29, bool d30)
{
    std::uint32_t parity = 0;
    for (const Equation& equation : equations) {
        bool sum = equation.previousBit == 29 ? d29 : d30;
        for (unsigned i = 0; i < 24; ++i) {
            const bool dataBit = (data >> (23 - i) & 1) != 0;
            sum = sum != (dataBit && equation.terms[i] == '1');
        }
        parity = parity * 2 + (sum ? 1 : 0);
    }
    return parity;
}

Bytes makeMessage(std::size_t dataWords, std::mt19937& random, unsigned station)
{
    Bytes message(3 * (2 + dataWords));
    for (std::uint8_t& byte : message) {
        byte = static_cast<std::uint8_t>(random());
    }
    message[0] = 0x66;
    message[1] = static_cast<std::uint8_t>((message[1] & 0xFCU) | station >> 8);
    message[2] = static_cast<std::uint8_t>(station);
    message[5] = static_cast<std::uint8_t>(dataWords << 3 | (message[5] & 7U));
    return message;
}

void StreamBuilder::addBits(std::uint32_t bits, unsigned count)
{
    for (unsigned i = count; i-- > 0;) {
        bits_.push_back((bits >> i & 1) != 0);
    }
}

void StreamBuilder::addNoise(std::size_t count, std::mt19937& random)
{
    for (std::size_t i = 0; i < count; ++i) {
        bits_.push_back((random() & 1) != 0);
    }
}

void StreamBuilder::addMessage(std::span<const std::uint8_t> packed)
{
    for (std::size_t i = 0; i + 2 < packed.size(); i += 3) {
        addWord(packed[i] * 65536U + packed[i + 1] * 256U + packed[i + 2]);
    }
}

Bytes StreamBuilder::addRandom(std::size_t dataWords, std::mt19937& random, unsigned station)
{
    Bytes message = makeMessage(dataWords, random, station);
    addMessage(message);
    return message;
}

void StreamBuilder::addWord(std::uint32_t data)
{
    const bool d29 = bits_.size() >= 2 && bits_[bits_.size() - 2];
    const bool d30 = bits_.size() >= 2 && bits_[bits_.size() - 1];
    addBits(d30 ? data ^ 0xFFFFFF : data, 24);
    addBits(referenceParity(data, d29, d30), 6);
}

void StreamBuilder::erase(std::size_t bit, std::size_t count)
{
    const auto begin = bits_.begin() + static_cast<std::ptrdiff_t>(bit);
    bits_.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
}

Bytes StreamBuilder::bytes() const
{
    Bytes bytes((bits_.size() + 5) / 6, 0x40);
    for (std::size_t i = 0; i < bits_.size(); ++i) {
        if (bits_[i]) {
            bytes[i / 6] = static_cast<std::uint8_t>(bytes[i / 6] | 1U << i % 6);
        }
    }
    return bytes;
}
