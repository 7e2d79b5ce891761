// What all conditions that compare have in common.
#pragma once

#include "filter/Syntax.h"

#include <compare>

namespace where {

// Whether a value that stands so to the one compared with is as the sign wants it.
bool satisfies(Comparison comparison, std::partial_ordering order);

// Throw Problem when numbers, or texts, cannot be compared with the sign of a comparison.
void requireSignForNumbers(const SyntaxNode& syntax);
void requireSignForTexts(const SyntaxNode& syntax);

}    // namespace where
