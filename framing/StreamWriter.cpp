#include "framing/StreamWriter.h"

#include "framing/Frame.h"
#include "framing/parity.h"

namespace framing {
namespace {

// Six bits as a byte 01xxxxxx, the first bit of the stream lowest.
std::uint8_t sextetOf(std::uint32_t bits)
{
    std::uint32_t reversed = 0;
    for (int i = 0; i < 6; ++i) {
        reversed = reversed << 1 | (bits >> i & 1);
    }
    return static_cast<std::uint8_t>(0x40 | reversed);
}

}    // namespace

std::uint32_t writeWords(std::span<const std::uint8_t> packed, std::uint32_t previous,
                         std::uint8_t* stream)
{
    for (std::size_t i = 0; i < packed.size(); i += bytesPerWord) {
        const auto data =
            static_cast<std::uint32_t>(packed[i] << 16 | packed[i + 1] << 8 | packed[i + 2]);
        previous = encodeWord(data, previous);
        for (int shift = 24; shift >= 0; shift -= 6) {
            *stream++ = sextetOf(previous >> shift & 0x3F);
        }
    }
    return previous;
}

bool StreamWriter::append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& stream)
{
    if (!isWholeMessage(packed)) {
        return false;
    }
    const std::size_t before = stream.size();
    stream.resize(before + packed.size() / bytesPerWord * streamBytesPerWord);
    lastWord_ = writeWords(packed, lastWord_, &stream[before]);
    return true;
}

}    // namespace framing
