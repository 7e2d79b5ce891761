// What an expression must not leave open: whether one element has to meet two conditions.
#pragma once

#include "filter/Syntax.h"

namespace where {

// Throws Problem, which shows how to write it, where two conditions on parts of the same field have
// to hold together and no brackets say whether one element has to meet both. `not`, `or` and
// parentheses hide none: "not (not A or not B)" is "A and B". What has to hold of no element leaves
// nothing open, nor does one of two conditions being enough.
void requireOneElement(const SyntaxNode& root);

}    // namespace where
