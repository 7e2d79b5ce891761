/* The RTCM 2 format as data: every kind and every member in one table, and functions that work on
 * any kind through it. Valid C99 and C++.
 *
 * A program that knows nothing of the single messages decodes one with RTCM2_decode, takes the row
 * of its kind from RTCM2_kind_of(&message), and goes through kind->members, reading each with
 * RTCM2_read_integer, RTCM2_read_real or RTCM2_read_text. The elements of an array are records of
 * their own, with a row of their own: RTCM2_element.
 *
 * The rows are constant and live as long as the library. Functions that take a row and a record
 * need a row of that record's kind. Records are those of RTCM2.h: their head says of which kind
 * they are, so they have to be initialised or decoded before they are handed in. Elements point to
 * the record that they are in, so a record with an array stays where it is, and an element in its
 * array. Nothing here keeps state; a record is used by one caller at a time.
 *
 * A later version may add members to the structures below. The name under which programs load the
 * library changes with it, so that a program never meets other structures than those it was built
 * with.
 */
#ifndef RTCM2_FORMAT_H
#define RTCM2_FORMAT_H

#include "RTCM2.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* How the value of a member comes about. */
typedef enum RTCM2_role_enum {
    RTCM2_ROLE_WIRE = 0,     /* stands in the message, `bits` wide */
    RTCM2_ROLE_SLICE = 1,    /* some bits of the wire member `of`, from bit `low` up */
    RTCM2_ROLE_COUNT = 2,    /* (of * times - minus) / over, in the arithmetic of its width */
    RTCM2_ROLE_LOOKUP = 3,   /* the number that `choices` gives for the value of `of` */
    RTCM2_ROLE_CONSTANT = 4, /* never in the message, holds `initial` */
    RTCM2_ROLE_RUN = 5,      /* characters or bytes held in the record, `length` of them */
    RTCM2_ROLE_ARRAY = 6     /* an array of sub-records of kind `elements`, `length` of them */
} RTCM2_role_enum;

/* What a value is. */
typedef enum RTCM2_type_enum {
    RTCM2_TYPE_UNSIGNED = 0,  /* an integer of 0 or more, up to 64 bits */
    RTCM2_TYPE_SIGNED = 1,    /* an integer in two's complement, up to 64 bits */
    RTCM2_TYPE_BYTE = 2,      /* up to 8 bits: flags and codes, shown as two hexadecimal digits */
    RTCM2_TYPE_CHARACTER = 3, /* 8 bits, signed: -128 to 127. ASCII; negative ones, with 256 added,
                               * are Latin-1 */
    RTCM2_TYPE_REAL = 4,      /* a double */
    RTCM2_TYPE_RECORD = 5     /* a sub-record */
} RTCM2_type_enum;

/* A coded value and what is shown instead of it. */
typedef struct RTCM2_text_s {
    int64_t value;
    const char* text; /* UTF-8, never empty */
} RTCM2_text_s;

/* How much a value matters to those who rely on the messages. */
typedef enum RTCM2_alarm_enum {
    RTCM2_ALARM_WARNING = 1, /* use them with care */
    RTCM2_ALARM_FAILURE = 2  /* do not use them */
} RTCM2_alarm_enum;

/* A value that is no normal one. */
typedef struct RTCM2_alarm_s {
    int64_t value;
    RTCM2_alarm_enum alarm;
} RTCM2_alarm_s;

/* A number chosen by the value of another member. */
typedef struct RTCM2_choice_s {
    int64_t value;
    double number;
} RTCM2_choice_s;

/* What a member is to those who use messages, of whatever kind: programs look for the meaning, not
 * for a name. */
