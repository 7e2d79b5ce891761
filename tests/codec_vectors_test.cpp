// Messages from tests/vectors/codec.txt, decoded and encoded whole, at every bit offset and cut at
// every bit.
#include "RTCM2.h"

#include "support/CodecKinds.h"
#include "support/CodecVectors.h"
#include "support/ExactBuffer.h"
#include "support/SlowBits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>

namespace {

class CodecVectors : public testing::TestWithParam<CodecVector> {
protected:
    const CodecVector& m_vector = GetParam();
    const MainKind& m_kind = mainKind(m_vector.type);

    // Checks the members that lie within the first `bits` bits.
    void expectMembers(const TestMessage& message, unsigned bits) const
    {
        unsigned end = 0;
        unsigned complete = 0;
        for (const WireMember& member : m_vector.wire) {
            end += member.width;
            complete = end <= bits ? end : complete;
        }
        const Fields fields = message.fields(elementsWithin(bits));
        EXPECT_EQ(fields.at("kind"), m_kind.kind);
        EXPECT_EQ(fields.at("bit_count"), complete);
        end = 0;
        for (const WireMember& member : m_vector.wire) {
            end += member.width;
            const auto found = fields.find(member.path);
            if (end <= bits && found != fields.end()) {
                EXPECT_EQ(found->second, member.value) << member.path;
            }
        }
    }

    // Elements that lie completely within the first `bits` bits.
    unsigned elementsWithin(unsigned bits) const
    {
        unsigned end = 0;
        for (const WireMember& member : m_vector.wire) {
            end += member.width;
            if (end > bits) {
                return member.element;
            }
        }
        return m_vector.elements;
    }

    // The name of the code for a buffer of so many bits.
    std::string expectedError(unsigned bits) const
    {
        unsigned end = 0;
        for (const WireMember& member : m_vector.wire) {
            end += member.width;
            if (end > bits) {
                return member.error;
            }
        }
        return "RTCM2_ERR_NONE";
    }

    // The message at bit `shift`, with room for `bits` bits of it.
    ExactBuffer placed(unsigned shift, unsigned bits) const
    {
        const std::size_t size = (shift + bits) / 8;
        return ExactBuffer(slow::overlay(std::vector<std::uint8_t>(size, 0xA5), shift,
                                         m_vector.bytes,
                                         std::min(size * 8 - shift, m_vector.bytes.size() * 8)));
    }

    static std::string nameOf(std::int32_t code) { return RTCM2_error_to_string(code); }
};

TEST_P(CodecVectors, DecodesToTheListedMembers)
{
    ExactBuffer buffer(m_vector.bytes);
    TestMessage message(m_kind);
    ASSERT_EQ(RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message.message),
              static_cast<std::int32_t>(m_vector.bits));
    const Fields fields = message.fields();
    for (const auto& members : {m_vector.wire, m_vector.derived}) {
        for (const WireMember& member : members) {
            ASSERT_TRUE(fields.contains(member.path)) << member.path;
            EXPECT_EQ(fields.at(member.path), member.value) << member.path;
        }
    }
    expectMembers(message, m_vector.bits);
    for (unsigned i = 0; i < m_vector.elements; ++i) {
        const std::string array =
            m_vector.wire.back().path.substr(0, m_vector.wire.back().path.find('.') + 1);
        EXPECT_TRUE(fields.at(array + std::to_string(i) + ".has_parent"));
    }
}

TEST_P(CodecVectors, EncodesToTheSameBitsAndNoOther)
{
    ExactBuffer buffer(m_vector.bytes);
    TestMessage message(m_kind);
    RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message.message);
    for (const std::uint8_t fill : {std::uint8_t{0x00}, std::uint8_t{0xFF}}) {
        for (unsigned shift = 0; shift < 8; ++shift) {
            ExactBuffer target((shift + m_vector.bits + 7) / 8, fill);
            const auto expected =
                slow::overlay(target.bytes(), shift, m_vector.bytes, m_vector.bits);
            std::uint32_t offset = shift;
            message.message.header.bit_count = 0;
            EXPECT_EQ(m_kind.encode(message.message, target.data(), target.size(), offset),
                      static_cast<std::int32_t>(m_vector.bits));
            EXPECT_EQ(offset, shift + m_vector.bits);
            EXPECT_EQ(message.message.header.bit_count, m_vector.bits);
            EXPECT_EQ(target.bytes(), expected) << "fill " << +fill << " shift " << shift;
        }
    }
}

