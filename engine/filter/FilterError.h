// A filter that makes no sense.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

// A filter that cannot be understood; the text is for people and points at the place.
struct FilterError {
    std::string text;
    // Of the expression: bytes before the place, and what is wrong there without the expression.
    std::optional<std::size_t> place{};
    std::string problem{};
};
