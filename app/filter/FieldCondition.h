// Conditions on one field of the messages of one kind.
#pragma once

#include "filter/Condition.h"
#include "filter/ExpressionError.h"
#include "filter/Syntax.h"
#include "format/FieldPath.h"

#include <variant>

namespace where {

// Holds for a message in which the field, or that of any element, is present.
ConditionPtr presenceOf(const FieldPath& path);

// Holds for a message in which any value of the field compares as the syntax says. A problem when
// such values cannot be compared so. `kind` is the one that has the field.
std::variant<ConditionPtr, Problem> comparisonOf(const KindModel& kind, const FieldPath& path,
                                                 const SyntaxNode& syntax);

}    // namespace where
