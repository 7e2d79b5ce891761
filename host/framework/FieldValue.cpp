#include "FieldValue.h"

bool operator==(const FieldValue& a, const FieldValue& b)
{
    if (!a.valid || !b.valid) {
        return a.valid == b.valid;
    }
    if (a.kind != b.kind || a.width != b.width) {
        return false;
    }
    switch (a.kind) {
    case FieldType::Float64:
        return a.real == b.real;
    case FieldType::SubMessage:
        return a.message == b.message;
    default:
        return a.number == b.number;
    }
}
