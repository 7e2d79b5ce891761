// Fields by name: of a kind, or, after a dot, of the elements in one of its fields. The one place
// where such paths are looked up.
#pragma once

#include "format/FormatModel.h"

#include <string>
#include <string_view>
#include <vector>

// A field of a kind, or a field of the elements of one. Elements hold no elements.
struct FieldPath {
    const FieldModel* field = nullptr;
    const FieldModel* part = nullptr;    // of the elements; null when the whole field is meant

    const FieldModel& last() const { return part != nullptr ? *part : *field; }
    std::string name() const
    {
        return part != nullptr ? field->name + "." + part->name : field->name;
    }
    bool operator==(const FieldPath&) const = default;

    // Calls back with each record that has the last field: the message's, or those of the elements,
    // until the answer is true. Whether one was.
    template <class Function>
    bool anyRecord(const void* record, Function function) const
    {
        return part == nullptr ? function(record) : field->anyElement(record, function);
    }
};

// How far names lead from a kind.
struct FieldLookup {
    FieldPath path;
    std::size_t known = 0;                // how many of the names were found
    const KindModel* holder = nullptr;    // where the first one that was not found was looked up;
                                          // null where the field before holds no elements
};

FieldLookup lookUp(const KindModel& kind, const std::vector<std::string_view>& names);

// Wrong names; the text is for people.
struct FieldPathError {
    std::string text;
};

// The field of "Field" or "Field.Part", each a display name or an identifier in any case; a display
// name may contain dots itself. Its `field` is null where the kind has none.
FieldPath pathOf(const KindModel& kind, std::string_view name);

// Those of the names that the kind has, in their order.
std::vector<FieldPath> pathsOf(const KindModel& kind, const std::vector<std::string>& names);

// The identifiers of all that pathOf() finds in the kinds, none of them twice.
std::vector<std::string> pathNames(const std::vector<const KindModel*>& kinds);

// Throws FieldPathError when a name means nothing in any of the kinds.
void checkNames(const std::vector<const KindModel*>& kinds, const std::vector<std::string>& names);

// A field and, for a field of elements, the chosen fields of these.
struct ChosenField {
    const FieldModel* field = nullptr;
    std::vector<ChosenField> parts{};
};

// How the fields that have a quantity are chosen.
enum class Values {
    raw,       // as they are
    scaled,    // their quantities in their place
    both,
};

// The chosen fields and quantities of a kind in field order. When no name is given, all fields, and
// quantities as `values` says; so also for the elements of a field that is named as a whole.
std::vector<ChosenField> chosenFields(const KindModel& kind, const std::vector<std::string>& names,
                                      Values values = Values::raw);