typedef enum RTCM2_meaning_enum {
    RTCM2_MEANS_NOTHING = 0, /* that programs ask for */
    RTCM2_MEANS_PREAMBLE = 1,
    RTCM2_MEANS_TYPE = 2,
    RTCM2_MEANS_STATION = 3,
    RTCM2_MEANS_TIME = 4,     /* of the hour, in the time of the message's system */
    RTCM2_MEANS_SEQUENCE = 5, /* number of the message, round and round through its bits */
    RTCM2_MEANS_WORDS = 6,    /* data words behind the header */
    RTCM2_MEANS_HEALTH = 7,   /* of the station */
    RTCM2_MEANS_SYSTEM = 8,   /* of satellites; its values are those of RTCM2_system_s */
    RTCM2_MEANS_SATELLITE = 9,
    RTCM2_MEANS_CORRECTION = 10, /* of a range or phase */
    RTCM2_MEANS_RATE = 11,       /* at which a correction changes */
    RTCM2_MEANS_ISSUE = 12,      /* of the satellite's data to which a correction belongs */
    RTCM2_MEANS_ACCURACY = 13,   /* in classes with texts, the best first */
    RTCM2_MEANS_HEIGHT = 14,     /* of the antenna */
    RTCM2_MEANS_TEXT = 15        /* for people */
} RTCM2_meaning_enum;

/* A system of satellites. */
typedef struct RTCM2_system_s {
    const char* name;   /* "GPS" */
    const char* time;   /* in which its messages count: "GPS", "UTC" */
    int64_t value;      /* of members that mean the system */
    const char* letter; /* before the number of a satellite: "G" */
    const char* frame;  /* in which its messages give positions: "WGS 84" */
} RTCM2_system_s;

/* A factor, and the value of the member `by` with which it holds. */
typedef struct RTCM2_factor_s {
    int64_t value;
    int64_t factor;
    uint8_t decimals; /* of the factor: 2 with a factor of 32 for 0.32 */
} RTCM2_factor_s;

/* What the integer of a member means: a number of units, or a satellite. */
typedef struct RTCM2_quantity_s {
    const char* name;                /* in code, beside that of the member: "PRC_m" */
    const char* unit;                /* "m", "m/s", "s", "cycle"; "" for a satellite */
    const struct RTCM2_member_s* by; /* chooses the factor; null: there is one factor */
    const RTCM2_factor_s* factors;   /* with a value of `by` that none of them has, there is no
                                      * quantity */
    uint32_t factor_count;
    const int64_t* none; /* integers that mean that there is none */
    uint32_t none_count;
    int64_t highest; /* larger integers are out of range; INT64_MAX where none is */
    uint8_t is_satellite;
    int64_t zero; /* the number of the satellite that 0 means */
} RTCM2_quantity_s;

/* An exact decimal number: digits / 10^decimals. */
typedef struct RTCM2_decimal_s {
    int64_t digits;
    uint8_t decimals; /* at most 18 */
} RTCM2_decimal_s;

/* A point whose coordinates a message tells, in metres, earth-centred and earth-fixed. */
typedef struct RTCM2_point_s {
    const char* name;                         /* for people: "L1 phase centre" */
    const struct RTCM2_member_s* position[3]; /* X, Y, Z: members with a quantity */
    const char* from; /* the name of the point from which they are a distance, which is told of the
                       * same station and system; null: from the centre of the earth */
} RTCM2_point_s;

struct RTCM2_kind_s;

/* One member of a record. Texts are never null; pointers to rows are null where there is none, and
 * point to rows of the same kind. */
typedef struct RTCM2_member_s {
    const char* name;    /* in code: "Modified_Z_Count" */
    const char* display; /* for people: "Modified Z-Count"; "" in kinds that have no name either */
    const char* unit;    /* of the number as it is in the record, for people; "" for none */
    RTCM2_role_enum role;
    RTCM2_type_enum type;
    uint8_t bits;    /* width of the value (of one character or byte of a run); 0 for an array */
    uint8_t size;    /* bytes that the value takes in the record (likewise); 0 for an array */
    uint16_t offset; /* of the value, the run or the pointer to the array in the record, in bytes */
    int32_t first_bit; /* in the packed message, from the start of the record; -1 where that depends
                        * on other members, and for what is not in the message */

    /* Presence: the member is there only when `when` has one of the values. Null: always. */
    const struct RTCM2_member_s* when;
    const int64_t* when_values;
    uint32_t when_count;

    /* Slices, counts and lookups: the member that this one follows from, and how. */
    const struct RTCM2_member_s* of;
    uint8_t low;
    uint16_t times;
    uint16_t minus;
    uint16_t over;
    const RTCM2_choice_s* choices; /* a value that is not among them leaves the initial one */
    uint32_t choice_count;

    /* Runs and arrays: the member with the number of elements; the most that a run has room for (0
     * for an array); the kind of an array's elements. */
    const struct RTCM2_member_s* length;
    uint16_t limit;
    const struct RTCM2_kind_s* elements;

    /* Coded values in the order of the format. */
    const RTCM2_text_s* texts;
    uint32_t text_count;

    /* Values that are a reason to worry. */
    const RTCM2_alarm_s* alarms;
    uint32_t alarm_count;

    uint8_t has_do_not_use; /* 1: the value do_not_use says that there is none */
    uint8_t has_initial;    /* 1: a constructed record holds `initial`, else it is left as it was */
    int64_t do_not_use;
    int64_t initial;

    RTCM2_meaning_enum meaning;
    const RTCM2_quantity_s* quantity; /* null where the integer is all that is known */
    const RTCM2_system_s* system; /* with other systems the member means nothing; null: with all */
} RTCM2_member_s;

