// A condition on the fields of a message, as people write it:
//
//   "Reference Station Id" == 5 and not (Modified_Z_Count < 100 or present("Antenna Height"))
//   Corrections.PRC < -100 or "Station Health" == "Not Working" or Message ~ storm
//
// - A field is named by its display name or identifier, regardless of case. A name that is not one
//   word of letters, digits and "_" stands in quotes, double or single ones; a backslash takes the
//   next character as it is. Parts of sub-messages follow behind a dot. A comparison holds when it
//   does for any element, and for any value of a repeated field.
// - Comparisons: == (or =), !=, <, <=, >, >=, ~ (or contains). A field that the message's kind
//   does not have, or that is absent, makes them false; present(FIELD) asks for it.
// - Values: numbers such as 12, -3, 0.5, 1e3, 0x1f are compared with raw values; texts, in quotes
//   or one word, with the texts of coded values, regardless of case: == and != with the whole text,
//   ~ with any piece of it. For text fields == and != regard case, ~ does not.
// - not (or !) binds more tightly than and (or &&), which does so more tightly than or (or ||).
#pragma once

#include "format/FormatModel.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace where {
class Condition;
}

class Expression {
public:
    // `kinds` are those that the expression will be asked about. All names are looked up here.
    // Throws FilterError.
    Expression(std::string_view text, const std::vector<const KindModel*>& kinds);
    ~Expression();
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    // Whether any message of the kind can fulfil the expression.
    bool canHold(const KindModel& kind) const;

    // Whether it holds for a record of this kind; false for other kinds than those given.
    bool holds(const void* record, const KindModel& kind) const;

private:
    std::unordered_map<const KindModel*, std::unique_ptr<where::Condition>> conditions;
};
