// Names of the systems that satellites belong to.
#pragma once

#include "format/FormatModel.h"
#include "plugin/Plugin.h"

#include <cstdint>
#include <string>

// The system's name for a value of the elements' field that tells it, or what the kind of the
// message says; empty when nothing is known.
std::string systemName(const KindModel& kind, std::uint64_t system, const FieldParts& parts);
