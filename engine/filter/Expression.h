// A condition on the fields of a message, as people write it:
//
//   "Reference Station Id" == 5 and not (Modified_Z_Count < 100 or present("Antenna Height"))
//   Corrections.PRC < -100 or "Station Health" == "Not Working" or Message ~ storm
//
// - A field is named by its display name or identifier, regardless of case. A name that is not one
//   word of letters, digits and "_" stands in quotes, double or single ones; a backslash takes the
//   next character as it is. Parts of sub-messages follow behind a dot. A comparison holds when it
//   does for any element, and for any value of a repeated field.
// - MMSI, Sender_Longitude and Sender_Latitude (degrees) are those of the AIS station from which
// the
//   message came; of another message none of them is present.
// - FIELD[CONDITION] holds when any one element of a field of sub-messages meets the whole
//   condition, in which names are those of its parts. Corrections.PRC < 0 is short for
//   Corrections[PRC < 0]. Where it makes a difference whether one element has to meet two
//   conditions, the short form is refused.
// - Comparisons: == (or =), !=, <, <=, >, >=, ~ (or contains). A field that the message's kind
//   does not have, or that is absent, makes them false, != like all others; present(FIELD) asks for
//   it. So does a quantity where the message says that there is none.
// - Values: numbers such as 12, -3, 0.5, 1e3, 0x1f are compared with raw values; texts, in quotes
//   or one word, with the texts of coded values, regardless of case: == and != with the whole text,
//   ~ with any piece of it. For text fields == and != regard case, ~ does not. Quantities are
//   compared exactly; the names of satellites are texts in any case of letters.
// - not (or !) binds more tightly than and (or &&), which does so more tightly than or (or ||).
#pragma once

#include "filter/Condition.h"
#include "format/FormatModel.h"

#include <string_view>

// One condition for each of the kinds, in their order, with all names looked up. Throws FilterError
// for what cannot be understood or makes sense for none of the kinds.
std::vector<where::Condition> conditionsOf(std::string_view expression,
                                           const std::vector<const KindModel*>& kinds);
