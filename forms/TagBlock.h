// What stands before a sentence on its line: tag blocks, "\g:1-2-1234,c:1447150512*hh\", and a
// label.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

struct TagBlock {
    std::optional<std::int64_t> received{};    // microseconds since 1970
    // The number that sentences of one group have in common.
    std::optional<std::uint32_t> group{};
};

// Of all that stands before the sentence. Tag blocks with a wrong checksum say nothing. A time in
// one of them counts more than one in the label.
TagBlock tagBlockBefore(std::string_view text);
