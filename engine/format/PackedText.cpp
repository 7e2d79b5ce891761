#include "format/PackedText.h"

#include <algorithm>

namespace {

constexpr const char* hexDigits = "0123456789abcdef";

bool bitAt(std::span<const std::uint8_t> packed, std::size_t position)
{
    return (packed[position / 8] >> (7 - position % 8) & 1) != 0;
}

bool isUsualFill(std::span<const std::uint8_t> packed, std::size_t begin)
{
    const unsigned expected = begin % 2 == 0 ? 0xAA : 0x55;
    std::size_t byte = begin / 8;
    unsigned relevant = 0xFFU >> begin % 8;
    for (; byte < packed.size(); ++byte, relevant = 0xFF) {
        if (((packed[byte] ^ expected) & relevant) != 0) {
            return false;
        }
    }
    return true;
}

}    // namespace

void appendHex(std::string& text, std::span<const std::uint8_t> packed)
{
    for (const std::uint8_t byte : packed) {
        text += hexDigits[byte >> 4];
        text += hexDigits[byte & 15];
    }
}

void appendByteLines(Text& text, std::span<const std::uint8_t> bytes, std::string_view indent)
{
    constexpr std::size_t perLine = 16;
    for (std::size_t begin = 0; begin < bytes.size(); begin += perLine) {
        const auto line = bytes.subspan(begin, std::min(perLine, bytes.size() - begin));
        text.append(indent);
        text.append("0x");
        text.append(hexDigits[begin >> 4 & 15]);
        text.append(hexDigits[begin & 15]);
        for (std::size_t i = 0; i < perLine; ++i) {
            text.append(i % 4 == 0 ? "  " : " ");
            text.append(i < line.size() ? hexDigits[line[i] >> 4] : ' ');
            text.append(i < line.size() ? hexDigits[line[i] & 15] : ' ');
        }
        text.append("  ");
        for (const std::uint8_t byte : line) {
            text.append(byte >= ' ' && byte <= '~' ? static_cast<char>(byte) : '.');
        }
        text.append('\n');
    }
}

void appendUnusualFill(std::string& text, std::span<const std::uint8_t> packed, std::size_t begin)
{
    if (isUsualFill(packed, begin)) {
        return;
    }
    for (std::size_t bit = begin; bit < packed.size() * 8; ++bit) {
        text += bitAt(packed, bit) ? '1' : '0';
    }
}