/* One kind of record. */
typedef struct RTCM2_kind_s {
    const char* name;     /* in code: "Message_Type_1", "DGNSS" */
    const char* constant; /* of its number: "RTCM2_MESSAGE_TYPE_1" */
    const char* display; /* for people: "Message Type 1"; "" for kinds that hosts are not told of */
    const char* text;    /* one line about a main kind: "Differential GPS Corrections", or "" */
    const char* family;  /* the kinds that belong together: "Differential corrections" */
    RTCM2_message_enum kind;
    int32_t type;                  /* number of the message type, 0 to 63; -1 for a sub-record */
    uint32_t size;                 /* of the record, in bytes */
    uint32_t bits;                 /* in the message, where they are always as many, else 0 */
    const RTCM2_member_s* members; /* in the order of the record and of the message */
    uint32_t member_count;
    const RTCM2_member_s* array; /* the member that is an array of sub-records, or null */

    /* The system of its messages: what a member of the record, or of the first element of its
     * array, says, else this one. Both null: that of the record around it, or unknown. */
    const RTCM2_system_s* system;
    const RTCM2_member_s* system_member;
    const RTCM2_point_s* points;
    uint32_t point_count;
    uint8_t is_unsettled; /* 1: in which units its numbers are is not settled, where they have no
                           * quantity */
} RTCM2_kind_s;

/* ---- Version ---- */

/* Version of the library that runs, "1.2.3"; RTCM2_VERSION is that of the header. */
RTCM2_API const char* RTCM2_version(void);

/* ---- Kinds and members ---- */

/* The largest value of a kind; kinds are numbered from 1 without gaps. */
RTCM2_API int32_t RTCM2_last_kind(void);

/* The row of a kind 1 to RTCM2_last_kind(); null for any other number. */
RTCM2_API const RTCM2_kind_s* RTCM2_kind(int32_t kind);

/* The row of a record's kind; null for a record of no kind. */
RTCM2_API const RTCM2_kind_s* RTCM2_kind_of(const void* record);

/* The main kind of a message type; null for a type of no kind. */
RTCM2_API const RTCM2_kind_s* RTCM2_kind_of_type(int32_t type);

/* The kind of this name, in code or for people; null when there is none. */
RTCM2_API const RTCM2_kind_s* RTCM2_find_kind(const char* name);

/* The member of this name, in code or for people; null when the kind has none. */
RTCM2_API const RTCM2_member_s* RTCM2_find_member(const RTCM2_kind_s* kind, const char* name);

/* What is shown instead of a coded value; null for a value without text. */
RTCM2_API const char* RTCM2_text_of(const RTCM2_member_s* member, int64_t value);

/* Systems of satellites: how many the format knows, and the index-th; null for any other index. */
RTCM2_API int32_t RTCM2_system_count(void);
RTCM2_API const RTCM2_system_s* RTCM2_system(int32_t index);

/* ---- Contexts and packed messages ---- */

/* Switches the decoding of a main kind on or off. Values of no kind change nothing. */
RTCM2_API void RTCM2_enable_kind(RTCM2_context_s* context, int32_t kind, int enabled);

