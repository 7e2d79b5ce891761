// What is wrong with an expression, shown at its place.
#pragma once

#include "filter/FilterError.h"

#include <string>
#include <string_view>

namespace where {

// Thrown by all that reads a part of an expression.
struct Problem {
    std::size_t place = 0;    // bytes before it in the expression
    std::string text;
    std::string help;    // what was expected, or what may have been meant; may be empty
};

// Shows the problem, the expression, a caret under the place, and the help.
FilterError errorAt(std::string_view expression, const Problem& problem);

}    // namespace where
