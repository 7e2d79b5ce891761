// Values of a record by the rows of its members.
#pragma once

#include "RTCM2_format.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace rtcm2 {

// What every record starts with; the kind as a number, which may be any in a record of none.
struct RecordHead {
    std::int32_t kind;
    std::uint32_t bit_count;
    void* parent;
};

inline RecordHead headOf(const void* record)
{
    RecordHead head;
    std::memcpy(&head, record, sizeof head);
    return head;
}

template <class T>
T valueAt(const void* place)
{
    T value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

inline const char* placeOf(const void* record, const RTCM2_member_s& member)
{
    return static_cast<const char*>(record) + member.offset;
}

inline char* placeOf(void* record, const RTCM2_member_s& member)
{
    return static_cast<char*>(record) + member.offset;
}

inline bool isSigned(const RTCM2_member_s& member)
{
    return member.type == RTCM2_TYPE_SIGNED || member.type == RTCM2_TYPE_CHARACTER;
}

// An integer of the member's size and sign; unsigned ones of 64 bits keep their bits.
inline std::int64_t integerAt(const void* place, const RTCM2_member_s& member)
{
    switch (member.size) {
    case 1:
        return isSigned(member) ? std::int64_t{valueAt<std::int8_t>(place)}
                                : valueAt<std::uint8_t>(place);
    case 2:
        return isSigned(member) ? std::int64_t{valueAt<std::int16_t>(place)}
                                : valueAt<std::uint16_t>(place);
    case 4:
        return isSigned(member) ? std::int64_t{valueAt<std::int32_t>(place)}
                                : valueAt<std::uint32_t>(place);
    default:
        return valueAt<std::int64_t>(place);
    }
}

inline std::int64_t integerOf(const void* record, const RTCM2_member_s& member)
{
    return integerAt(placeOf(record, member), member);
}

inline void putInteger(void* place, unsigned size, std::int64_t value)
{
    const auto put = [place](auto number) { std::memcpy(place, &number, sizeof number); };
    switch (size) {
    case 1:
        return put(static_cast<std::int8_t>(value));
    case 2:
        return put(static_cast<std::int16_t>(value));
    case 4:
        return put(static_cast<std::int32_t>(value));
    default:
        return put(value);
    }
}

inline bool isPresent(const void* record, const RTCM2_member_s& member)
{
    if (member.when == nullptr) [[likely]] {
        return true;
    }
    const std::int64_t value = integerOf(record, *member.when);
    const std::int64_t* const end = member.when_values + member.when_count;
    return std::find(member.when_values, end, value) != end;
}

// The elements that a run or an array announces, whether or not a run has room for them.
inline std::uint32_t lengthOf(const void* record, const RTCM2_member_s& member)
{
    return static_cast<std::uint32_t>(integerOf(record, *member.length));
}

// The values of a member that is present.
inline std::uint32_t elementCount(const void* record, const RTCM2_member_s& member)
{
    switch (member.role) {
    case RTCM2_ROLE_RUN:
        return std::min<std::uint32_t>(lengthOf(record, member), member.limit);
    case RTCM2_ROLE_ARRAY:
        return lengthOf(record, member);
    default:
        return 1;
    }
}

// The first element of an array; null while it has none.
inline char* elementsOf(const void* record, const RTCM2_member_s& array)
{
    return valueAt<char*>(placeOf(record, array));
}

}    // namespace rtcm2
