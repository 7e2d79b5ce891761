#include "forms/AisBits.h"

namespace {

constexpr unsigned bitsPerCharacter = 6;

// The value of a payload's character, or -1: '0' to 'W' and '`' to 'w'.
int valueOf(char character)
{
    if (character >= '0' && character <= 'W') {
        return character - '0';
    }
    return character >= '`' && character <= 'w' ? character - '`' + 40 : -1;
}

char characterOf(std::uint32_t value)
{
    return static_cast<char>(value < 40 ? '0' + value : '`' + (value - 40));
}

}    // namespace

bool AisBits::append(std::string_view payload, unsigned fillBits)
{
    for (std::size_t i = 0; i < payload.size(); ++i) {
        const int value = valueOf(payload[i]);
        if (value < 0) {
            return false;
        }
        const unsigned fill = i + 1 == payload.size() ? fillBits : 0;
        append(static_cast<std::uint32_t>(value) >> fill, bitsPerCharacter - fill);
    }
    return true;
}

void AisBits::append(std::uint32_t number, unsigned bits)
{
    for (unsigned bit = bits; bit-- > 0 && count < most; ++count) {
        const std::uint32_t value = number >> bit & 1;
        storage[count / 8] |= static_cast<std::uint8_t>(value << (7 - count % 8));
    }
}

std::uint32_t AisBits::numberAt(std::size_t begin, unsigned bits) const
{
    std::uint32_t number = 0;
    for (std::size_t at = begin; at < begin + bits; ++at) {
        const unsigned bit = at < most ? storage[at / 8] >> (7 - at % 8) & 1U : 0;
        number = number << 1 | bit;
    }
    return number;
}

std::int32_t AisBits::signedAt(std::size_t begin, unsigned bits) const
{
    const auto number = static_cast<std::int32_t>(numberAt(begin, bits));
    const std::int32_t sign = std::int32_t{1} << (bits - 1);
    return (number ^ sign) - sign;
}

std::string AisBits::payload() const
{
    std::string text;
    for (std::size_t at = 0; at < count; at += bitsPerCharacter) {
        text += characterOf(numberAt(at, bitsPerCharacter));
    }
    return text;
}
