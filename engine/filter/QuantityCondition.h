// Conditions on the quantity that a field's integer means.
#pragma once

#include "filter/Condition.h"
#include "filter/Syntax.h"
#include "format/FormatModel.h"

namespace where {

// Holds for a record that has a value of the quantity which, for a comparison, compares as the
// syntax says. Numbers are compared exactly, whatever digits they are written with; the names of
// satellites are texts in any case of letters. Throws Problem when its values cannot be compared
// so.
Condition quantityCondition(const FieldModel& quantity, const SyntaxNode& syntax);

}    // namespace where
