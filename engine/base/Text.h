// Text that is put together fast: a growing buffer and numbers written into it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

// Two ways to write: append() piece by piece, or, where many small pieces follow each other, one
// room() for all of them, filled through a pointer by the put...() functions below, and end().
class Text {
public:
    // Where so many bytes may be written.
    char* room(std::size_t bytes)
    {
        if (buffer.size() - used < bytes) {
            grow(bytes);
        }
        return buffer.data() + used;
    }
    // What was written into the room ends here.
    void end(const char* behind) { used = static_cast<std::size_t>(behind - buffer.data()); }

    void append(std::string_view text)
    {
        if (!text.empty()) {    // nothing may have no address
            std::memcpy(room(text.size()), text.data(), text.size());
            used += text.size();
        }
    }
    void append(char character)
    {
        *room(1) = character;
        ++used;
    }

    std::string_view view() const { return {buffer.data(), used}; }
    std::size_t size() const { return used; }
    bool isEmpty() const { return used == 0; }
    // Replaces a character that was written before.
    void replace(std::size_t place, char character) { buffer[place] = character; }
    // Takes back what was written from a place on.
    void cut(std::size_t place) { used = place; }
    // Keeps the memory for what comes next.
    void clear() { used = 0; }

private:
    void grow(std::size_t bytes);

    std::vector<char> buffer;
    std::size_t used = 0;
};

// The most bytes that a put...() of a number writes to; more than the digits it has.
inline constexpr std::size_t numberRoom = 24;

namespace digits {

// The numbers below 10,000 with leading zeros.
extern const std::array<char, 40'004> four;
char* putLarge(char* out, std::uint64_t value);

inline char* putUpToFour(char* out, unsigned value)
{
    const unsigned count =
        1U + (value > 9 ? 1U : 0U) + (value > 99 ? 1U : 0U) + (value > 999 ? 1U : 0U);
    std::memcpy(out, &four[4 * value + 4 - count], 4);
    return out + count;
}

}    // namespace digits

// Write a number in decimal digits and give the place behind it; up to numberRoom bytes there may
// be overwritten.
inline char* putUnsigned(char* out, std::uint64_t value)
{
    return value < 10'000 ? digits::putUpToFour(out, static_cast<unsigned>(value))
                          : digits::putLarge(out, value);
}

inline char* putSigned(char* out, std::int64_t value)
{
    const std::uint64_t bits = static_cast<std::uint64_t>(value);
    *out = '-';
    return value < 0 ? putUnsigned(out + 1, 0 - bits) : putUnsigned(out, bits);
}

inline void appendUnsigned(Text& text, std::uint64_t value)
{
    text.end(putUnsigned(text.room(numberRoom), value));
}
