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

// The values of one record, written behind the `written` first ones.
std::uint32_t readValues(const RTCM2_reader_s& field, const void* record, std::int64_t* values,
                         std::uint8_t* absent, std::uint32_t written, std::uint32_t room)
{
    const std::uint32_t count = RTCM2_reader_count(&field, record);
    const bool isMissing = count == 0 && field.has_length == 0;
    if (isMissing && written < room) {
        values[written] = 0;
        absent[written] = 1;
    }
    for (std::uint32_t i = 0; i < count && written + i < room; ++i) {
        values[written + i] = field.stored == RTCM2_STORED_REAL
                                  ? static_cast<std::int64_t>(RTCM2_reader_real(&field, record))
                                  : RTCM2_reader_integer(&field, record, i);
        absent[written + i] = 0;
    }
    return isMissing ? 1 : count;
}

}    // namespace

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

std::uint32_t RTCM2_read_column(const RTCM2_reader_s* array, const RTCM2_reader_s* field,
                                const void* record, std::int64_t* values, std::uint8_t* absent,
                                std::uint32_t room)
{
    if (array == nullptr) {
        return readValues(*field, record, values, absent, 0, room);
    }
    const std::uint32_t elements = RTCM2_reader_count(array, record);
    const char* element = RTCM2_reader_elements(array, record);
    std::uint32_t count = 0;
    for (std::uint32_t i = 0; i < elements; ++i, element += array->stride) {
        count += readValues(*field, element, values, absent, count, room);
    }
    return count;
}
