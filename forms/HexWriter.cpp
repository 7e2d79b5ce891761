#include "forms/HexWriter.h"

#include "forms/TimeStamp.h"
#include "framing/Frame.h"

bool HexWriter::append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out)
{
    if (!framing::isWholeMessage(packed)) {
        return false;
    }
    if (received && isTimeOfText(*received)) {
        const std::string time = timeText(*received) + ' ';
        out.insert(out.end(), time.begin(), time.end());
    }
    static constexpr char digits[] = "0123456789abcdef";
    for (const std::uint8_t byte : packed) {
        out.push_back(static_cast<std::uint8_t>(digits[byte >> 4]));
        out.push_back(static_cast<std::uint8_t>(digits[byte & 0xF]));
    }
    out.push_back('\n');
    return true;
}
