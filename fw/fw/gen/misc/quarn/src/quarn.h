/* quarn: reads and writes integers of 1 to 64 bits at any bit of a byte buffer.
 *
 * Bit 0 is the most significant bit of the first byte; a field's first bit is its most significant
 * one. A buffer has at most 65,535 bytes. All functions are stateless and re-entrant.
 *
 * Nothing here returns an error. A caller guarantees the preconditions; a broken one ends the
 * process through quarn_assert_failed:
 *   - offset + bit_len <= data_size * 8, for every function;
 *   - the width class of the type, in bits:
 *       CHAR, INT8 readers 1 to 8; UINT16, INT16 9 to 16; UINT32, INT32 17 to 32;
 *       UINT64, INT64 33 to 64; BYTE, UINT8 and the CHAR, INT8 writers are meant for 1 to 8 and
 *       handle any width: readers keep the low 8 bits, writers fill up with zeros.
 *
 * Valid C99 and C++.
 */
#ifndef QUARN_H
#define QUARN_H

#include "quarn_platform.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Prints "file:line: Assertion failed 'expression'" on standard output and exits with status 1. */
QUARN_NORETURN QUARN_SHOWN void quarn_assert_failed(const char* file, long line,
                                                    const char* expression);

/* Readers: store the bits offset to offset + bit_len - 1 of data in *value_out, signed types
 * sign-extended. The whole storage is written. The caller advances offset itself. */
#define QUARN_DECLARE_READER(TYPE, STORAGE)                                                        \
    QUARN_SHOWN void quarn_read_##TYPE(const uint8_t* data, uint16_t data_size, uint32_t offset,   \
                                       uint8_t bit_len, STORAGE* value_out);

/* Writers: store the low bit_len bits of value at offset. No other bit of data changes. */
#define QUARN_DECLARE_WRITER(TYPE, STORAGE)                                                        \
    QUARN_SHOWN void quarn_write_##TYPE(uint8_t* data, uint16_t data_size, uint32_t offset,        \
                                        uint8_t bit_len, STORAGE value);

#define QUARN_FOR_EACH_TYPE(APPLY)                                                                 \
    APPLY(BYTE, uint8_t)                                                                           \
    APPLY(CHAR, quarn_char)                                                                        \
    APPLY(UINT8, uint8_t)                                                                          \
    APPLY(INT8, int8_t)                                                                            \
    APPLY(UINT16, uint16_t)                                                                        \
    APPLY(INT16, int16_t)                                                                          \
    APPLY(UINT32, uint32_t)                                                                        \
    APPLY(INT32, int32_t)                                                                          \
    APPLY(UINT64, uint64_t)                                                                        \
    APPLY(INT64, int64_t)

QUARN_FOR_EACH_TYPE(QUARN_DECLARE_READER)
QUARN_FOR_EACH_TYPE(QUARN_DECLARE_WRITER)

#ifdef __cplusplus
}
#endif

#endif
