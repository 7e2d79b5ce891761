#include "format/BriefLine.h"

#include "format/FieldText.h"
#include "format/PackedText.h"
#include "framing/Frame.h"

#include <string>

namespace {

// What stands behind the header.
void appendUnknownContent(Text& text, std::span<const std::uint8_t> packed)
{
    text.append("unknown type");
    if (packed.size() > framing::headerBytes) {
        std::string digits = " 0x";
        appendHex(digits, packed.subspan(framing::headerBytes));
        text.append(digits);
    }
}

}    // namespace

BriefLine::BriefLine(const KindModel& kind, bool all)
    : sender(kind.field(RTCM2_MEANS_STATION)), typeField(kind.field(RTCM2_MEANS_TYPE)),
      health(kind.field(RTCM2_MEANS_HEALTH)), isUnknown(kind.isUnknown), content(kind, all)
{
    const FieldModel* const time = kind.field(RTCM2_MEANS_TIME);
    seconds = time != nullptr ? kind.quantityOf(*time) : nullptr;
}

std::optional<std::uint64_t> BriefLine::of(const FieldModel* field, const void* record)
{
    return field == nullptr ? std::nullopt
                            : std::optional(static_cast<std::uint64_t>(
                                  RTCM2_reader_integer(&field->reader, record, 0)));
}

std::optional<std::uint64_t> BriefLine::time(const void* record) const
{
    RTCM2_decimal_s decimal{};
    if (seconds == nullptr ||
        RTCM2_reader_quantity(&*seconds->quantity, record, &decimal) != RTCM2_ACCESS_DONE) {
        return std::nullopt;
    }
    std::uint64_t milliseconds = static_cast<std::uint64_t>(decimal.digits) * 1000;
    for (unsigned left = decimal.decimals; left > 0; --left) {
        milliseconds /= 10;
    }
    return milliseconds;
}

std::size_t BriefLine::appendContent(Text& text, const void* record,
                                     std::span<const std::uint8_t> packed) const
{
    const std::size_t begin = text.size();
    // The usual health is 0.
    if (health != nullptr && RTCM2_reader_integer(&health->reader, record, 0) != 0) {
        appendInterpreted(text, *health, record, true);
    }
    const std::size_t told = text.size() - begin;
    text.append(told != 0 ? ": " : "");
    if (isUnknown) {
        appendUnknownContent(text, packed);
    } else {
        content.append(text, record);
    }
    return told;
}

void appendClock(Text& text, std::uint64_t milliseconds)
{
    const std::uint64_t tenths = milliseconds / 100;
    const std::uint64_t minutes = tenths / 600;
    const auto digit = [](std::uint64_t number) { return static_cast<char>('0' + number % 10); };
    const char clock[] = {
        digit(minutes / 10), digit(minutes), ':', digit(tenths / 100 % 6), digit(tenths / 10), '.',
        digit(tenths)};
    text.append({clock, sizeof clock});
}
