// Messages from tests/vectors/codec.txt, decoded and encoded whole, at every bit offset and cut at
// every bit.
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
    // The first member that does not lie within the first `bits` bits, or null.
    const WireMember* firstBeyond(unsigned bits) const
    {
        const auto found = std::find_if(m_vector.wire.begin(), m_vector.wire.end(),
                                        [=](const WireMember& m) { return m.end > bits; });
        return found != m_vector.wire.end() ? &*found : nullptr;
    }

    std::string expectedError(unsigned bits) const
    {
        const WireMember* const beyond = firstBeyond(bits);
        return beyond ? beyond->error : "RTCM2_ERR_NONE";
    }

    // Checks the members that lie within the first `bits` bits, and that no other one has changed.
    void expectMembers(unsigned bits) const
    {
        const WireMember* const beyond = firstBeyond(bits);
        const Fields fields = m_message.fields(beyond ? beyond->element : m_vector.elements);
        EXPECT_EQ(fields.at("kind"), m_kind.kind);
        EXPECT_EQ(fields.at("bit_count"), beyond ? beyond->end - beyond->width : m_vector.bits);
        for (const WireMember& member : m_vector.wire) {
            const auto found = fields.find(member.path);
            if (member.end <= bits && found != fields.end()) {
                EXPECT_EQ(found->second, member.value) << member.path;
            } else if (member.end > bits && m_untouched.contains(member.path)) {
                EXPECT_EQ(fields.at(member.path), m_untouched.at(member.path)) << member.path;
            }
        }
    }

    // Decodes the message at bit `shift` of a buffer with room for `bits` bits of it.
    std::int32_t decodeAt(std::uint32_t& shift, unsigned bits, std::uint32_t declaredLength = 0)
    {
        const std::size_t size = (shift + bits) / 8;
        ExactBuffer buffer(slow::overlay(std::vector<std::uint8_t>(size, 0xA5), shift,
                                         m_vector.bytes,
                                         std::min(size * 8 - shift, m_vector.bytes.size() * 8)));
        m_message.reset();
        return m_kind.decode(m_message.message, shift, buffer.data(), buffer.size(),
                             declaredLength);
    }

    // Encodes what the whole message decodes to at bit `shift` of `target`.
    std::int32_t encodeAt(std::uint32_t& shift, ExactBuffer& target)
    {
        m_message.decode(m_vector.bytes);
        m_message.message.header.bit_count = 0;
        return m_kind.encode(m_message.message, target.data(), target.size(), shift);
    }

    const CodecVector& m_vector = GetParam();
    const MainKind& m_kind = mainKind(m_vector.type);
    TestMessage m_message{m_kind};
    const Fields m_untouched = m_message.fields();
};

TEST_P(CodecVectors, DecodesToTheListedMembers)
{
    ASSERT_EQ(m_message.decode(m_vector.bytes), static_cast<std::int32_t>(m_vector.bits));
    expectMembers(m_vector.bits);
    const Fields fields = m_message.fields();
    for (const auto& members : {m_vector.wire, m_vector.derived}) {
        for (const WireMember& member : members) {
            ASSERT_TRUE(fields.contains(member.path)) << member.path;
            EXPECT_EQ(fields.at(member.path), member.value) << member.path;
        }
    }
    for (const auto& [name, value] : fields) {
        EXPECT_TRUE(!name.ends_with("has_parent") || value == 1) << name;
    }
}

TEST_P(CodecVectors, DecodesAndEncodesTheSameBitsAndNoOtherAtEveryBit)
{
    for (const std::uint8_t fill : {std::uint8_t{0x00}, std::uint8_t{0xFF}}) {
        for (unsigned shift = 0; shift < 8; ++shift) {
            ExactBuffer target((shift + m_vector.bits + 7) / 8, fill);
            const auto expected =
                slow::overlay(target.bytes(), shift, m_vector.bytes, m_vector.bits);
            std::uint32_t offset = shift;
            EXPECT_EQ(encodeAt(offset, target), static_cast<std::int32_t>(m_vector.bits));
            EXPECT_EQ(offset, shift + m_vector.bits);
            EXPECT_EQ(m_message.message.header.bit_count, m_vector.bits);
            EXPECT_EQ(target.bytes(), expected) << "fill " << +fill << " shift " << shift;

            offset = shift;
            EXPECT_EQ(decodeAt(offset, m_vector.bits + 7),
                      static_cast<std::int32_t>(m_vector.bits));
            EXPECT_EQ(offset, shift + m_vector.bits);
            expectMembers(m_vector.bits);
        }
    }
}

// A buffer has whole bytes, so a message that starts at bit 0 to 7 of it ends anywhere.
TEST_P(CodecVectors, ShortBufferGivesTheCodeOfTheFirstMemberThatDoesNotFit)
{
    for (unsigned bits = 0; bits <= m_vector.bits; ++bits) {
        for (const unsigned shift : {(8 - bits % 8) % 8, 8 + (8 - bits % 8) % 8}) {
            SCOPED_TRACE("bits " + std::to_string(bits) + " shift " + std::to_string(shift));
            std::uint32_t offset = shift;
            ASSERT_EQ(RTCM2_error_to_string(decodeAt(offset, bits)), expectedError(bits));
            expectMembers(bits);

            ExactBuffer target((shift + bits) / 8);
            offset = shift;
            ASSERT_EQ(RTCM2_error_to_string(encodeAt(offset, target)), expectedError(bits));
            EXPECT_EQ(target.bytes(),
                      slow::overlay(std::vector<std::uint8_t>(target.size()), shift, m_vector.bytes,
                                    m_message.message.header.bit_count));
        }
    }
}

TEST_P(CodecVectors, DeclaredLengthSkipsPaddingAndRefusesLongerRecords)
{
    struct Case {
        unsigned start;
        std::uint32_t declared;
        std::string error;
        std::uint32_t end;
    };
    const unsigned bits = m_vector.bits;
    const Case cases[] = {
        {3, bits, "", 3 + bits},
        {8, bits + 100, "", 108 + bits},
        {8, bits - 1, "_SIZE_UNDERFLOW", 8 + bits},
        // The end wraps to one below the start.
        {8, 0xFFFFFFF9, "_INTERNAL", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("declared " + std::to_string(c.declared));
        std::uint32_t offset = c.start;
        const std::int32_t result = decodeAt(offset, bits + 7, c.declared);
        EXPECT_EQ(offset, c.end);
        if (c.error.empty()) {
            EXPECT_EQ(result, static_cast<std::int32_t>(c.declared));
        } else {
            const std::string name = RTCM2_error_to_string(result);
            EXPECT_TRUE(name.starts_with("RTCM2_ERR_" + m_kind.name() + "_")) << name;
            EXPECT_TRUE(name.ends_with(c.error)) << name;
        }
        expectMembers(bits);
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

INSTANTIATE_TEST_SUITE_P(Messages, CodecVectors, testing::ValuesIn(readCodecVectors()), titleOf);

TEST(CodecVectorFile, HasEveryMainKind)
{
    std::set<int> types;
    for (const CodecVector& vector : readCodecVectors()) {
        types.insert(vector.type);
    }
    EXPECT_EQ(types.size(), mainKinds().size());
}

}    // namespace
