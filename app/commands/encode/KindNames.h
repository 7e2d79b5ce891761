// The names under which kinds and members are given.
#pragma once

#include "RTCM2_format.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What people call a kind or a member: its name in code where it is not described.
template <class Row>
const char* labelOf(const Row& row)
{
    return *row.display != '\0' ? row.display : row.name;
}

struct KindNames {
    explicit KindNames(const RTCM2_kind_s& kind);

    // The member of this identifier or name, by its index. The one at `likeliest` is tried first.
    std::optional<std::size_t> find(std::string_view name, std::size_t likeliest) const;

    const RTCM2_kind_s* row;
    std::string name;                    // as people see it, else that in code
    std::vector<std::string> members;    // identifiers, in the order of the rows
};

// The names of a kind of the codec.
const KindNames& namesOf(const RTCM2_kind_s& kind);

// The main kind of this name or identifier; null when there is none.
const KindNames* findMainKind(std::string_view name);
