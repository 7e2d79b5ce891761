// Messages from tests/vectors/codec.txt, decoded and encoded whole, at every bit offset and cut at
// every bit.
#include "support/CodecVectors.h"

#include <algorithm>
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

    // Checks the members that lie within the first `bits` bits, and that no other one has changed.
    void expectMembers(unsigned bits) const
    {
        const WireMember* const beyond = firstBeyond(bits);
        const Fields fields = m_message.fields(beyond ? beyond->element : m_vector.elements);
        EXPECT_EQ(fields.at("kind"), m_vector.kind->kind);
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

    // Of the whole message, including those that are not on the wire.
    void expectAllMembers() const
    {
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

    // Decodes the message at bit `offset` of a buffer with room for `bits` bits of it.
    std::int32_t decodeAt(std::uint32_t& offset, unsigned bits, std::uint32_t declared = 0)
    {
        const std::size_t size = (offset + bits) / 8;
        const std::size_t given = std::min(size * 8 - offset, m_vector.bytes.size() * 8);
        return m_message.decodeAt(
            offset, slow::overlay(Bytes(size, 0xA5), offset, m_vector.bytes, given), declared);
    }

    // Encodes what the whole message decodes to at bit `offset` of `target`.
    std::int32_t encodeAt(std::uint32_t& offset, ExactBuffer& target)
    {
        m_message.decode(m_vector.bytes);
        m_message.message.header.bit_count = 0;
        return m_message.encodeInto(target, offset);
    }

    const CodecVector& m_vector = GetParam();
    TestMessage m_message{*m_vector.kind};
    const Fields m_untouched = m_message.fields();
};

TEST_P(CodecVectors, DecodesAndEncodesTheSameBitsAndNoOtherAtEveryBit)
{
    const auto bits = static_cast<std::int32_t>(m_vector.bits);
    ASSERT_EQ(m_message.decode(m_vector.bytes), bits);
    expectAllMembers();
    for (unsigned shift = 0; shift < 16; ++shift) {
        SCOPED_TRACE("shift " + std::to_string(shift));
        ExactBuffer target((shift + m_vector.bits + 7) / 8, shift < 8 ? 0x00 : 0xFF);
        const Bytes expected = slow::overlay(target.bytes(), shift, m_vector.bytes, m_vector.bits);
        std::uint32_t offset = shift;
        EXPECT_EQ(encodeAt(offset, target), bits);
        EXPECT_EQ(offset, shift + m_vector.bits);
        EXPECT_EQ(m_message.message.header.bit_count, m_vector.bits);
        EXPECT_EQ(target.bytes(), expected);

        offset = shift;
        EXPECT_EQ(decodeAt(offset, m_vector.bits + 7), bits);
        EXPECT_EQ(offset, shift + m_vector.bits);
        expectAllMembers();
    }
}

// A buffer has whole bytes, so a message that starts at bit 0 to 7 of it ends anywhere.
TEST_P(CodecVectors, ShortBufferGivesTheCodeOfTheFirstMemberThatDoesNotFit)
{
    for (unsigned bits = 0; bits <= m_vector.bits; ++bits) {
        const WireMember* const beyond = firstBeyond(bits);
        const std::string expected = beyond ? beyond->error : "RTCM2_ERR_NONE";
        for (const unsigned shift : {(8 - bits % 8) % 8, 8 + (8 - bits % 8) % 8}) {
            SCOPED_TRACE("bits " + std::to_string(bits) + " shift " + std::to_string(shift));
            std::uint32_t offset = shift;
            ASSERT_EQ(RTCM2_error_to_string(decodeAt(offset, bits)), expected);
            expectMembers(bits);

            ExactBuffer target((shift + bits) / 8);
            offset = shift;
            ASSERT_EQ(RTCM2_error_to_string(encodeAt(offset, target)), expected);
            EXPECT_EQ(target.bytes(), slow::overlay(Bytes(target.size()), shift, m_vector.bytes,
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
        {8, bits - 1, "SIZE_UNDERFLOW", 8 + bits},
        // The end wraps to one below the start.
        {8, 0xFFFFFFF9, "INTERNAL", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("declared " + std::to_string(c.declared));
        std::uint32_t offset = c.start;
        const std::int32_t result = decodeAt(offset, bits + 7, c.declared);
        const std::string name = RTCM2_error_to_string(result);
        EXPECT_EQ(offset, c.end);
        EXPECT_EQ(result > 0 ? result : 0,
                  c.error.empty() ? static_cast<std::int32_t>(c.declared) : 0);
        EXPECT_TRUE(c.error.empty() || name.starts_with(errorOf(*m_vector.kind, ""))) << name;
        EXPECT_TRUE(name.ends_with(c.error)) << name;
        expectMembers(bits);
    }
}

INSTANTIATE_TEST_SUITE_P(Messages, CodecVectors, testing::ValuesIn(readCodecVectors()));

TEST(CodecVectorFile, HasEveryMainKind)
{
    std::set<const RTCM2_kind_s*> kinds;
    for (const CodecVector& vector : readCodecVectors()) {
        kinds.insert(vector.kind);
    }
    forEachMainKind([&](const RTCM2_kind_s& kind) { EXPECT_TRUE(kinds.contains(&kind)); });
}

}    // namespace
