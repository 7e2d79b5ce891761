#include "quarn.h"
#include "quarn_bits.h"

#include "support/ExactBuffer.h"
#include "support/SlowBits.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <unistd.h>
#include <utility>

namespace {

std::vector<std::uint8_t> randomBytes(std::mt19937& random, std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

// A field of `width` bits as a number, with a sign if T has one.
template <class T>
T expectedValue(std::uint64_t bits, unsigned width)
{
    if (std::is_signed_v<T> && (bits >> (width - 1)) == 1) {
        for (unsigned i = width; i < 64; ++i) {
            bits |= std::uint64_t{1} << i;
        }
    }
    return static_cast<T>(bits);
}

// Every width at every bit of a byte, the field's last byte being the last byte of its block.
template <class T, auto readField, auto writeField>
void checkEveryPlace(unsigned narrowest, unsigned widest)
{
    std::mt19937 random(17);
    for (unsigned width = narrowest; width <= widest; ++width) {
        for (unsigned offset = 0; offset < 16; ++offset) {
            SCOPED_TRACE("width " + std::to_string(width) + " offset " + std::to_string(offset));
            ExactBuffer buffer(randomBytes(random, (offset + width + 7) / 8));
            const auto before = buffer.bytes();
            const auto bitLength = static_cast<std::uint8_t>(width);
            T value{};
            readField(buffer.data(), buffer.size(), offset, bitLength, &value);
            ASSERT_EQ(value, expectedValue<T>(slow::read(before, offset, width), width));

            const T written = static_cast<T>(std::uint64_t{random()} << 32 | random());
            auto expected = before;
            slow::write(expected, offset, width, static_cast<std::make_unsigned_t<T>>(written));
            writeField(buffer.data(), buffer.size(), offset, bitLength, written);
            ASSERT_EQ(buffer.bytes(), expected);
        }
    }
}

#define CHECK_TYPE(TYPE, STORAGE, FROM, TO)                                                        \
    SCOPED_TRACE(#TYPE);                                                                           \
    checkEveryPlace<STORAGE, quarn_read_##TYPE, quarn_write_##TYPE>(FROM, TO)

TEST(Quarn, EveryTypeReadsAndWritesEveryWidthAtEveryBit)
{
    CHECK_TYPE(BYTE, std::uint8_t, 1, 200);
    CHECK_TYPE(UINT8, std::uint8_t, 1, 200);
    CHECK_TYPE(CHAR, quarn_char, 1, 8);
    CHECK_TYPE(INT8, std::int8_t, 1, 8);
    CHECK_TYPE(UINT16, std::uint16_t, 9, 16);
    CHECK_TYPE(INT16, std::int16_t, 9, 16);
    CHECK_TYPE(UINT32, std::uint32_t, 17, 32);
    CHECK_TYPE(INT32, std::int32_t, 17, 32);
    CHECK_TYPE(UINT64, std::uint64_t, 33, 64);
    CHECK_TYPE(INT64, std::int64_t, 33, 64);
}

// The form with constant position and width, and the one without assertions.
template <class T, unsigned Offset, unsigned Width>
void checkConstantForm(std::mt19937& random)
{
    SCOPED_TRACE("width " + std::to_string(Width) + " offset " + std::to_string(Offset));
    ExactBuffer buffer(randomBytes(random, (Offset + Width + 7) / 8));
    const auto before = buffer.bytes();
    const T value = quarn::read<T, Offset, Width>(buffer.data());
    EXPECT_EQ(value, expectedValue<T>(slow::read(before, Offset, Width), Width));
    EXPECT_EQ(quarn::fromBits<T>(quarn::readBits(buffer.data(), Offset, Width), Width), value);

    const T written = static_cast<T>(std::uint64_t{random()} << 32 | random());
    auto expected = before;
    slow::write(expected, Offset, Width, static_cast<std::uint64_t>(written));
    quarn::write<Offset, Width>(buffer.data(), written);
    EXPECT_EQ(buffer.bytes(), expected);
}

template <unsigned... Widths>
void checkConstantWidths(std::integer_sequence<unsigned, Widths...>)
{
    std::mt19937 random(4);
    (checkConstantForm<std::int64_t, 0, Widths + 1>(random), ...);
    (checkConstantForm<std::uint64_t, Widths % 8, 64 - Widths>(random), ...);
    (checkConstantForm<std::int64_t, 8 + Widths % 8, (Widths > 56 ? 57 : Widths + 1)>(random), ...);
}

TEST(Quarn, ConstantFormAgreesWithTheRunTimeForm)
{
    checkConstantWidths(std::make_integer_sequence<unsigned, 64>());
}

struct Breach {
    const char* expression;                // a pattern
    void (*action)(std::uint8_t* data);    // data has 10 bytes
};

template <class T, auto read, unsigned Offset, unsigned Width>
void reading(std::uint8_t* data)
{
    T value{};
    read(data, 10, Offset, Width, &value);
}

template <auto write, unsigned Offset, unsigned Width>
void writing(std::uint8_t* data)
{
    write(data, 10, Offset, Width, 0);
}

const char* const BOUNDS = "\\(offset \\+ bit_len\\) <= \\(UINT32\\) \\(data_size \\* 8\\)";

const Breach BREACHES[] = {
    {BOUNDS, reading<std::uint8_t, quarn_read_BYTE, 73, 8>},
    {BOUNDS, writing<quarn_write_INT64, 41, 40>},
    // The sum of 32 bits would wrap to 4.
    {BOUNDS, reading<std::uint8_t, quarn_read_UINT8, 0xFFFFFFFC, 8>},
    {BOUNDS, writing<quarn_write_UINT8, 0xFFFFFFFC, 8>},
    // The bounds are tested before the width.
    {BOUNDS, reading<std::uint16_t, quarn_read_UINT16, 80, 3>},
    {"bit_len > 0", reading<quarn_char, quarn_read_CHAR, 0, 0>},
    {"bit_len <= 8", reading<std::int8_t, quarn_read_INT8, 0, 9>},
    {"bit_len > 8", reading<std::uint16_t, quarn_read_UINT16, 0, 8>},
    {"bit_len > 8", writing<quarn_write_UINT16, 0, 8>},
    {"bit_len <= 16", reading<std::int16_t, quarn_read_INT16, 0, 17>},
    {"bit_len <= 16", writing<quarn_write_UINT16, 0, 17>},
    {"bit_len > 16", reading<std::int32_t, quarn_read_INT32, 0, 16>},
    {"bit_len > 16", writing<quarn_write_UINT32, 0, 16>},
    {"bit_len <= 32", reading<std::uint32_t, quarn_read_UINT32, 0, 33>},
    {"bit_len <= 32", writing<quarn_write_INT32, 0, 33>},
    {"bit_len > 32", reading<std::uint64_t, quarn_read_UINT64, 0, 32>},
    {"bit_len > 32", writing<quarn_write_INT64, 0, 32>},
    {"bit_len <= 64", reading<std::int64_t, quarn_read_INT64, 0, 65>},
    {"bit_len <= 64", writing<quarn_write_UINT64, 0, 65>},
};

// Runs `action` in a process of its own, of whose outputs only the standard one is kept.
template <class Action>
void expectAssertion(Action action, const std::string& output)
{
    const auto run = [&] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        close(STDERR_FILENO);
        action();
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(1), output);
}

TEST(Quarn, BrokenPreconditionEndsTheProcess)
{
    ExactBuffer buffer(10);
    for (const Breach& breach : BREACHES) {
        SCOPED_TRACE(&breach - BREACHES);
        expectAssertion([&] { breach.action(buffer.data()); },
                        std::string(":[1-9][0-9]*: Assertion failed '") + breach.expression +
                            "'\n$");
    }
}

TEST(Quarn, FailedAssertionNamesFileLineAndExpression)
{
    expectAssertion([] { quarn_assert_failed("a.c", 70000, "x > %d"); },
                    "^a.c:70000: Assertion failed 'x > %d'\n$");
}

TEST(Quarn, ReachesTheLastBitOfTheLargestBuffer)
{
    ExactBuffer buffer(65535);
    const std::uint32_t last = 65535U * 8 - 64;
    quarn_write_UINT64(buffer.data(), 65535, last, 64, 0x0123456789ABCDEF);
    std::uint64_t value = 0;
    quarn_read_UINT64(buffer.data(), 65535, last, 64, &value);
    EXPECT_EQ(value, 0x0123456789ABCDEF);
    EXPECT_EQ(buffer.bytes()[65534], 0xEF);
}

}    // namespace
