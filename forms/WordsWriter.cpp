#include "forms/WordsWriter.h"

#include "forms/UnitForm.h"
#include "framing/Frame.h"
#include "framing/parity.h"

bool WordsWriter::append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out)
{
    if (!framing::isWholeMessage(packed)) {
        return false;
    }
    for (std::size_t i = 0; i < packed.size(); i += framing::bytesPerWord) {
        const std::uint32_t data = packedUnits.data(&packed[i]);
        lastWord = framing::encodeWord(data, lastWord);
        const std::uint32_t unit = data << 6 | (lastWord & 0x3F);
        for (int shift = 0; shift < 32; shift += 8) {
            out.push_back(static_cast<std::uint8_t>(unit >> shift));
        }
    }
    return true;
}
