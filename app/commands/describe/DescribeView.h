// Describes a format: its kinds of messages and their fields.
#pragma once

#include "commands/describe/DescribeFacts.h"

#include <string>

namespace describe {

// For people, in lines of at most 100 columns as long as names and texts permit.
std::string textOverview(const FormatModel& format);
std::string text(const FormatModel& format, const Kinds& kinds);

std::string markdownOverview(const FormatModel& format);
std::string markdown(const FormatModel& format, const Kinds& kinds);

// For programs. One object:
//   {"format": name, "kinds": [kind, ...]}
// kind:
//   "name", "identifier"   texts
//   "text"                 short description; empty where there is none
//   "main"                 whether messages of the kind stand alone
//   "number"               type number; main kinds that have one
//   "discriminants"        [{"field": identifier, "value": number}, ...]: what tells the kind
//   "carriers"             [{"kind": identifier, "field": identifier}, ...]: where it is a part
//   "systemField"          identifier of the field that tells the system of its messages, if any
//   "system"               that system where no field tells it; kinds that have one
//   "points"               [{"name": text, "fields": [X, Y, Z], "from": name of another point}],
//                          the last only of distances
//   "unsettled"            whether the units of numbers without a quantity are not settled
//   "fields"               [field, ...] in the order of their indices
// field:
//   "index"                number, from 0
//   "name", "identifier"   texts
//   "type"                 "byte", "character", "unsigned", "signed", "float" or "messages"
//   "width"                in bits; 0 for messages
//   "kind"                 identifier of the kind of the elements; messages only
//   "unit"                 text; empty where there is none
//   "optional", "repeated", "virtual"
//   "parts"                [identifier, ...]: fields that show parts of the value
//   "texts"                [{"value": number, "text": text}, ...]: what coded values mean
//   "doNotUse"             the value that means so; fields that have one
//   "meaning"              what programs look for: "correction"; fields that have one
//   "system"               the only one with which the field means something; likewise
//   "quantity"             likewise: {"name", "unit", "factors": [{"factor"}], "none": [number,
//   ...],
//                          "highest"}; with "by": identifier, each factor has the "value" of that
//                          field; of a satellite "satelliteOfZero" in the place of the factors
std::string json(const FormatModel& format, const Kinds& kinds);

}    // namespace describe
