// Compiles rows to readers.
#include "RTCM2_reader.h"

#include <cstdint>

namespace {

RTCM2_stored_enum storedOf(const RTCM2_member_s& member)
{
    if (member.role == RTCM2_ROLE_ARRAY) {
        return RTCM2_STORED_RECORD;
    }
    if (member.type == RTCM2_TYPE_REAL) {
        return RTCM2_STORED_REAL;
    }
    const bool isSigned = member.type == RTCM2_TYPE_SIGNED || member.type == RTCM2_TYPE_CHARACTER;
    switch (member.size) {
    case 1:
        return isSigned ? RTCM2_STORED_I8 : RTCM2_STORED_U8;
    case 2:
        return isSigned ? RTCM2_STORED_I16 : RTCM2_STORED_U16;
    case 4:
        return isSigned ? RTCM2_STORED_I32 : RTCM2_STORED_U32;
    default:
        return isSigned ? RTCM2_STORED_I64 : RTCM2_STORED_U64;
    }
}

}    // namespace

void RTCM2_compile_quantity(const RTCM2_member_s* member, RTCM2_quantity_reader_s* reader)
{
    *reader = {};
    RTCM2_compile_reader(member, &reader->integer);
    reader->quantity = member->quantity;
    reader->system = member->system;
    if (const RTCM2_member_s* const by = member->quantity->by) {
        reader->by_offset = by->offset;
        reader->by_stored = static_cast<std::uint8_t>(storedOf(*by));
    }
}

void RTCM2_compile_reader(const RTCM2_member_s* member, RTCM2_reader_s* reader)
{
    *reader = {};
    reader->offset = member->offset;
    reader->stored = static_cast<std::uint8_t>(storedOf(*member));
    reader->stride = member->elements != nullptr ? member->elements->size : member->size;
    reader->limit = member->role == RTCM2_ROLE_RUN ? member->limit : std::uint16_t{0};
    if (member->length != nullptr) {
        reader->has_length = 1;
        reader->length_offset = member->length->offset;
        reader->length_stored = static_cast<std::uint8_t>(storedOf(*member->length));
    }
    if (member->when != nullptr) {
        reader->when_values = member->when_values;
        reader->when_count = static_cast<std::uint8_t>(member->when_count);
        reader->when_offset = member->when->offset;
        reader->when_stored = static_cast<std::uint8_t>(storedOf(*member->when));
    }
}
