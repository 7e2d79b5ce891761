// Messages from tests/vectors/codec.txt, decoded and encoded whole, at every bit offset and cut at
// every bit.
#include "support/CodecKinds.h"
#include "support/SlowBits.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>

namespace {

struct CodecVector {
    // How a test that takes a vector as its parameter is listed.
    friend std::ostream& operator<<(std::ostream& out, const CodecVector& vector)
    {
        return out << vector.digits;
    }

    void read(const std::string& word);

    std::string digits;
    unsigned bits = 0;
    Bytes bytes;
    const RTCM2_kind_s* kind = nullptr;
    Fields values;

private:
    std::string prefix;
    unsigned elements = 0;
};

Bytes fromHex(const std::string& text)
{
    Bytes bytes;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(text.substr(at, 2), nullptr, 16)));
    }
    return bytes;
}

// A word of what the message holds.
void CodecVector::read(const std::string& word)
{
    const std::size_t end = word.find_first_of("=:");
    const std::string name = word.substr(0, end);
    if (std::isdigit(static_cast<unsigned char>(word[0]))) {
        values[kind->members[values.size()].name] = std::stod(word);
    } else if (end == std::string::npos) {
        prefix = word + "." + std::to_string(elements++) + ".";
    } else if (word[end] == '=') {
        values[prefix + name] = std::stod(word.substr(end + 1));
    } else {
        const bool isText = RTCM2_find_member(kind, name.c_str())->type == RTCM2_TYPE_CHARACTER;
        unsigned i = 0;
        for (const std::uint8_t byte : fromHex(word.substr(end + 1))) {
            values[name + "." + std::to_string(i++)] =
                isText ? static_cast<std::int8_t>(byte) : byte;
        }
    }
}

// The head of the file tells its format.
std::vector<CodecVector> readCodecVectors()
{
    std::ifstream input(RTCM2_TEST_VECTORS);
    std::vector<CodecVector> vectors;
    for (std::string word; input >> word;) {
        if (word == "#") {
            std::getline(input, word);
        } else if (word == "message") {
            CodecVector& vector = vectors.emplace_back();
            input >> vector.bits >> vector.digits;
            vector.bytes = fromHex(vector.digits);
            vector.kind = &mainKind(vector.bytes[1] >> 2);
        } else {
            vectors.back().read(word);
        }
    }
    return vectors;
}

// A value on the wire.
struct WireMember {
    std::string path;
    std::string error;    // name of the code for a buffer that ends before it
    std::uint32_t width;
    std::uint32_t end;    // the bit of the message after it
    unsigned element;     // elements of the array before it
};

class CodecVectors : public testing::TestWithParam<CodecVector> {
protected:
    CodecVectors()
    {
        m_message.decode(m_vector.bytes);
        m_elements =
            m_vector.kind->array ? RTCM2_count(&m_message.message, m_vector.kind->array) : 0;
        forEachValue(&m_message.message, *m_vector.kind, [this](const Spot& at) {
            std::uint32_t first = 0, bits = 0;
            std::string name = at.member.name;
            name.resize(name.find_last_not_of('_') + 1);
            std::transform(name.begin(), name.end(), name.begin(),
                           [](unsigned char c) { return std::toupper(c); });
            if (at.member.role == RTCM2_ROLE_WIRE || at.member.role == RTCM2_ROLE_RUN) {
                RTCM2_locate(at.record, &at.member, at.index, &first, &bits);
                m_wire.push_back({at.path(at.member),
                                  errorOf(at.kind, name + "_EXT_BUFFER_OVERFLOW"), bits,
                                  first + bits, at.kind.type < 0 ? at.element : 0});
            }
        });
        EXPECT_EQ(m_wire.back().end, m_vector.bits);
    }

    // The first member that does not lie within the first `bits` bits, or null.
    const WireMember* firstBeyond(unsigned bits) const
    {
        const auto found = std::find_if(m_wire.begin(), m_wire.end(),
                                        [=](const WireMember& m) { return m.end > bits; });
        return found != m_wire.end() ? &*found : nullptr;
    }

    // Checks the members that lie within the first `bits` bits, and that no other one has changed.
    void expectMembers(unsigned bits) const
    {
        const WireMember* const beyond = firstBeyond(bits);
        const Fields fields = m_message.fields(beyond ? beyond->element : m_elements);
        EXPECT_EQ(fields.at("kind"), m_vector.kind->kind);
        EXPECT_EQ(fields.at("bit_count"), beyond ? beyond->end - beyond->width : m_vector.bits);
        for (const WireMember& member : m_wire) {
            const auto found = fields.find(member.path);
            if (member.end <= bits && found != fields.end()) {
                EXPECT_EQ(found->second, m_vector.values.at(member.path)) << member.path;
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
        for (const auto& [path, value] : m_vector.values) {
            ASSERT_TRUE(fields.contains(path)) << path;
            EXPECT_EQ(fields.at(path), value) << path;
        }
        for (const auto& [path, value] : fields) {
            EXPECT_TRUE(!path.ends_with("has_parent") || value == 1) << path;
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
    unsigned m_elements;
    std::vector<WireMember> m_wire;
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