/* 1 or 0; 0 for values of no kind. */
RTCM2_API int RTCM2_is_kind_enabled(const RTCM2_context_s* context, int32_t kind);

/* Room for any packed message, in bytes: a header of two words and 31 data words. */
#define RTCM2_PACKED_ROOM 99

/* The bytes of a packed message as its header tells: 6 to RTCM2_PACKED_ROOM.
 * RTCM2_ERR_INVALID_MESSAGE when data_size bytes do not hold the header (6 bytes). */
RTCM2_API int32_t RTCM2_packed_length(const uint8_t* data, uint16_t data_size);

/* ---- Records of any kind ---- */

/* As RTCM2_init_<kind>: 0, or RTCM2_ERR_INVALID_MESSAGE for a value of no kind. `record` has room
 * for RTCM2_kind(kind)->size bytes. */
RTCM2_API int32_t RTCM2_init_record(int32_t kind, void* record);

/* Decodes a record of a kind, main or sub, that starts at bit *bit_offset of data, data_size bytes
 * long, whatever type the message names. Returns the bits consumed, by which *bit_offset grows, or
 * an error code as RTCM2_decode does: *bit_offset is then where the member would be that does not
 * fit, and the record is to be released all the same, but its elements are not to be used. For a
 * value of no kind RTCM2_ERR_INVALID_MESSAGE, and nothing is written. */
RTCM2_API int32_t RTCM2_decode_record(int32_t kind, const uint8_t* data, uint16_t data_size,
                                      uint32_t* bit_offset, void* record);

/* Encodes a record of any kind, main or sub, at bit *bit_offset: as RTCM2_encode_<kind>, or
 * RTCM2_ERR_INVALID_MESSAGE for a record of no kind. */
RTCM2_API int32_t RTCM2_encode_record(void* record, uint8_t* data, uint16_t data_size,
                                      uint32_t* bit_offset);

/* As RTCM2_append_<kind>_<member>: the new element of the record's array, initialised, which leaves
 * most of its values to be written. Null when the kind has no array, the count is at its maximum or
 * there is no memory. */
RTCM2_API void* RTCM2_append_element(void* record);

/* Releases the record's array, if it has one, and sets pointer and count to null and 0, so that a
 * second call does nothing. The record itself stays the caller's. A record of no kind is left
 * alone. */
RTCM2_API void RTCM2_free_record(void* record);

/* The same for what RTCM2_decode filled, whatever its result was. Before the first decode, set
 * message.kind to RTCM2_MESSAGE_NULL: a message that is refused leaves it as it is. */
RTCM2_API void RTCM2_free_message(RTCM2_message_s* message);

/* ---- Values ---- */

/* What the functions below answer. */
typedef enum RTCM2_access_enum {
    RTCM2_ACCESS_DONE = 0,
    RTCM2_ACCESS_ABSENT = 1,  /* the member is not in this message */
    RTCM2_ACCESS_INDEX = 2,   /* no value has that index */
    RTCM2_ACCESS_TYPE = 3,    /* the value is of a type that the function cannot give or take */
    RTCM2_ACCESS_RANGE = 4,   /* the value does not fit the member, or the text the room */
    RTCM2_ACCESS_DERIVED = 5, /* it follows from other members or is constant, so it cannot be
                               * written and has no place in the message */
    RTCM2_ACCESS_NONE = 6     /* the integer says that there is no quantity, or is out of range */
} RTCM2_access_enum;

/* Whether the member is in the message: 1 or 0. */
RTCM2_API int RTCM2_is_present(const void* record, const RTCM2_member_s* member);

/* Values that the member has: 0 when absent, the length of a run (at most its limit) or of an
 * array, else 1. */
RTCM2_API uint32_t RTCM2_count(const void* record, const RTCM2_member_s* member);

/* The index-th record of an array, or null. It belongs to the record. */
RTCM2_API void* RTCM2_element(const void* record, const RTCM2_member_s* member, uint32_t index);

/* Read the index-th value; the index of a member that is no run is 0. Integers: all types but real
 * numbers and sub-records; an unsigned value of 64 bits keeps its bits. Real: all but sub-records.
 */
