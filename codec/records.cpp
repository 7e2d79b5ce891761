// Records of any kind: constructed, decoded, encoded, grown and released through the table.
#include "codec_support.h"
#include "record_values.h"
#include "table.h"

#include <cstdlib>

using namespace rtcm2;

int32_t RTCM2_init_record(int32_t kind, void* record)
{
    const RTCM2_kind_s* const row = rowOf(kind);
    return row != nullptr ? functionsOf(*row).init(record)
                          : static_cast<int32_t>(RTCM2_ERR_INVALID_MESSAGE);
}

int32_t RTCM2_decode_record(int32_t kind, const uint8_t* data, uint16_t data_size,
                            uint32_t* bit_offset, void* record)
{
    const RTCM2_kind_s* const row = rowOf(kind);
    return row != nullptr
               ? functionsOf(*row).decode(record, bit_offset, data, data_size, nullptr, 0)
               : static_cast<int32_t>(RTCM2_ERR_INVALID_MESSAGE);
}

int32_t RTCM2_encode_record(void* record, uint8_t* data, uint16_t data_size, uint32_t* bit_offset)
{
    const RTCM2_kind_s* const row = RTCM2_kind_of(record);
    return row != nullptr ? functionsOf(*row).encode(record, data, data_size, bit_offset)
                          : static_cast<int32_t>(RTCM2_ERR_INVALID_MESSAGE);
}

void* rtcm2::appendElement(const RTCM2_kind_s& kind, void* record)
{
    const RTCM2_member_s* const array = kind.array;
    if (array == nullptr) {
        return nullptr;
    }
    const std::uint32_t count = lengthOf(record, *array);
    if (count == quarn::lowMask(8U * array->length->size)) {
        return nullptr;
    }
    const std::size_t elementSize = array->elements->size;
    char* const grown = static_cast<char*>(
        std::realloc(elementsOf(record, *array), (std::size_t{count} + 1) * elementSize));
    if (grown == nullptr) {
        return nullptr;
    }
    std::memcpy(placeOf(record, *array), &grown, sizeof grown);
    putInteger(placeOf(record, *array->length), array->length->size, std::int64_t{count} + 1);
    char* const element = grown + count * elementSize;
    functionsOf(*array->elements).init(element);
    std::memcpy(element + offsetof(RecordHead, parent), &record, sizeof record);
    return element;
}

void* RTCM2_append_element(void* record)
{
    const RTCM2_kind_s* const row = RTCM2_kind_of(record);
    return row != nullptr ? appendElement(*row, record) : nullptr;
}

void RTCM2_free_record(void* record)
{
    const RTCM2_kind_s* const row = RTCM2_kind_of(record);
    if (row == nullptr || row->array == nullptr) {
        return;
    }
    const RTCM2_member_s& array = *row->array;
    std::free(elementsOf(record, array));
    char* const none = nullptr;
    std::memcpy(placeOf(record, array), &none, sizeof none);
    putInteger(placeOf(record, *array.length), array.length->size, 0);
}

void RTCM2_free_message(RTCM2_message_s* message)
{
    RTCM2_free_record(message);
}
