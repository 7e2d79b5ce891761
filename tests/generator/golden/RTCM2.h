/* Rendered by generator/render.py from schema through RTCM2.h.j2. Do not edit.
 *
 * The RTCM 2 codec: packed messages to plain records and back. Valid C99 and C++.
 *
 * A packed message holds the 24 data bits of each 30-bit RTCM word, parity removed, most significant
 * bit first; word n occupies bits 24n to 24n + 23. The codec neither searches for preambles nor
 * checks parity.
 *
 * Results are signed 32-bit values: 0 or more is a count of bits, less is an error code RTCM2_ERR_...
 *
 * Ownership: a record belongs to whoever supplies its storage. Its array of sub-records, if it has
 * one, is a heap block of malloc or realloc; RTCM2_free_<kind>_children releases it and leaves the
 * record itself alone. A decoder attaches the array also when it fails, so the free function is due
 * after every call of RTCM2_decode that returned a positive value or a code of a kind's block.
 *
 * All functions are re-entrant; a context is used by one caller at a time.
 */
#ifndef RTCM2_H
#define RTCM2_H

#include <stdint.h>

#define RTCM2_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/* Record kinds: the sub-records, then the main kinds. Also the indices of the enable flags. */
typedef enum RTCM2_message_enum {
    RTCM2_MESSAGE_NULL = 0,
    RTCM2_BUOY = 1,
    RTCM2_HARBOUR = 2,
    RTCM2_TIDE = 3
} RTCM2_message_enum;

/* Number of record kinds, the null kind included. */
#define RTCM2_MESSAGE_COUNT 4

/* Error codes. _EXT_BUFFER_OVERFLOW: the buffer ends before the member. _INT_BUFFER_OVERFLOW: an
 * array inside the record is full. _SIZE_UNDERFLOW: a declared length is shorter than the record.
 * _INTERNAL: no memory for an array, or an offset that ran backwards. */
typedef enum RTCM2_error_enum {
    RTCM2_ERR_NONE = 0,
    RTCM2_ERR_INVALID_CRC = -1,
    RTCM2_ERR_BUOY_LOOK_EXT_BUFFER_OVERFLOW = -2,
    RTCM2_ERR_BUOY_HEIGHT_EXT_BUFFER_OVERFLOW = -3,
    RTCM2_ERR_BUOY_HEIGHT_SIZE_UNDERFLOW = -4,
    RTCM2_ERR_BUOY_INTERNAL = -5,
    RTCM2_ERR_HARBOUR_PREAMBLE_EXT_BUFFER_OVERFLOW = -6,
    RTCM2_ERR_HARBOUR_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW = -7,
    RTCM2_ERR_HARBOUR_STATION_EXT_BUFFER_OVERFLOW = -8,
    RTCM2_ERR_HARBOUR_PILOT_EXT_BUFFER_OVERFLOW = -9,
    RTCM2_ERR_HARBOUR_CHANNEL_EXT_BUFFER_OVERFLOW = -10,
    RTCM2_ERR_HARBOUR_LENGTH_EXT_BUFFER_OVERFLOW = -11,
    RTCM2_ERR_HARBOUR_TITLE_EXT_BUFFER_OVERFLOW = -12,
    RTCM2_ERR_HARBOUR_TITLE_INT_BUFFER_OVERFLOW = -13,
    RTCM2_ERR_HARBOUR_NOTE_EXT_BUFFER_OVERFLOW = -14,
    RTCM2_ERR_HARBOUR_NOTE_INT_BUFFER_OVERFLOW = -15,
    RTCM2_ERR_HARBOUR_BUOYS_SIZE_UNDERFLOW = -16,
    RTCM2_ERR_HARBOUR_INTERNAL = -17,
    RTCM2_ERR_TIDE_PREAMBLE_EXT_BUFFER_OVERFLOW = -18,
    RTCM2_ERR_TIDE_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW = -19,
    RTCM2_ERR_TIDE_STATION_EXT_BUFFER_OVERFLOW = -20,
    RTCM2_ERR_TIDE_LEVEL_EXT_BUFFER_OVERFLOW = -21,
    RTCM2_ERR_TIDE_LEVEL_SIZE_UNDERFLOW = -22,
    RTCM2_ERR_TIDE_INTERNAL = -23,
    RTCM2_ERR_HARBOUR_DISABLED = -24,
    RTCM2_ERR_TIDE_DISABLED = -25,
    RTCM2_ERR_INVALID_MESSAGE = -26,
    RTCM2_ERR_EOF = -27
} RTCM2_error_enum;

/* Decode context: enable flags of the main kinds, and the type of the last message of no kind. */
typedef struct RTCM2_context_s {
    /* The flag of kind k is the bit 0x80 >> (k % 8) of byte (k + 1) / 8. */
    uint8_t enabled[6];
    /* Written when a type number matches no kind, and only then. */
    uint8_t unknown_type;
} RTCM2_context_s;

/* What every main record starts with. kind tells which record it is; bit_count is the number of
 * message bits that the record covers; parent is the enclosing record, null for a main record. */
typedef struct RTCM2_header_s {
    RTCM2_message_enum kind;
    uint32_t bit_count;
    void* parent;
    uint8_t Preamble; /* 8 bits */
    uint8_t Message_Type; /* 6 bits */
    uint64_t Station_; /* 34 bits */
} RTCM2_header_s;

/* Sub-record Buoy. */
typedef struct RTCM2_Buoy_s {
    RTCM2_message_enum kind;
    uint32_t bit_count;
    void* parent;
    uint8_t Look; /* 7 bits */
    uint8_t Colour; /* part of Look */
    int16_t Height; /* 9 bits */
    uint8_t Chart; /* not on the wire */
} RTCM2_Buoy_s;

