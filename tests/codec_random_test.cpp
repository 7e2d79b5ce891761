// Random messages of every main kind: what holds whatever the bits are.
#include "support/CodecKinds.h"
#include "support/ExactBuffer.h"
#include "support/SlowBits.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Bytes = std::vector<std::uint8_t>;

// Some are shorter than their word count says, some longer.
Bytes randomMessage(const MainKind& kind, std::mt19937& random)
{
    Bytes bytes(2 + random() % 110);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    slow::write(bytes, 8, 6, static_cast<unsigned>(kind.type));
    if (bytes.size() >= 6 && random() % 2 == 0) {
        slow::write(bytes, 40, 5, random() % 7);
    }
    return bytes;
}

TEST(RandomMessages, EncodeToTheBitsTheyCameFrom)
{
    for (const MainKind& kind : mainKinds()) {
        SCOPED_TRACE(kind.type);
        std::mt19937 random(static_cast<unsigned>(kind.type));
        unsigned decoded = 0;
        for (unsigned round = 0; round < 100; ++round) {
            const Bytes bytes = randomMessage(kind, random);
            TestMessage message(kind);
            const std::int32_t result = message.decode(bytes);
            ASSERT_LE(result, static_cast<std::int32_t>(bytes.size() * 8));
            if (result < 0) {
                continue;
            }
            const auto bits = static_cast<std::size_t>(result);
            for (const std::uint8_t fill : {std::uint8_t{0x00}, std::uint8_t{0xFF}}) {
                ExactBuffer target((bits + 7) / 8 + round % 3, fill);
                const Bytes expected = slow::overlay(target.bytes(), 0, bytes, bits);
                ASSERT_EQ(kind.encodeMessage(message.message, target.data(), target.size()),
                          result);
                ASSERT_EQ(target.bytes(), expected);
            }
            ASSERT_EQ(message.message.header.bit_count, 3 * bits) << "grows with each encoding";
            ++decoded;
        }
        EXPECT_GT(decoded, 10U);
    }
}

}    // namespace
