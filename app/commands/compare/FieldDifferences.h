// The fields in which two messages of a kind differ.
#pragma once

#include "format/FieldPath.h"

#include <algorithm>

// A field that differs, and the two records that have it.
struct FieldDifference {
    FieldPath path;
    unsigned element = 0;    // of a part: which element it is of, from 1
    const void* a = nullptr;
    const void* b = nullptr;
};

// Whether all values of a field are the same.
bool hasSameValues(const FieldModel& field, const void* a, const void* b);

// Whether the field follows from others, so that it says nothing of its own.
bool isDerived(const FieldModel& field);

// Calls back with each difference in the order of the message; of arrays of different lengths as a
// whole, and with those in the elements that both have.
template <class Function>
void eachDifference(const KindModel& kind, const void* a, const void* b, Function function)
{
    for (const FieldModel& field : kind.fields) {
        if (isDerived(field)) {
            continue;
        }
        if (!hasSameValues(field, a, b)) {
            function(FieldDifference{{&field, nullptr}, 0, a, b});
        }
        if (field.element == nullptr) {
            continue;
        }
        const char* inA = RTCM2_reader_elements(&field.reader, a);
        const char* inB = RTCM2_reader_elements(&field.reader, b);
        const unsigned shared = std::min(field.count(a), field.count(b));
        for (unsigned i = 0; i < shared;
             ++i, inA += field.reader.stride, inB += field.reader.stride) {
            for (const FieldModel& part : field.element->fields) {
                if (!isDerived(part) && !hasSameValues(part, inA, inB)) {
                    function(FieldDifference{{&field, &part}, i + 1, inA, inB});
                }
            }
        }
    }
}
