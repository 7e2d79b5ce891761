// What speaks for one form in the first bytes of an input.
#pragma once

#include "forms/PacketReader.h"

#include <cstddef>
#include <memory>

class Witness {
public:
    virtual ~Witness() = default;

    // Looks at all bytes from the input's first one on. Each time there are some more.
    virtual void look(std::span<const std::uint8_t> seen) = 0;

    // The input ends with the bytes seen last.
    virtual void finish() {}

    // Whether what was seen is no accident. Stays so, however much more is seen.
    virtual bool isCertain() const = 0;

    // After finish(): whether the input has this form from its first byte to its last.
    virtual bool fits() const { return false; }

    // Whether the form has parity or a structure that tells when it is taken for what it is not.
    virtual bool vouches() const = 0;

    // Messages found in a row.
    virtual unsigned messages() const { return 0; }

    // How many bytes stand before the first message. They are nothing for the reader.
    virtual std::uint64_t bytesBefore() const { return 0; }

    // A reader for the input, which gets its bytes from this one on, that of the first message or
    // one behind it.
    virtual std::unique_ptr<PacketReader> makeReader(std::uint64_t firstByte) const = 0;
};

// How many of a message's words tell by their parity that it is one. Zeros, and the same word again
// and again, have good parity by themselves.
template <class DataOfWord>
std::size_t wordsThatTell(std::size_t words, DataOfWord dataOf)
{
    std::size_t telling = 0;
    std::uint32_t last = 0;
    for (std::size_t word = 0; word < words; ++word) {
        const std::uint32_t data = dataOf(word);
        telling += data != 0 && data != last ? 1 : 0;
        last = data;
    }
    return telling;
}

// Whether so many words of good parity in a row are no accident where messages were looked for in
// so many places. In one place, two header words are good by chance once in 2^23 times (preamble,
// parity, number of words), and each further word has six bits more to be wrong. What is taken for
// certain is wrong once in 4000 inputs of noise at most.
constexpr bool isNoAccident(std::size_t words, std::uint64_t places)
{
    constexpr std::size_t always = 8;
    return words >= always || (words > 1 && places < std::uint64_t{1} << (6 * words - 1));
}
