#include "commands/compare/FieldDifferences.h"

bool hasSameValues(const FieldModel& field, const void* a, const void* b)
{
    const unsigned count = field.count(a);
    if (count != field.count(b)) {
        return false;
    }
    for (unsigned i = 0; i < count && field.element == nullptr; ++i) {
        if (RTCM2_reader_integer(&field.reader, a, i) !=
            RTCM2_reader_integer(&field.reader, b, i)) {
            return false;
        }
    }
    return true;
}

bool isDerived(const FieldModel& field)
{
    switch (field.row->role) {
    case RTCM2_ROLE_SLICE:
    case RTCM2_ROLE_COUNT:
    case RTCM2_ROLE_LOOKUP:
    case RTCM2_ROLE_CONSTANT:
        return true;
    default:
        return false;
    }
}
