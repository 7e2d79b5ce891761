#include "forms/UnitForm.h"

#include "framing/Frame.h"
#include "framing/parity.h"

namespace {

constexpr std::size_t recordedSize = 4;
constexpr unsigned parityBits = 6;
constexpr std::uint32_t parityMask = 0x3F;

std::uint32_t dataOfPacked(const std::uint8_t* unit)
{
    return static_cast<std::uint32_t>(unit[0] << 16 | unit[1] << 8 | unit[2]);
}

std::uint32_t wordOfRecorded(const std::uint8_t* unit)
{
    return static_cast<std::uint32_t>(unit[0] | unit[1] << 8 | unit[2] << 16) |
           static_cast<std::uint32_t>(unit[3]) << 24;
}

std::uint32_t dataOfRecorded(const std::uint8_t* unit)
{
    return wordOfRecorded(unit) >> parityBits & framing::dataMask;
}

bool isPackedPreamble(const std::uint8_t* unit)
{
    return unit[0] == framing::preamble;
}

bool isRecordedPreamble(const std::uint8_t* unit)
{
    return dataOfRecorded(unit) >> 16 == framing::preamble;
}

// Whether a word has good parity after one that ended in these two bits.
bool isGoodAfter(std::uint32_t lastBits, const std::uint8_t* unit)
{
    const std::uint32_t parity =
        framing::parityOf(dataOfRecorded(unit), (lastBits & 2) != 0, (lastBits & 1) != 0);
    return parity == (wordOfRecorded(unit) & parityMask);
}

// What stood before the first word is not known.
std::size_t goodRecordedWords(std::span<const std::uint8_t> units)
{
    const std::uint8_t* const first = units.data();
    if (!isGoodAfter(0, first) && !isGoodAfter(1, first) && !isGoodAfter(2, first) &&
        !isGoodAfter(3, first)) {
        return 0;
    }
    std::size_t good = 1;
    while ((good + 1) * recordedSize <= units.size() &&
           isGoodAfter(wordOfRecorded(&units[(good - 1) * recordedSize]),
                       &units[good * recordedSize])) {
        ++good;
    }
    return good;
}

}    // namespace

std::size_t UnitForm::words(const std::uint8_t* header) const
{
    return framing::headerWords + (data(header + (framing::headerWords - 1) * size) >> 3 & 0x1F);
}

const UnitForm packedUnits{.name = "packed",
                           .size = framing::bytesPerWord,
                           .preambleBytes = 1,
                           .data = dataOfPacked,
                           .hasPreamble = isPackedPreamble,
                           .goodWords = nullptr,
                           .isRecording = false,
                           .hasLineEnds = true};

const UnitForm recordedUnits{.name = "words",
                             .size = recordedSize,
                             .preambleBytes = recordedSize,
                             .data = dataOfRecorded,
                             .hasPreamble = isRecordedPreamble,
                             .goodWords = nullptr,
                             .isRecording = true,
                             .hasLineEnds = false};

const UnitForm recordedUnitsWithParity{.name = "words",
                                       .size = recordedSize,
                                       .preambleBytes = recordedSize,
                                       .data = dataOfRecorded,
                                       .hasPreamble = isRecordedPreamble,
                                       .goodWords = goodRecordedWords,
                                       .isRecording = true,
                                       .hasLineEnds = false};
