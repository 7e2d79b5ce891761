// What a framer finds in a stream.
#pragma once

#include "framing/Verdict.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace framing {

inline constexpr std::uint8_t preamble = 0x66;
inline constexpr std::size_t bytesPerWord = 3;
inline constexpr std::size_t headerWords = 2;
inline constexpr std::size_t headerBytes = headerWords * bytesPerWord;
inline constexpr std::size_t maxDataWords = 31;
inline constexpr std::size_t maxWords = headerWords + maxDataWords;
inline constexpr std::size_t maxMessageBytes = maxWords * bytesPerWord;

struct Frame {
    enum class Kind : std::uint8_t {
        message,      // every word has good parity
        damaged,      // see the verdict
        truncated,    // the input ended inside a message
    };

    Kind kind = Kind::message;
    Verdict verdict = Verdict::accepted;
    std::uint8_t failedWord = 0;      // damaged: which word failed, from 1; 0: no single one
    std::uint64_t number = 0;         // counts frames of all kinds, from 1
    std::uint64_t beginOffset = 0;    // byte of the input in which the first bit stands
    std::uint64_t endOffset = 0;      // one past the byte in which the last bit stands

    // The words packed to three bytes each, most significant bit first, data bits only. Of a
    // damaged or truncated message the words before the place where it broke off.
    std::span<const std::uint8_t> bytes() const
    {
        return std::span(storage).first(wordCount * bytesPerWord);
    }

    std::size_t wordCount = 0;
    std::array<std::uint8_t, maxMessageBytes> storage{};
};

// The number of words, header included, that the header of a packed message declares. Needs at
// least the two header words.
std::size_t declaredWords(std::span<const std::uint8_t> packed);

// True when `packed` begins with the preamble and has exactly the words that it declares.
bool isWholeMessage(std::span<const std::uint8_t> packed);

}    // namespace framing
