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

bool StreamWriter::append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& stream)
{
    if (!isWholeMessage(packed)) {
        return false;
    }
    for (std::size_t i = 0; i < packed.size(); i += bytesPerWord) {
        const auto data =
            static_cast<std::uint32_t>(packed[i] << 16 | packed[i + 1] << 8 | packed[i + 2]);
        lastWord_ = encodeWord(data, lastWord_);
        for (int shift = 24; shift >= 0; shift -= 6) {
            stream.push_back(sextetOf(lastWord_ >> shift & 0x3F));
        }
    }
    return true;
}

}    // namespace framing
