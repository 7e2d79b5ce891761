// Random messages of every main kind: what holds whatever the bits are.
#include "RTCM2.h"

#include "support/CodecKinds.h"
#include "support/ExactBuffer.h"
#include "support/SlowBits.h"

#include <gtest/gtest.h>

#include <random>

namespace {

class RandomMessages : public testing::TestWithParam<int> {
protected:
    std::vector<std::uint8_t> next()
    {
        // Some are shorter than their word count says, some longer.
        std::vector<std::uint8_t> bytes(2 + m_random() % 110);
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(m_random());
        }
        slow::write(bytes, 8, 6, static_cast<unsigned>(m_kind.type));
        if (bytes.size() >= 6 && m_random() % 2 == 0) {
            slow::write(bytes, 40, 5, m_random() % 7);
        }
        return bytes;
    }

    const MainKind& m_kind = mainKind(GetParam());
    std::mt19937 m_random{static_cast<unsigned>(GetParam())};
};

TEST_P(RandomMessages, DecodeAlikeAtEveryBitOffset)
{
    unsigned decoded = 0;
    for (int round = 0; round < 100; ++round) {
        const auto bytes = next();
        ExactBuffer buffer(bytes);
        TestMessage message(m_kind);
        const std::int32_t result =
            RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message.message);
        ASSERT_LE(result, static_cast<std::int32_t>(bytes.size() * 8));
        if (result > 0) {
            ASSERT_EQ(message.message.header.bit_count, static_cast<std::uint32_t>(result));
            ++decoded;
        }
        // Elements after the one that failed are not written.
        const unsigned elements = result > 0 ? ~0U : 0;
        const Fields expected = message.fields(elements);
        for (unsigned shift = 1; shift <= 8; ++shift) {
            ExactBuffer shifted(
                slow::overlay(std::vector<std::uint8_t>((shift + 7) / 8 + bytes.size()), shift,
                              bytes, bytes.size() * 8));
            TestMessage again(m_kind);
            std::uint32_t offset = shift;
            const std::int32_t code = again.decode(offset, shifted.data(), shifted.size());
            if (result > 0 || shift == 8) {
                ASSERT_EQ(code, result);
                ASSERT_EQ(again.fields(elements), expected) << "shift " << shift;
                ASSERT_EQ(offset, shift + message.message.header.bit_count);
            } else {
                // The last byte has room for some more bits, so a later member may be the first
                // that does not fit.
                ASSERT_GE(again.message.header.bit_count, message.message.header.bit_count);
            }
        }
    }
    EXPECT_GT(decoded, 10U);
}

TEST_P(RandomMessages, EncodeToTheBitsTheyCameFrom)
{
    for (int round = 0; round < 400; ++round) {
        const auto bytes = next();
        ExactBuffer buffer(bytes);
        TestMessage message(m_kind);
        const std::int32_t result =
            RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message.message);
        if (result < 0) {
            continue;
        }
        const auto bits = static_cast<std::size_t>(result);
        for (const std::uint8_t fill : {std::uint8_t{0x00}, std::uint8_t{0xFF}}) {
            ExactBuffer target((bits + 7) / 8 + round % 3U, fill);
            const auto expected = slow::overlay(target.bytes(), 0, bytes, bits);
            ASSERT_EQ(m_kind.encodeMessage(message.message, target.data(), target.size()), result);
            ASSERT_EQ(target.bytes(), expected);
        }
        ASSERT_EQ(message.message.header.bit_count, 3U * bits) << "grows with each encoding";
    }
}

std::vector<int> allTypes()
{
    std::vector<int> types;
    for (const MainKind& kind : mainKinds()) {
        types.push_back(kind.type);
    }
    return types;
}

INSTANTIATE_TEST_SUITE_P(Types, RandomMessages, testing::ValuesIn(allTypes()),
                         testing::PrintToStringParamName());

}    // namespace