// A buffer has whole bytes, so a message that starts at bit 0 to 7 of it ends anywhere.
TEST_P(CodecVectors, CutMessageGivesTheCodeOfTheFirstMemberThatDoesNotFit)
{
    for (unsigned bits = 0; bits <= m_vector.bits; ++bits) {
        for (const unsigned shift : {(8 - bits % 8) % 8, 8 + (8 - bits % 8) % 8}) {
            SCOPED_TRACE("bits " + std::to_string(bits) + " shift " + std::to_string(shift));
            ExactBuffer buffer = placed(shift, bits);
            TestMessage message(m_kind);
            const Fields before = message.fields();
            std::uint32_t offset = shift;
            const std::int32_t result = message.decode(offset, buffer.data(), buffer.size());
            ASSERT_EQ(nameOf(result), expectedError(bits));
            expectMembers(message, bits);
            const Fields after = message.fields(0);
            unsigned end = 0;
            for (const WireMember& member : m_vector.wire) {
                end += member.width;
                if (end > bits && before.contains(member.path)) {
                    EXPECT_EQ(after.at(member.path), before.at(member.path)) << member.path;
                }
            }
        }
    }
}

TEST_P(CodecVectors, ShortTargetGivesTheCodeOfTheFirstMemberThatDoesNotFit)
{
    ExactBuffer whole(m_vector.bytes);
    TestMessage message(m_kind);
    RTCM2_decode(nullptr, whole.data(), whole.size(), &message.message);
    for (unsigned bits = 0; bits < m_vector.bits; ++bits) {
        SCOPED_TRACE("bits " + std::to_string(bits));
        const unsigned shift = (8 - bits % 8) % 8;
        ExactBuffer target((shift + bits) / 8);
        std::uint32_t offset = shift;
        message.message.header.bit_count = 0;
        const std::int32_t result =
            m_kind.encode(message.message, target.data(), target.size(), offset);
        ASSERT_EQ(nameOf(result), expectedError(bits));
        EXPECT_EQ(target.bytes(), slow::overlay(std::vector<std::uint8_t>(target.size()), shift,
                                                m_vector.bytes, message.message.header.bit_count));
    }
}

TEST_P(CodecVectors, DeclaredLengthSkipsPaddingAndRefusesLongerRecords)
{
    struct Case {
        unsigned start;
        std::uint32_t declared;
        std::string result;
        std::uint32_t end;
    };
    const unsigned bits = m_vector.bits;
    const Case cases[] = {
        {3, bits, "RTCM2_ERR_NONE", 3 + bits},
        {8, bits + 1, "RTCM2_ERR_NONE", 9 + bits},
        {5, bits + 100, "RTCM2_ERR_NONE", 105 + bits},
        {8, bits - 1, "_SIZE_UNDERFLOW", 8 + bits},
        {3, 1, "_SIZE_UNDERFLOW", 3 + bits},
        // The end wraps to one below the start.
        {8, 0xFFFFFFF9, "_INTERNAL", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("declared " + std::to_string(c.declared));
        ExactBuffer buffer = placed(c.start, bits + 7);
        TestMessage message(m_kind);
        std::uint32_t offset = c.start;
        const std::int32_t result =
            message.decode(offset, buffer.data(), buffer.size(), c.declared);
        EXPECT_EQ(offset, c.end);
        if (c.result == "RTCM2_ERR_NONE") {
            EXPECT_EQ(result, static_cast<std::int32_t>(c.declared));
        } else {
            EXPECT_TRUE(nameOf(result).starts_with("RTCM2_ERR_" + m_kind.name() + "_"));
            EXPECT_TRUE(nameOf(result).ends_with(c.result)) << nameOf(result);
        }
        expectMembers(message, bits);
    }
}

std::string titleOf(const testing::TestParamInfo<CodecVector>& info)
{
    std::string name;
    for (const char c : info.param.title) {
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Messages, CodecVectors, testing::ValuesIn(readCodecVectors("codec.txt")),
                         titleOf);

TEST(CodecVectorFile, HasEveryMainKind)
{
    std::set<int> types;
    for (const CodecVector& vector : readCodecVectors("codec.txt")) {
        types.insert(vector.type);
    }
    EXPECT_EQ(types.size(), mainKinds().size());
}

}    // namespace
