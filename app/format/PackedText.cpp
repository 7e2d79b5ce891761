#include "format/PackedText.h"

namespace {

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
    constexpr const char* digits = "0123456789abcdef";
    for (const std::uint8_t byte : packed) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
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
