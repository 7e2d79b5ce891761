// Which field of a message is meant: one of the message, or one of an element in it.
#pragma once

#include "viewer/document/MessageDetail.h"

#include <compare>

// Indices count from 0; those that are not used are -1.
struct FieldPlace {
    int field = -1;      // among those of the message's kind
    int element = -1;    // of a field of elements
    int part = -1;       // a field of the element's kind; -1: the element as a whole

    bool isNone() const { return field < 0; }
    auto operator<=>(const FieldPlace&) const = default;
};

// A field with the record that has it. `field` is null for an element as a whole, all are null
// where the message has no such place.
struct FieldSpot {
    const KindModel* kind = nullptr;    // of the record
    const FieldModel* field = nullptr;
    const void* record = nullptr;
};

FieldSpot spotOf(const MessageDetail& detail, const FieldPlace& place);

// Calls back with each place of the message and its spot: a field, and behind it, where it has
// elements, each element and its fields.
template <class Function>
void eachPlace(const MessageDetail& detail, Function function)
{
    const auto fieldsOf = [](const KindModel& kind) {
        return static_cast<int>(kind.fields.size());
    };
    for (int i = 0; detail.record != nullptr && i < fieldsOf(*detail.kind); ++i) {
        const FieldPlace place{i};
        const FieldSpot spot = spotOf(detail, place);
        function(place, spot);
        const KindModel* const parts = spot.field->element;
        const int elements =
            parts != nullptr ? static_cast<int>(spot.field->count(spot.record)) : 0;
        for (int element = 0; element < elements; ++element) {
            for (int part = -1; part < fieldsOf(*parts); ++part) {
                const FieldPlace inside{i, element, part};
                function(inside, spotOf(detail, inside));
            }
        }
    }
}