/* Type 5: Harbour and its buoys. */
typedef struct RTCM2_Harbour_s {
    RTCM2_message_enum kind;
    uint32_t bit_count;
    void* parent;
    uint8_t Preamble; /* 8 bits */
    uint8_t Message_Type; /* 6 bits */
    uint64_t Station_; /* 34 bits */
    uint8_t Pilot; /* 3 bits */
    double Reach; /* follows from Pilot */
    uint8_t Channel; /* 8 bits, present when Pilot is 1 or 2 */
    uint8_t Length; /* 5 bits */
    char Title[32]; /* Length characters, at most 31, present when Pilot is 1 or 2 */
    uint8_t Note[9]; /* Length bytes, at most 9 */
    uint16_t Nb; /* follows from Length */
    RTCM2_Buoy_s* Buoys; /* Nb elements */
} RTCM2_Harbour_s;

/* Type 6. */
typedef struct RTCM2_Tide_s {
    RTCM2_message_enum kind;
    uint32_t bit_count;
    void* parent;
    uint8_t Preamble; /* 8 bits */
    uint8_t Message_Type; /* 6 bits */
    uint64_t Station_; /* 34 bits */
    int64_t Level; /* 40 bits */
} RTCM2_Tide_s;

/* Room for any one main record; read kind first, then the record of that kind. */
typedef union RTCM2_message_s {
    RTCM2_message_enum kind;
    RTCM2_header_s header;
    RTCM2_Harbour_s Harbour;
    RTCM2_Tide_s Tide;
} RTCM2_message_s;

/* Enables every main kind and clears unknown_type. */
RTCM2_API void RTCM2_init_context(RTCM2_context_s* context);

/* Decodes the one message that starts at bit 0 of data, data_size bytes long, into *message.
 * context may be null: then every kind is enabled and no unknown type is kept.
 * Returns the number of bits that the layout consumed (bytes after it are ignored), or
 *   RTCM2_ERR_INVALID_MESSAGE for a type of no kind or a buffer under 2 bytes (which leaves
 *   unknown_type as it is),
 *   RTCM2_ERR_<KIND>_DISABLED, when only message->header.Message_Type has been written,
 *   the code of the first member that does not fit; members before it are in the record,
 *   RTCM2_ERR_<KIND>_INTERNAL when there is no memory for an array, which is then null with
 *   a count of 0. */
RTCM2_API int32_t RTCM2_decode(RTCM2_context_s* context, const uint8_t* data, uint16_t data_size,
                               RTCM2_message_s* message);

/* The constant's name: "RTCM2_ERR_NONE" for 0 and above, "???" for a code that does not exist. */
RTCM2_API const char* RTCM2_error_to_string(int32_t code);

/* The name of a kind 0 to 3, "???" for any other value. */
RTCM2_API const char* RTCM2_message_enum_to_string(int32_t kind);

/* Construction: writes kind, a bit_count of 0, a null parent, for main kinds preamble and type, null
 * arrays and counts of 0; leaves every other member as it is. Returns 0. */
RTCM2_API int32_t RTCM2_init_Buoy(RTCM2_Buoy_s* record);
RTCM2_API int32_t RTCM2_init_Harbour(RTCM2_Harbour_s* record);
RTCM2_API int32_t RTCM2_init_Tide(RTCM2_Tide_s* record);

/* Accepts every record: returns 0. */
RTCM2_API int32_t RTCM2_validate_Buoy(const RTCM2_Buoy_s* record);
RTCM2_API int32_t RTCM2_validate_Harbour(const RTCM2_Harbour_s* record);
RTCM2_API int32_t RTCM2_validate_Tide(const RTCM2_Tide_s* record);

/* Encoding: writes the record's members at bit 0 of data, data_size bytes long, as they stand; only
 * the bits of the fields change, and nothing of the header is computed. bit_count grows by the bits
 * written. The parts of a member that has separate members for them are folded back into it first.
 * An array must have the elements that its count names; a null array with a count above 0 gives
 * RTCM2_ERR_<KIND>_INTERNAL.
 * Returns the bits written or the code of the first member that does not fit. */
RTCM2_API int32_t RTCM2_encode_Harbour(uint8_t* data, uint16_t data_size, RTCM2_Harbour_s* record);
RTCM2_API int32_t RTCM2_encode_Tide(uint8_t* data, uint16_t data_size, RTCM2_Tide_s* record);

/* Growing: adds one initialised element, whose parent is the record, to the array and returns it;
 * earlier pointers into the array become invalid. Returns null and changes nothing when there is no
 * memory or the count is at its type's maximum. */
RTCM2_API RTCM2_Buoy_s* RTCM2_append_Harbour_Buoys(RTCM2_Harbour_s* record);

/* Release: frees the arrays that the record owns and nothing else. Pointer and count stay as they
 * are, so neither the array nor this function may be used on the record again. */
RTCM2_API void RTCM2_free_Buoy_children(RTCM2_Buoy_s* record);
RTCM2_API void RTCM2_free_Harbour_children(RTCM2_Harbour_s* record);
RTCM2_API void RTCM2_free_Tide_children(RTCM2_Tide_s* record);

/* Texts: copy up to the capacity from a NUL-terminated text, set the length member, end with a NUL.
 * Bytes: copy at most the capacity and leave the length member to the caller. All return 0. */
RTCM2_API int32_t RTCM2_strcpy_Harbour_Title(RTCM2_Harbour_s* record, const char* text);
RTCM2_API int32_t RTCM2_memcpy_Harbour_Note(RTCM2_Harbour_s* record, const void* bytes, uint32_t count);

#ifdef __cplusplus
}
#endif

#endif
