// Conditions on one field of the messages, or of the elements, of one kind.
#pragma once

#include "filter/Condition.h"
#include "filter/Syntax.h"
#include "format/FormatModel.h"

namespace where {

// Holds for a record in which the field is present or, for a comparison, has any value that
// compares as the syntax says. Throws Problem when its values cannot be compared so. `kind` is the
// one that has the field.
Condition fieldCondition(const KindModel& kind, const FieldModel& field, const SyntaxNode& syntax);

// Holds for a record of which any element in this array meets a condition on elements.
Condition elementCondition(const FieldModel& array, Condition ofElement);

// Holds for a record in which any value of an integer field is one of these.
Condition valueAmong(const FieldModel& field, const std::vector<std::int64_t>& values);

}    // namespace where
