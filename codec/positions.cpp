// Where members stand in the packed message.
#include "record_values.h"
#include "table.h"

using namespace rtcm2;

namespace {

std::uint32_t bitsOf(const void* record, const RTCM2_kind_s& kind);

// The bits that a member takes in the message.
std::uint32_t bitsOf(const void* record, const RTCM2_member_s& member)
{
    if (!isPresent(record, member)) {
        return 0;
    }
    switch (member.role) {
    case RTCM2_ROLE_WIRE:
        return member.bits;
    case RTCM2_ROLE_RUN:
        return member.bits * elementCount(record, member);
    default:
        return 0;
    }
}

// The bits of the array's elements before the index-th one.
std::uint32_t bitsBefore(const void* record, const RTCM2_member_s& array, std::uint32_t index)
{
    const RTCM2_kind_s& kind = *array.elements;
    if (kind.bits != 0) {
        return index * kind.bits;
    }
    std::uint32_t bits = 0;
    for (std::uint32_t i = 0; i < index; ++i) {
        bits += bitsOf(RTCM2_element(record, &array, i), kind);
    }
    return bits;
}

std::uint32_t bitsOf(const void* record, const RTCM2_kind_s& kind)
{
    std::uint32_t bits = 0;
    for (const RTCM2_member_s& member : membersOf(kind)) {
        bits += bitsOf(record, member);
    }
    return bits;
}

// The first bit of a member that is in the message, from the start of its record.
std::uint32_t bitInRecord(const void* record, const RTCM2_kind_s& kind,
                          const RTCM2_member_s& member)
{
    if (member.first_bit >= 0) {
        return static_cast<std::uint32_t>(member.first_bit);
    }
    std::uint32_t bits = 0;
    for (const RTCM2_member_s* earlier = kind.members; earlier != &member; ++earlier) {
        bits += bitsOf(record, *earlier);
    }
    return bits;
}

// The first bit of a sub-record in the message: 0 for a main record, and for one in no array.
std::uint32_t startOf(const void* record)
{
    const void* const parent = headOf(record).parent;
    const RTCM2_kind_s* const kind = parent != nullptr ? RTCM2_kind_of(parent) : nullptr;
    if (kind == nullptr || kind->array == nullptr) {
        return 0;
    }
    for (std::uint32_t i = 0; i < elementCount(parent, *kind->array); ++i) {
        if (RTCM2_element(parent, kind->array, i) == record) {
            return bitInRecord(parent, *kind, *kind->array) + bitsBefore(parent, *kind->array, i);
        }
    }
    return 0;
}

}    // namespace

int32_t RTCM2_locate(const void* record, const RTCM2_member_s* member, uint32_t index,
                     uint32_t* first_bit, uint32_t* bits)
{
    const bool isSlice = member->role == RTCM2_ROLE_SLICE;
    const RTCM2_member_s& wire = isSlice ? *member->of : *member;
    if (wire.role != RTCM2_ROLE_WIRE && wire.role != RTCM2_ROLE_RUN &&
        wire.role != RTCM2_ROLE_ARRAY) {
        return RTCM2_ACCESS_DERIVED;
    }
    const RTCM2_kind_s* const kind = RTCM2_kind_of(record);
    if (kind == nullptr) {
        return RTCM2_ACCESS_TYPE;
    }
    if (!isPresent(record, wire)) {
        return RTCM2_ACCESS_ABSENT;
    }
    const bool hasElement =
        wire.role != RTCM2_ROLE_ARRAY || RTCM2_element(record, &wire, index) != nullptr;
    if (index >= elementCount(record, wire) || !hasElement) {
        return RTCM2_ACCESS_INDEX;
    }
    const std::uint32_t first = startOf(record) + bitInRecord(record, *kind, wire);
    if (wire.role == RTCM2_ROLE_ARRAY) {
        *first_bit = first + bitsBefore(record, wire, index);
        *bits = bitsOf(RTCM2_element(record, &wire, index), *wire.elements);
    } else if (isSlice) {
        *first_bit = first + wire.bits - member->low - member->bits;
        *bits = member->bits;
    } else {
        *first_bit = first + index * wire.bits;
        *bits = wire.bits;
    }
    return RTCM2_ACCESS_DONE;
}
