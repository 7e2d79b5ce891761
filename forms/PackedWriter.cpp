#include "forms/PackedWriter.h"

#include "framing/Frame.h"

bool PackedWriter::append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out)
{
    if (!framing::isWholeMessage(packed)) {
        return false;
    }
    out.insert(out.end(), packed.begin(), packed.end());
    return true;
}
