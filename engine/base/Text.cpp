#include "base/Text.h"

#include <charconv>

namespace digits {
namespace {

constexpr std::array<char, 40'004> makeFour()
{
    std::array<char, 40'004> table{};
    for (unsigned value = 0; value < 10'000; ++value) {
        unsigned rest = value;
        for (unsigned digit = 4; digit-- > 0; rest /= 10) {
            table[4 * value + digit] = static_cast<char>('0' + rest % 10);
        }
    }
    return table;
}

}    // namespace

// Four bytes more, since always four are copied.
constexpr std::array<char, 40'004> four = makeFour();

char* putLarge(char* out, std::uint64_t value)
{
    if (value >= 100'000'000) {
        return std::to_chars(out, out + numberRoom, value).ptr;
    }
    out = putUpToFour(out, static_cast<unsigned>(value / 10'000));
    std::memcpy(out, &four[4 * (value % 10'000)], 4);
    return out + 4;
}

}    // namespace digits

void Text::grow(std::size_t bytes)
{
    constexpr std::size_t least = std::size_t{1} << 12;
    buffer.resize(2 * buffer.size() + bytes + least);
}
