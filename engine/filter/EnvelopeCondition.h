// Conditions on what comes with a message beside its own fields.
#pragma once

#include "filter/Condition.h"
#include "filter/Syntax.h"

namespace where {

// Nothing where the name is not one of an envelope. Throws Problem when its values, which are
// numbers, cannot be compared so.
std::optional<Condition> envelopeCondition(const SyntaxNode& syntax);

}    // namespace where
