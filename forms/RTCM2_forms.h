/* The forms in which RTCM 2 messages are stored and sent: finds the messages in a file, a pipe or a
 * line, and writes messages in each of the forms. Valid C99 and C++; needs neither Qt nor the
 * codec, whose RTCM2_decode takes the messages that are found here as they are.
 *
 *     form     what it is
 *     stream   the byte stream of the air and of casters: six bits a byte, words of 30 bits with
 *              parity, at any bit phase, with text and garbage around
 *     packed   messages of three bytes a word, one after another; line ends between them do no harm
 *     hex      a packed message a line, in hexadecimal, behind a time stamp or the like if there is
 *              one
 *     words    words as a receiver records them, each a little-endian number of 32 bits with the
 *              data in bits 6 to 29 and, as the case may be, parity in bits 0 to 5
 *     aivdm    the broadcasts (message 17) among the sentences of an AIS receiver, !AIVDM and the
 *              like, with tag blocks and times if there are any
 *
 * A reader takes the bytes of one input from its first one on, in pieces of any size, and gives
 * what it finds in the order of the input; the outcome does not depend on the pieces:
 *
 *     RTCM2_form_reader_s* reader = RTCM2_form_reader_new("auto");
 *     RTCM2_found_s found;
 *     while ((count = read(input, bytes, sizeof bytes)) > 0) {
 *         RTCM2_form_reader_push(reader, bytes, count);
 *         while (RTCM2_form_reader_next(reader, &found)) { ... }
 *     }
 *     RTCM2_form_reader_finish(reader);
 *     while (RTCM2_form_reader_next(reader, &found)) { ... }
 *     RTCM2_form_reader_free(reader);
 *
 * The form "auto" finds out by itself which one it is. Parity decides, or a line exactly as long as
 * the message in it, or a checksum; forms without these are taken only where nothing that has them
 * is there. Sentences of AIS are read as "aivdm" also where no broadcast is among them yet. What
 * cannot be told gives no message but a text that says what was seen: RTCM2_form_reader_problem.
 * That looks at the first 1,048,576 bytes at most, and memory does not grow beyond.
 *
 * Readers and writers are independent of each other; one of them is used by one thread at a time.
 */
#ifndef RTCM2_FORMS_H
#define RTCM2_FORMS_H

#include "quarn_platform.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define RTCM2_FORMS_API QUARN_SHOWN

/* The most bytes that a packed message has. */
#define RTCM2_FORMS_MAX_PACKED 99

/* What a reader found. */
typedef enum RTCM2_found_enum {
    RTCM2_FOUND_MESSAGE = 1,  /* a whole message; where the form has parity, all of it is good */
    RTCM2_FOUND_DAMAGED = 2,  /* bad parity, or something else where a message had to begin */
    RTCM2_FOUND_TRUNCATED = 3 /* the input ended inside a message */
} RTCM2_found_enum;

/* How a reader comes to its form. */
typedef enum RTCM2_certainty_enum {
    RTCM2_CERTAINTY_GIVEN = 0,   /* it was asked for by its name */
    RTCM2_CERTAINTY_VOUCHED = 1, /* parity or the structure of lines vouches for it */
    RTCM2_CERTAINTY_LIKELY = 2,  /* no other form fits, but it has no parity to be sure by */
    RTCM2_CERTAINTY_UNSURE = 3   /* it is not found out, or not yet */
} RTCM2_certainty_enum;

/* There is no time. */
#define RTCM2_FORMS_NO_TIME INT64_MIN

/* What comes with a message beside its own bits. All zeros with RTCM2_FORMS_NO_TIME is nothing. */
typedef struct RTCM2_envelope_s {
    int64_t received;   /* microseconds since 1970, UTC; RTCM2_FORMS_NO_TIME if it is not known */
    int32_t has_sender; /* 1: an AIS station sent it, 0: the three below say nothing */
    uint32_t mmsi;      /* the station's Maritime Mobile Service Identity, 9 digits */
    int32_t longitude;  /* tenths of a minute, east positive; 108600 (181 degrees) if not known */
    int32_t latitude;   /* tenths of a minute, north positive; 54600 (91 degrees) if not known */
} RTCM2_envelope_s;

