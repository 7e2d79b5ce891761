// Conditions on one field of the messages of one kind.
#pragma once

#include "filter/Condition.h"
#include "filter/Syntax.h"
#include "format/FieldPath.h"

namespace where {

// Holds for a message in which the field, or that of any element, is present or, for a comparison,
// has any value that compares as the syntax says. Throws Problem when its values cannot be compared
// so. `kind` is the one that has the field.
Condition fieldCondition(const KindModel& kind, const FieldPath& path, const SyntaxNode& syntax);

// Holds for a message in which any value of an integer field is one of these.
Condition valueAmong(const FieldPath& path, const std::vector<std::int64_t>& values);

}    // namespace where
