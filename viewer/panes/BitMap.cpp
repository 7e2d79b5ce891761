#include "viewer/panes/BitMap.h"

#include <algorithm>

namespace {

// Where the first of `count` values stands, and the others behind it.
BitRange located(const void* record, const RTCM2_member_s& row, std::uint32_t count)
{
    BitRange first;
    BitRange last;
    if (count == 0 ||
        RTCM2_locate(record, &row, 0, &first.first, &first.count) != RTCM2_ACCESS_DONE ||
        RTCM2_locate(record, &row, count - 1, &last.first, &last.count) != RTCM2_ACCESS_DONE) {
        return {};
    }
    return {first.first, last.end() - first.first};
}

bool standsInMessage(const RTCM2_member_s& row)
{
    return row.role == RTCM2_ROLE_WIRE || row.role == RTCM2_ROLE_RUN ||
           row.role == RTCM2_ROLE_SLICE;
}

// The member itself, or the one from which it follows; null for a constant.
const RTCM2_member_s* sourceOf(const RTCM2_member_s& row)
{
    const RTCM2_member_s* source = &row;
    while (source != nullptr && !standsInMessage(*source)) {
        source = source->of;
    }
    return source;
}

}    // namespace

BitMap::BitMap(const MessageDetail& detail)
    : owners(8 * detail.packed.size()),
      hasLayout(!detail.isShort &&
                (detail.what == Found::What::message || detail.what == Found::What::unreported))
{
    eachPlace(detail, [this](const FieldPlace& place, const FieldSpot& spot) { add(place, spot); });
}

BitRange BitMap::bitsOf(const FieldPlace& place) const
{
    const auto found = ranges.find(place);
    return found != ranges.end() ? found->second : BitRange();
}

void BitMap::add(const FieldPlace& place, const FieldSpot& spot)
{
    if (spot.field == nullptr) {
        return;    // an element, which came with its array
    }
    if (spot.field->element != nullptr) {
        return addArray(place, spot);
    }
    const RTCM2_member_s& row = *spot.field->row;
    const RTCM2_member_s* const source = sourceOf(row);
    if (source == nullptr || !spot.field->isPresent(spot.record)) {
        return;
    }
    const BitRange range = located(spot.record, *source, RTCM2_count(spot.record, source));
    ranges[place] = range;
    const bool isPart =
        row.role == RTCM2_ROLE_SLICE && spot.field->concerns(RTCM2_system_of(spot.record));
    for (std::uint32_t bit = range.first; source == &row && bit < range.end() && bit < size();
         ++bit) {
        if (owners[bit].isNone() || isPart) {
            owners[bit] = place;
        }
    }
}

void BitMap::addArray(const FieldPlace& place, const FieldSpot& spot)
{
    const RTCM2_member_s& row = *spot.field->row;
    const std::uint32_t count = spot.field->count(spot.record);
    ranges[place] = located(spot.record, row, count);
    for (std::uint32_t i = 0; i < count; ++i) {
        BitRange& range = ranges[{place.field, static_cast<int>(i)}];
        RTCM2_locate(spot.record, &row, i, &range.first, &range.count);
    }
}
