/* Messages out of a stream of bytes and back: words, parity, positions. Valid C99 and C++.
 *
 * In a stream each byte 01xxxxxx carries six bits, the least significant one first; other bytes are
 * skipped. Thirty bits are a word: 24 data bits and 6 parity bits. A message is a header of two
 * words and up to 31 data words. Packed, as the decoders take it, it is the data bits of its words,
 * three bytes a word, the most significant bit first.
 *
 *     RTCM2_framer_s* framer = RTCM2_framer_new();
 *     RTCM2_frame_s frame;
 *     while (... bytes come in ...) {
 *         RTCM2_framer_push(framer, bytes, size);
 *         while (RTCM2_framer_next(framer, &frame)) {
 *             if (frame.verdict == RTCM2_VERDICT_ACCEPTED) ... frame.packed, frame.size ...
 *         }
 *     }
 *     RTCM2_framer_finish(framer);
 *     while (RTCM2_framer_next(framer, &frame)) ... as above ...
 *     RTCM2_framer_free(framer);
 *
 * A framer is used by one caller at a time; different framers know nothing of each other. Memory is
 * taken in RTCM2_framer_new alone. Pointers must not be null except where that is said.
 *
 * A later version may add members to the structures below and numbers to the enumeration. The name
 * under which programs load the library changes with it.
 */
#ifndef RTCM2_FRAMING_H
#define RTCM2_FRAMING_H

#include "quarn_platform.h"

#include <stddef.h>
#include <stdint.h>

#define RTCM2_FRAMING_API QUARN_SHOWN

#define RTCM2_WORDS_MAX 33        /* words of the longest message, header included */
#define RTCM2_PACKED_WORD_BYTES 3 /* bytes of a word in a packed message */
#define RTCM2_STREAM_WORD_BYTES 5 /* bytes of a word in a stream */
#define RTCM2_STREAM_BYTE_BITS 6  /* bits of a word that a byte of a stream carries */
#define RTCM2_WORD_DATA_BITS 24   /* the first bits of a word */
#define RTCM2_WORD_PARITY_BITS 6  /* the bits behind them */
#define RTCM2_WORD_CARRIERS 6     /* bytes of a stream with bits of a word that begins inside one */

