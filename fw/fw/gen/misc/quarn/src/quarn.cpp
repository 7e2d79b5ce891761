#include "quarn.h"

#include "quarn_bits.h"

#include <cstdio>
#include <cstdlib>

void quarn_assert_failed(const char* file, long line, const char* expression)
{
    std::printf("%s:%ld: Assertion failed '%s'\n", file, line, expression);
    std::exit(1);
}

#define QUARN_ASSERT_TEXT(condition, text)                                                         \
    if (!(condition))                                                                              \
    quarn_assert_failed(__FILE__, __LINE__, text)

#define QUARN_ASSERT(condition) QUARN_ASSERT_TEXT(condition, #condition)

// The sum is taken in 64 bits, so that an offset near the end of its range cannot wrap past the
// test.
#define QUARN_ASSERT_BOUNDS()                                                                      \
    QUARN_ASSERT_TEXT(std::uint64_t{offset} + bit_len <= std::uint64_t{data_size} * 8,             \
                      "(offset + bit_len) <= (UINT32) (data_size * 8)")

namespace {

// BYTE and UINT8 have no width precondition. Of a wider field only the low 64 bits can matter.
std::uint64_t readAnyWidth(const std::uint8_t* data, std::uint32_t offset, unsigned width)
{
    const unsigned ignored = width > 64 ? width - 64 : 0;
    return quarn::readBits(data, offset + ignored, width - ignored);
}

void writeAnyWidth(std::uint8_t* data, std::uint32_t offset, unsigned width, std::uint64_t value)
{
    for (; width > 64; --width) {
        quarn::writeBits(data, offset++, 1, 0);
    }
    quarn::writeBits(data, offset, width, value);
}

}    // namespace

#define QUARN_DEFINE_READER(TYPE, STORAGE, WIDTH_ASSERTIONS)                                       \
    void quarn_read_##TYPE(const uint8_t* data, uint16_t data_size, uint32_t offset,               \
                           uint8_t bit_len, STORAGE* value_out)                                    \
    {                                                                                              \
        QUARN_ASSERT_BOUNDS();                                                                     \
        WIDTH_ASSERTIONS                                                                           \
        *value_out = quarn::fromBits<STORAGE>(readAnyWidth(data, offset, bit_len), bit_len);       \
    }

#define QUARN_DEFINE_WRITER(TYPE, STORAGE, WIDTH_ASSERTIONS)                                       \
    void quarn_write_##TYPE(uint8_t* data, uint16_t data_size, uint32_t offset, uint8_t bit_len,   \
                            STORAGE value)                                                         \
    {                                                                                              \
        QUARN_ASSERT_BOUNDS();                                                                     \
        WIDTH_ASSERTIONS                                                                           \
        writeAnyWidth(data, offset, bit_len, static_cast<std::make_unsigned_t<STORAGE>>(value));   \
    }

#define QUARN_ANY_WIDTH
#define QUARN_1_TO_8                                                                               \
    QUARN_ASSERT(bit_len > 0);                                                                     \
    QUARN_ASSERT(bit_len <= 8);
#define QUARN_9_TO_16                                                                              \
    QUARN_ASSERT(bit_len > 8);                                                                     \
    QUARN_ASSERT(bit_len <= 16);
#define QUARN_17_TO_32                                                                             \
    QUARN_ASSERT(bit_len > 16);                                                                    \
    QUARN_ASSERT(bit_len <= 32);
#define QUARN_33_TO_64                                                                             \
    QUARN_ASSERT(bit_len > 32);                                                                    \
    QUARN_ASSERT(bit_len <= 64);

QUARN_DEFINE_READER(BYTE, uint8_t, QUARN_ANY_WIDTH)
QUARN_DEFINE_READER(CHAR, quarn_char, QUARN_1_TO_8)
QUARN_DEFINE_READER(UINT8, uint8_t, QUARN_ANY_WIDTH)
QUARN_DEFINE_READER(INT8, int8_t, QUARN_1_TO_8)
QUARN_DEFINE_READER(UINT16, uint16_t, QUARN_9_TO_16)
QUARN_DEFINE_READER(INT16, int16_t, QUARN_9_TO_16)
QUARN_DEFINE_READER(UINT32, uint32_t, QUARN_17_TO_32)
QUARN_DEFINE_READER(INT32, int32_t, QUARN_17_TO_32)
QUARN_DEFINE_READER(UINT64, uint64_t, QUARN_33_TO_64)
QUARN_DEFINE_READER(INT64, int64_t, QUARN_33_TO_64)

QUARN_DEFINE_WRITER(BYTE, uint8_t, QUARN_ANY_WIDTH)
QUARN_DEFINE_WRITER(CHAR, quarn_char, QUARN_ANY_WIDTH)
QUARN_DEFINE_WRITER(UINT8, uint8_t, QUARN_ANY_WIDTH)
QUARN_DEFINE_WRITER(INT8, int8_t, QUARN_ANY_WIDTH)
QUARN_DEFINE_WRITER(UINT16, uint16_t, QUARN_9_TO_16)
QUARN_DEFINE_WRITER(INT16, int16_t, QUARN_9_TO_16)
QUARN_DEFINE_WRITER(UINT32, uint32_t, QUARN_17_TO_32)
QUARN_DEFINE_WRITER(INT32, int32_t, QUARN_17_TO_32)
QUARN_DEFINE_WRITER(UINT64, uint64_t, QUARN_33_TO_64)
QUARN_DEFINE_WRITER(INT64, int64_t, QUARN_33_TO_64)
