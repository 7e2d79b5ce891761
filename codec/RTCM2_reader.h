/* Members of records read through compiled rows: for programs that read the same members of many
 * records. A reader holds what RTCM2_read_integer has to find out at every call, and its functions
 * stand in this header, so that a value costs little more than a load. Valid C99 and C++.
 *
 * A reader is made of a row once, by RTCM2_compile_reader, and copied freely. The functions take a
 * record of the row's kind; nothing is checked but what they say.
 */
#ifndef RTCM2_READER_H
#define RTCM2_READER_H

#include "RTCM2_format.h"

#include <stdint.h>
#include <string.h>

#ifdef __cplusplus
extern "C" {
#endif

/* How a value is stored in a record. */
typedef enum RTCM2_stored_enum {
    RTCM2_STORED_U8 = 0,
    RTCM2_STORED_U16 = 1,
    RTCM2_STORED_U32 = 2,
    RTCM2_STORED_U64 = 3,
    RTCM2_STORED_I8 = 4, /* characters, too */
    RTCM2_STORED_I16 = 5,
    RTCM2_STORED_I32 = 6,
    RTCM2_STORED_I64 = 7,
    RTCM2_STORED_REAL = 8,  /* a double */
    RTCM2_STORED_RECORD = 9 /* a pointer to the first of an array of sub-records */
} RTCM2_stored_enum;

/* A compiled row. */
typedef struct RTCM2_reader_s {
    const int64_t* when_values; /* with which `when` the member is there; null: always */
    uint32_t stride;            /* bytes from a value or a sub-record to the next one */
    uint16_t offset;            /* of the value, the run or the pointer to the array, in bytes */
    uint16_t limit;             /* the most values that a run has room for; 0 for all others */
    uint16_t length_offset;     /* of the member with the number of values */
    uint16_t when_offset;       /* of the member on which presence depends */
    uint8_t stored;             /* RTCM2_stored_enum of the value */
    uint8_t length_stored;      /* likewise of the number of values */
    uint8_t when_stored;        /* likewise of the member on which presence depends */
    uint8_t has_length;         /* 1: a run or an array; 0: a single value */
    uint8_t when_count;         /* of when_values */
} RTCM2_reader_s;

/* Compiles a row; `reader` is written as a whole. */
RTCM2_API void RTCM2_compile_reader(const RTCM2_member_s* member, RTCM2_reader_s* reader);

/* A compiled quantity. */
typedef struct RTCM2_quantity_reader_s {
    RTCM2_reader_s integer;
    const RTCM2_quantity_s* quantity;
    const RTCM2_system_s* system; /* the only one with which the member means something, or null */
    uint16_t by_offset;           /* of the member that chooses the factor, if there is one */
    uint8_t by_stored;
} RTCM2_quantity_reader_s;

/* Compiles the row of a member that has a quantity; `reader` is written as a whole. */
RTCM2_API void RTCM2_compile_quantity(const RTCM2_member_s* member,
                                      RTCM2_quantity_reader_s* reader);

/* The integer at a place; what is no integer gives 0. Unsigned values of 64 bits keep their bits.
 */
static inline int64_t RTCM2_stored_integer(const char* place, uint8_t stored)
{
    uint8_t u8;
    uint16_t u16;
    uint32_t u32;
    int8_t i8;
    int16_t i16;
    int32_t i32;
    int64_t i64;
    switch (stored) {
    case RTCM2_STORED_U8:
        memcpy(&u8, place, sizeof u8);
        return u8;
    case RTCM2_STORED_U16:
        memcpy(&u16, place, sizeof u16);
        return u16;
    case RTCM2_STORED_U32:
        memcpy(&u32, place, sizeof u32);
        return u32;
    case RTCM2_STORED_I8:
        memcpy(&i8, place, sizeof i8);
        return i8;
    case RTCM2_STORED_I16:
        memcpy(&i16, place, sizeof i16);
        return i16;
    case RTCM2_STORED_I32:
        memcpy(&i32, place, sizeof i32);
        return i32;
    case RTCM2_STORED_U64:
    case RTCM2_STORED_I64:
        memcpy(&i64, place, sizeof i64);
        return i64;
    default:
        return 0;
    }
}

/* Where the first value stands in a record. */
static inline const char* RTCM2_reader_place(const RTCM2_reader_s* reader, const void* record)
{
    return (const char*)record + reader->offset;
}

/* Whether the member is in the message: 1 or 0. */
static inline int RTCM2_reader_is_present(const RTCM2_reader_s* reader, const void* record)
{
    if (reader->when_values == 0) {
        return 1;
    }
    const int64_t value =
        RTCM2_stored_integer((const char*)record + reader->when_offset, reader->when_stored);
    for (unsigned i = 0; i < reader->when_count; ++i) {
        if (reader->when_values[i] == value) {
            return 1;
        }
    }
    return 0;
}

/* Values of the member, as RTCM2_count gives them: 0 when it is absent. */
static inline uint32_t RTCM2_reader_count(const RTCM2_reader_s* reader, const void* record)
{
    if (!RTCM2_reader_is_present(reader, record)) {
        return 0;
    }
    if (!reader->has_length) {
        return 1;
    }
    const uint32_t length = (uint32_t)RTCM2_stored_integer(
        (const char*)record + reader->length_offset, reader->length_stored);
    return reader->limit != 0 && length > reader->limit ? reader->limit : length;
}

/* The index-th value, below RTCM2_reader_count, of a member that is no array and no real number. */
static inline int64_t RTCM2_reader_integer(const RTCM2_reader_s* reader, const void* record,
                                           uint32_t index)
{
    const char* const place = RTCM2_reader_place(reader, record) + index * reader->stride;
    /* Most members are that small, and a compiler sees to it that this takes no call. */
    return reader->stored == RTCM2_STORED_U8 ? (uint8_t)*place
                                             : RTCM2_stored_integer(place, reader->stored);
}

/* The value of a real number. */
static inline double RTCM2_reader_real(const RTCM2_reader_s* reader, const void* record)
{
    double value;
    memcpy(&value, RTCM2_reader_place(reader, record), sizeof value);
    return value;
}

/* Reads a quantity as RTCM2_read_quantity does, of a record that has the member. */
static inline int32_t RTCM2_reader_quantity(const RTCM2_quantity_reader_s* reader,
                                            const void* record, RTCM2_decimal_s* value)
{
    const RTCM2_quantity_s* const quantity = reader->quantity;
    const int64_t integer = RTCM2_reader_integer(&reader->integer, record, 0);
    for (uint32_t i = 0; i < quantity->none_count; ++i) {
        if (quantity->none[i] == integer) {
            return RTCM2_ACCESS_NONE;
        }
    }
    if (integer > quantity->highest ||
        (reader->system != 0 && RTCM2_system_of(record) != reader->system)) {
        return RTCM2_ACCESS_NONE;
    }
    if (quantity->is_satellite) {
        value->digits = integer == 0 ? quantity->zero : integer;
        value->decimals = 0;
        return RTCM2_ACCESS_DONE;
    }
    const int64_t choice =
        quantity->by == 0
            ? quantity->factors->value
            : RTCM2_stored_integer((const char*)record + reader->by_offset, reader->by_stored);
    for (uint32_t i = 0; i < quantity->factor_count; ++i) {
        if (quantity->factors[i].value == choice) {
            value->digits = integer * quantity->factors[i].factor;
            value->decimals = quantity->factors[i].decimals;
            return RTCM2_ACCESS_DONE;
        }
    }
    return RTCM2_ACCESS_NONE;
}

/* The first sub-record of an array; the next ones follow every `stride` bytes. Null while there is
 * none. They belong to the record. */
static inline const char* RTCM2_reader_elements(const RTCM2_reader_s* reader, const void* record)
{
    const char* elements;
    memcpy(&elements, RTCM2_reader_place(reader, record), sizeof elements);
    return elements;
}

#ifdef __cplusplus
}
#endif

#endif
