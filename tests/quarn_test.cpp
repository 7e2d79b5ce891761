#include "quarn.h"

#include "support/ExactBuffer.h"
#include "support/SlowBits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <type_traits>
#include <unistd.h>

namespace {

std::mt19937 random{17};

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

// Every width at every bit of a byte; and what breaks the preconditions of a type with a narrowest
// and a widest field. The others take any.
template <class T, auto readField, auto writeField>
void checkType(unsigned narrowest, unsigned widest)
{
    for (unsigned width = narrowest; width <= widest; ++width) {
        const auto bits = static_cast<std::uint8_t>(width);
        for (unsigned offset = 0; offset < 16; ++offset) {
            SCOPED_TRACE(testing::Message() << "width " << width << " offset " << offset);
            ExactBuffer buffer((offset + width + 7) / 8);
            std::generate_n(buffer.data(), buffer.size(),
                            [] { return static_cast<std::uint8_t>(random()); });
            auto expected = buffer.bytes();
            T value{};
            readField(buffer.data(), buffer.size(), offset, bits, &value);
            ASSERT_EQ(value, expectedValue<T>(slow::read(expected, offset, width), width));
            const T written = static_cast<T>(std::uint64_t{random()} << 32 | random());
            slow::write(expected, offset, width, static_cast<std::make_unsigned_t<T>>(written));
            writeField(buffer.data(), buffer.size(), offset, bits, written);
            ASSERT_EQ(buffer.bytes(), expected);
        }
    }
    const auto refuses = [](bool writes, std::uint32_t offset, unsigned width, std::string text) {
        ExactBuffer buffer(10);
        const auto bits = static_cast<std::uint8_t>(width);
        T value{};
        expectAssertion(
            [&] {
                writes ? writeField(buffer.data(), 10, offset, bits, value)
                       : readField(buffer.data(), 10, offset, bits, &value);
            },
            ":[1-9][0-9]*: Assertion failed '" + text + "'\n$");
    };
    const char* const bounds = "\\(offset \\+ bit_len\\) <= \\(UINT32\\) \\(data_size \\* 8\\)";
    for (const bool writes : {false, true}) {
        refuses(writes, 73, 8, bounds);            // before the width is tested
        refuses(writes, 0xFFFFFFFC, 8, bounds);    // the sum of 32 bits would wrap
        if (widest <= 64 && (!writes || narrowest > 1)) {
            refuses(writes, 0, narrowest - 1, "bit_len > " + std::to_string(narrowest - 1));
            refuses(writes, 0, widest + 1, "bit_len <= " + std::to_string(widest));
        }
    }
}

#define CHECK_TYPE(TYPE, STORAGE, FROM, TO)                                                        \
    {                                                                                              \
        SCOPED_TRACE(#TYPE);                                                                       \
        checkType<STORAGE, quarn_read_##TYPE, quarn_write_##TYPE>(FROM, TO);                       \
    }

TEST(Quarn, EveryTypeReadsAndWritesItsWidthsAtEveryBitAndNoOther)
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