#ifdef __cplusplus
extern "C" {
#endif

/* What a framer finds about a place where a message may begin. */
typedef enum RTCM2_verdict_enum {
    RTCM2_VERDICT_ACCEPTED = 0,    /* a message: all words have good parity */
    RTCM2_VERDICT_NO_PREAMBLE = 1, /* no preamble where a message had to begin */
    RTCM2_VERDICT_BAD_PARITY = 2,  /* a word has bad parity: `failed_word` */
    RTCM2_VERDICT_CUT_OFF = 3,     /* the input ended before the last word */
    RTCM2_VERDICT_HIDES_OTHERS = 4 /* good words, but of several messages: parts are missing */
} RTCM2_verdict_enum;

/* What a framer delivers: a message, or a place where one was damaged. */
typedef struct RTCM2_frame_s {
    int32_t verdict;       /* an RTCM2_verdict_enum */
    uint32_t failed_word;  /* the word that failed, from 1; 0 if no single one did */
    uint64_t number;       /* counts all frames of a framer, from 1 */
    uint64_t begin;        /* byte of the input in which the first bit stands, from 0 */
    uint64_t end;          /* one past the byte of the input in which the last bit stands */
    const uint8_t* packed; /* the message, or its words before the place where it broke off; belongs
                            * to the framer and lasts until the next call of RTCM2_framer_next */
    size_t size;           /* bytes in `packed`: three for each word */
} RTCM2_frame_s;

/* A byte of the input that carries bits of a word. */
typedef struct RTCM2_carrier_s {
    uint64_t position; /* in the input, from 0 */
    uint8_t value;     /* as it was received */
} RTCM2_carrier_s;

/* A word of a frame as it was received. */
typedef struct RTCM2_word_s {
    uint64_t byte;       /* byte of the input in which the first bit stands, from 0 */
    uint32_t bit;        /* which of that byte's six bits it is, 0 the first one sent */
    uint32_t data;       /* 24 data bits, the first one sent highest, with an inversion undone */
    uint8_t good_parity; /* 1: all six parity bits are right; else 0 */
    uint8_t inverted;    /* 1: the data bits were sent inverted; else 0 */
    uint32_t received; /* all bits as they came, the first one sent highest: the data bits, inverted
                        * or not, and the parity bits */
    uint32_t carrier_count; /* the bytes that they came in; between these may stand others */
    RTCM2_carrier_s carriers[RTCM2_WORD_CARRIERS];
} RTCM2_word_s;

/* What a framer has seen so far. Final after RTCM2_framer_finish and the last RTCM2_framer_next. */
typedef struct RTCM2_framing_counters_s {
    uint64_t bytes_read;            /* bytes taken */
    uint64_t bytes_skipped;         /* bytes not of the form 01xxxxxx, and lines of text */
    uint64_t bits_outside_messages; /* bits of the other bytes that belong to no accepted message */
} RTCM2_framing_counters_s;

/* The header of a packed message. */
typedef struct RTCM2_framing_header_s {
    uint32_t type;       /* 0 to 63 */
    uint32_t station;    /* 0 to 1023 */
    uint32_t z_count;    /* 0 to 8191: time of the hour in units of 0.6 seconds, good below 6000 */
    uint32_t sequence;   /* 0 to 7 */
    uint32_t data_words; /* 0 to 31: words behind the header */
    uint32_t health;     /* 0 to 7 */
} RTCM2_framing_header_s;

typedef struct RTCM2_framer_s RTCM2_framer_s;

/* A new framer, to be released with RTCM2_framer_free; null if there is no memory. */
RTCM2_FRAMING_API RTCM2_framer_s* RTCM2_framer_new(void);

/* Releases a framer; a null pointer is ignored. */
RTCM2_FRAMING_API void RTCM2_framer_free(RTCM2_framer_s* framer);

/* Hands in bytes, which must stay where they are until RTCM2_framer_next has returned 0. Returns 1;
 * or 0, and takes nothing, while bytes from before are unread or after RTCM2_framer_finish. `bytes`
 * may be null if `size` is 0. How a stream is cut into pieces makes no difference. */
RTCM2_FRAMING_API int32_t RTCM2_framer_push(RTCM2_framer_s* framer, const uint8_t* bytes,
                                            size_t size);

/* No more bytes will come: RTCM2_framer_next then delivers what was still waiting for them. */
RTCM2_FRAMING_API void RTCM2_framer_finish(RTCM2_framer_s* framer);

/* Writes the next frame to `frame` and returns 1; returns 0, and leaves `frame` as it is, if that
 * takes more bytes, or if nothing is left after RTCM2_framer_finish. */
RTCM2_FRAMING_API int32_t RTCM2_framer_next(RTCM2_framer_s* framer, RTCM2_frame_s* frame);

/* How many words of the current frame can be asked for: those of `packed`, and the one that failed.
 * 0 if RTCM2_framer_next returned 0 or was not called yet. */
RTCM2_FRAMING_API uint32_t RTCM2_framer_words(const RTCM2_framer_s* framer);

/* Writes a word of the current frame to `word` and returns 1; returns 0, and leaves `word` as it
 * is, if there is none of that index. Indices begin with 0. */
RTCM2_FRAMING_API int32_t RTCM2_framer_word(const RTCM2_framer_s* framer, uint32_t index,
                                            RTCM2_word_s* word);

/* Writes what the framer has seen so far to `counters`. */
RTCM2_FRAMING_API void RTCM2_framer_counters(const RTCM2_framer_s* framer,
                                             RTCM2_framing_counters_s* counters);

/* A verdict in a few English words, UTF-8, which last as long as the library; null for a number
 * that is no verdict. */
RTCM2_FRAMING_API const char* RTCM2_verdict_text(int32_t verdict);

/* Reads the header of a packed message of `size` bytes. Returns 1; or 0, and leaves `header` as it
 * is, if there are less than the 6 bytes of a header or they do not begin with the preamble. */
RTCM2_FRAMING_API int32_t RTCM2_read_header(const uint8_t* packed, size_t size,
                                            RTCM2_framing_header_s* header);

/* The six parity bits (the last one sent lowest) of 24 data bits (the first one sent highest),
 * behind a word of which `last_bits` are the last two bits as sent (0 to 3, the last one lowest).
 */
RTCM2_FRAMING_API uint32_t RTCM2_word_parity(uint32_t data, uint32_t last_bits);

/* Writes a packed message of `size` bytes as bytes of a stream, five for each word, to `stream`,
 * which has room for `capacity` bytes. `last_bits` goes from message to message: 0 before the first
 * one, then what the call before left there. Returns the number of bytes written; or 0, and changes
 * nothing, if there is less room, or if `packed` does not begin with the preamble or has another
 * length than its header says. */
RTCM2_FRAMING_API size_t RTCM2_write_message(const uint8_t* packed, size_t size,
                                             uint32_t* last_bits, uint8_t* stream, size_t capacity);

#ifdef __cplusplus
}
#endif

#endif
