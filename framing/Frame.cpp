#include "framing/Frame.h"

namespace framing {

std::size_t declaredWords(std::span<const std::uint8_t> packed)
{
    // The third byte of the second word: five bits of count, three bits of health.
    const std::size_t countByte = packed[headerWords * bytesPerWord - 1];
    return headerWords + (countByte >> 3);
}

bool isWholeMessage(std::span<const std::uint8_t> packed)
{
    return packed.size() >= headerWords * bytesPerWord && packed[0] == preamble &&
           packed.size() == declaredWords(packed) * bytesPerWord;
}

}    // namespace framing
