// Which fields of a kind an export shows.
#pragma once

#include "format/FormatModel.h"

#include <string>
#include <vector>

// A chosen field of a kind, or a field of the elements of one.
struct FieldPath {
    const FieldModel* field = nullptr;
    const FieldModel* part = nullptr;    // of the elements; null when the whole field is meant
};

// A wrong choice; the text is for people.
struct FieldChoiceError {
    std::string text;
};

// The fields of a kind that have one of the names (display names or identifiers; those of
// sub-messages after the field's name and a dot), in the order of the names.
std::vector<FieldPath> pathsOf(const KindModel& kind, const std::vector<std::string>& names);

// Throws FieldChoiceError when a name means nothing in any of the kinds.
void checkNames(const std::vector<const KindModel*>& kinds, const std::vector<std::string>& names);

// A field and, for a sub-message field, the chosen fields of its elements.
struct ChosenField {
    const FieldModel* field = nullptr;
    std::vector<ChosenField> parts{};
};

// The chosen fields of a kind in field order; all fields when no name is given.
std::vector<ChosenField> chosenFields(const KindModel& kind, const std::vector<std::string>& names);
