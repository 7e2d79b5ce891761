// Writes packed messages as a stream of bytes.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace framing {

inline constexpr std::size_t streamBytesPerWord = 5;

// Writes the words of a packed message to `stream`, which must have room for them, after a word of
// which only the last two bits matter. Returns the last word written.
std::uint32_t writeWords(std::span<const std::uint8_t> packed, std::uint32_t previous,
                         std::uint8_t* stream);

// Words follow each other through the whole stream: the last two bits of a word enter the next one,
// of the same message or of the following. Before the first word they are zeros. A word is five
// bytes, so that messages begin and end with a byte.
class StreamWriter {
public:
    // Appends a packed message, three bytes a word, to `stream`. Returns false, and appends
    // nothing, when `packed` does not begin with the preamble or has not the words that its header
    // declares: no reader would find it again.
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& stream);

private:
    std::uint32_t lastWord_ = 0;
};

}    // namespace framing
