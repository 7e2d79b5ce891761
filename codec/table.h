// The codec's kinds as the functions of RTCM2_format.h use them. The rows are rendered from the
// schema.
#pragma once

#include "RTCM2_format.h"

#include <cstdint>
#include <span>

namespace rtcm2 {

// What is rendered as code of its own for every kind, for a record of that kind.
struct KindFunctions {
    std::int32_t (*init)(void* record);
    std::int32_t (*decode)(void* record, std::uint32_t* offset, const std::uint8_t* data,
                           std::uint16_t size, void* parent, std::uint32_t declaredLength);
    std::int32_t (*encode)(void* record, std::uint8_t* data, std::uint16_t size,
                           std::uint32_t* offset);
};

template <class Record, auto init, auto decode, auto encode>
constexpr KindFunctions typedFunctions()
{
    return {[](void* record) { return init(static_cast<Record*>(record)); },
            [](void* record, std::uint32_t* offset, const std::uint8_t* data, std::uint16_t size,
               void* parent, std::uint32_t declaredLength) {
                return decode(static_cast<Record*>(record), offset, data, size, parent,
                              declaredLength);
            },
            [](void* record, std::uint8_t* data, std::uint16_t size, std::uint32_t* offset) {
                return encode(static_cast<Record*>(record), data, size, offset);
            }};
}

// By kind value less 1.
extern const std::span<const RTCM2_kind_s> kindRows;
extern const std::span<const KindFunctions> kindFunctions;

extern const std::span<const RTCM2_system_s> systemRows;

// By error code, from -1 downward.
extern const std::span<const char* const> errorNames;

inline std::span<const RTCM2_member_s> membersOf(const RTCM2_kind_s& kind)
{
    return {kind.members, kind.member_count};
}

// Null for a value of no kind.
inline const RTCM2_kind_s* rowOf(std::int64_t kind)
{
    const auto index = static_cast<std::uint64_t>(kind) - 1;
    return index < kindRows.size() ? &kindRows[index] : nullptr;
}

// To be called with the value of a kind.
inline const KindFunctions& functionsOf(const RTCM2_kind_s& kind)
{
    return kindFunctions[static_cast<std::size_t>(kind.kind) - 1];
}

// Adds an initialised element, whose parent is the record, to the array of a record of that kind.
// Null when the kind has no array, or the count or the heap is at its end.
void* appendElement(const RTCM2_kind_s& kind, void* record);

}    // namespace rtcm2
