// Systems that satellites belong to.
#pragma once

#include "format/FieldParts.h"
#include "format/FormatModel.h"

#include <cstdint>
#include <string>

// The field of the elements whose value names the system; null when there is none.
const FieldModel* systemField(const KindModel& element, const FieldParts& parts);

// The system's name for a value of that field, or what the kind of the message says; empty when
// nothing is known.
std::string systemName(const KindModel& kind, std::uint64_t system, const FieldParts& parts);