RTCM2_API int32_t RTCM2_read_integer(const void* record, const RTCM2_member_s* member,
                                     uint32_t index, int64_t* value);
RTCM2_API int32_t RTCM2_read_real(const void* record, const RTCM2_member_s* member, uint32_t index,
                                  double* value);

/* Reads a value as it is shown: the text of a coded value in UTF-8, else a decimal number, or two
 * hexadecimal digits for a byte. Real numbers have the fewest digits that give the same number
 * again, with a point in every locale. A run of characters is one text, up to its first NUL, and as
 * it stands in the message: in Latin-1; it has index 0 only. Without units. At most `room` bytes
 * are written, with a NUL; RTCM2_TEXT_ROOM is enough for any. */
#define RTCM2_TEXT_ROOM 256
RTCM2_API int32_t RTCM2_read_text(const void* record, const RTCM2_member_s* member, uint32_t index,
                                  char* text, uint32_t room);

/* Write a value. What stands in the message can be written; slices, whose bits the member that they
 * belong to then holds; and the length of a run, also when it is a count: a run has to have its
 * length before its values are written. Slices and lookups follow what they follow from. Counts do
 * not follow No_Of_Data_Words, and an array gets its length from RTCM2_append_element alone: what
 * is in the record decides, and the caller makes the number of words agree. */
RTCM2_API int32_t RTCM2_write_integer(void* record, const RTCM2_member_s* member, uint32_t index,
                                      int64_t value);

/* Writes a real number that is an integer as such. */
RTCM2_API int32_t RTCM2_write_real(void* record, const RTCM2_member_s* member, uint32_t index,
                                   double value);

/* Writes what RTCM2_read_text gives: the text of a coded value, a decimal number, or hexadecimal
 * digits for a byte. The text of a run of characters sets its length, too. */
RTCM2_API int32_t RTCM2_write_text(void* record, const RTCM2_member_s* member, uint32_t index,
                                   const char* text);

/* ---- Quantities ---- */

/* What the integer of a member means, as an exact number; of a satellite its number.
 * RTCM2_ACCESS_TYPE for a member without quantity, RTCM2_ACCESS_NONE where its value means none. */
RTCM2_API int32_t RTCM2_read_quantity(const void* record, const RTCM2_member_s* member,
                                      RTCM2_decimal_s* value);

/* The same as a text with as few decimals as are exact, "-4.34", or a satellite's name, "G05";
 * without unit. At most `room` bytes are written, with a NUL; RTCM2_QUANTITY_ROOM is enough for
 * any.
 */
#define RTCM2_QUANTITY_ROOM 24
RTCM2_API int32_t RTCM2_read_quantity_text(const void* record, const RTCM2_member_s* member,
                                           char* text, uint32_t room);

/* What has been read of a quantity as such a text, for RTCM2_QUANTITY_ROOM bytes; its length
 * without the NUL. `system` is that of the record, or null. */
RTCM2_API uint32_t RTCM2_quantity_text(const RTCM2_quantity_s* quantity,
                                       const RTCM2_system_s* system, const RTCM2_decimal_s* value,
                                       char* text);

/* The system that a record's satellites, or its message, belong to; null where that is unknown, as
 * for a message whose elements tell it when it has none. */
RTCM2_API const RTCM2_system_s* RTCM2_system_of(const void* record);

/* What a slice, a count or a lookup has to be by the member that it follows from, whatever the
 * record holds. RTCM2_ACCESS_TYPE for other members. */
RTCM2_API int32_t RTCM2_derive(const void* record, const RTCM2_member_s* member, double* value);

/* Where the index-th value stands in the packed message: its first bit, counted from the start of
 * the message also for members of an array's elements, and its width in bits. For an array the
 * index-th element. The record has been decoded, or its arrays were filled by RTCM2_append_.... A
 * sub-record that was decoded by itself counts as the start. */
RTCM2_API int32_t RTCM2_locate(const void* record, const RTCM2_member_s* member, uint32_t index,
                               uint32_t* first_bit, uint32_t* bits);

#ifdef __cplusplus
}
#endif

#endif