/* One finding. Pointers are valid until the reader is called again. */
typedef struct RTCM2_found_s {
    RTCM2_found_enum kind;
    uint64_t number;         /* counts the findings of an input, of all kinds, from 1 */
    uint64_t begin;          /* byte of the input in which the first bit stands, from 0 */
    uint64_t end;            /* one past the byte in which the last bit stands */
    const uint8_t* packed;   /* three bytes a word, first bit highest, without parity; of what is no
                              * message the words before the place where it breaks off */
    size_t packed_size;      /* bytes of that, 0 to RTCM2_FORMS_MAX_PACKED */
    const uint8_t* recorded; /* in the form words: the message as it was recorded; else null */
    size_t recorded_size;    /* bytes of that: four a word; else 0 */
    const char* damage;      /* what is wrong, for people; "" of a message */
    size_t bits_heard;       /* of packed: fewer than it has where a sender left out the last ones,
                              * which then are the usual fill, 1010... */
    RTCM2_envelope_s envelope; /* what came with it, as far as the form tells */
} RTCM2_found_s;

/* What a reader has seen so far; final after the last finding. */
typedef struct RTCM2_form_counters_s {
    uint64_t bytes_read;
    uint64_t bytes_skipped;         /* that belong to no message */
    const char* form;               /* the name of the input's form; "" if it is not found out */
    RTCM2_certainty_enum certainty; /* of that form */
} RTCM2_form_counters_s;

typedef struct RTCM2_form_reader_s RTCM2_form_reader_s;
typedef struct RTCM2_form_writer_s RTCM2_form_writer_s;

/* The name of a form, by an index from 0 on; null when there are no more. The first one is "auto",
 * which is for readers only. */
RTCM2_FORMS_API const char* RTCM2_form_name(int32_t index);

/* A reader for one input in this form. Null where there is no such form or no memory. To be
 * released with RTCM2_form_reader_free. */
RTCM2_FORMS_API RTCM2_form_reader_s* RTCM2_form_reader_new(const char* form);

/* Releases a reader and all that it gave; null is allowed. */
RTCM2_FORMS_API void RTCM2_form_reader_free(RTCM2_form_reader_s* reader);

/* Gives the next bytes of the input, which must stay as they are until RTCM2_form_reader_next has
 * returned 0. Returns 1; or 0, and takes nothing, when bytes given before are not used up or the
 * input has been ended. */
RTCM2_FORMS_API int32_t RTCM2_form_reader_push(RTCM2_form_reader_s* reader, const uint8_t* bytes,
                                               size_t size);

/* Says that no more bytes will come. RTCM2_form_reader_next then gives what was waiting for them.
 */
RTCM2_FORMS_API void RTCM2_form_reader_finish(RTCM2_form_reader_s* reader);

/* The next finding into `found`. Returns 1; or 0, and leaves `found` as it is, when the bytes given
 * so far are used up. Returns -1 when there is no memory; the reader is then good for nothing but
 * being closed. */
RTCM2_FORMS_API int32_t RTCM2_form_reader_next(RTCM2_form_reader_s* reader, RTCM2_found_s* found);

/* Why the input cannot be read, for people: its form could not be told, and what was seen instead.
 * "" where all is well, or not known yet. Valid until the reader is called again. Once there is a
 * text nothing will be found any more, so that the rest of the input need not be given. */
RTCM2_FORMS_API const char* RTCM2_form_reader_problem(RTCM2_form_reader_s* reader);

RTCM2_FORMS_API void RTCM2_form_reader_counters(const RTCM2_form_reader_s* reader,
                                                RTCM2_form_counters_s* counters);

/* A writer for one output in this form, from its first byte on. Null where there is no such form
 * (nor is "auto" one) or no memory. To be released with RTCM2_form_writer_free. */
RTCM2_FORMS_API RTCM2_form_writer_s* RTCM2_form_writer_new(const char* form);

/* Releases a writer and all that it gave; null is allowed. */
RTCM2_FORMS_API void RTCM2_form_writer_free(RTCM2_form_writer_s* writer);

/* What comes with the messages that are written from now on, for forms that have a place for it:
 * "aivdm" needs a sender and writes the time, "hex" writes the time. Null for nothing, as at first.
 */
RTCM2_FORMS_API void RTCM2_form_writer_set_envelope(RTCM2_form_writer_s* writer,
                                                    const RTCM2_envelope_s* envelope);

/* The bytes of a packed message in the writer's form, to be written behind those of the messages
 * before: parity goes on from one to the next. Sets `written` to their number. They are valid until
 * the writer is called again. Null, with `written` 0, for what does not begin with the preamble or
 * has not the words that its header declares, which no reader would find again, where the form
 * needs a sender and there is none, and where there is no memory; the writer can go on. */
RTCM2_FORMS_API const uint8_t* RTCM2_form_writer_write(RTCM2_form_writer_s* writer,
                                                       const uint8_t* packed, size_t packed_size,
                                                       size_t* written);

#ifdef __cplusplus
}
#endif

#endif
