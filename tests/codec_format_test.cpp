// The format as a table: what is written by rows goes through the message and is read again, stands
// where the rows say, and is refused where it does not fit.
#include "quarn_bits.h"
#include "support/CodecKinds.h"
#include "support/SlowBits.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <set>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Paths = std::set<std::string>;

constexpr std::uint32_t shift = 3;    // bits before every message

// Where a value is. Its path is like "Corrections.1.PRC.0".
struct Spot {
    std::string path(const RTCM2_member_s& of, std::uint32_t at) const
    {
        return prefix + of.name + "." + std::to_string(at);
    }
    std::string path() const { return path(member, index); }
    std::int64_t integer(const RTCM2_member_s& of) const
    {
        std::int64_t value = INT64_MIN;
        EXPECT_EQ(RTCM2_read_integer(record, &of, &of == &member ? index : 0, &value), 0) << path();
        return value;
    }

    void* record;
    const RTCM2_kind_s& kind;
    const RTCM2_member_s& member;
    std::uint32_t index;
    std::uint32_t element;    // of which this is a member
    std::string prefix;
};

// Visits the values of a record one by one, and those of its elements.
template <class Visit>
void forEachValue(void* record, const RTCM2_kind_s& kind, Visit visit, std::uint32_t element = 0,
                  const std::string& prefix = "")
{
    for (const RTCM2_member_s& member : rtcm2::membersOf(kind)) {
        for (std::uint32_t i = 0; i < RTCM2_count(record, &member); ++i) {
            const Spot spot{record, kind, member, i, element, prefix};
            if (member.role == RTCM2_ROLE_ARRAY) {
                void* const inner = RTCM2_element(record, &member, i);
                forEachValue(inner, *member.elements, visit, i, spot.path() + ".");
            } else {
                visit(spot);
            }
        }
    }
}

Fields valuesOf(RTCM2_message_s& message)
{
    Fields values;
    forEachValue(&message, *RTCM2_kind(message.kind), [&](const Spot& at) {
        EXPECT_EQ(RTCM2_read_real(at.record, &at.member, at.index, &values[at.path()]), 0);
    });
    return values;
}

// The least values, the greatest, and others, with words for short and long texts.
constexpr unsigned passes = 4;

std::int64_t valueFor(const RTCM2_member_s& member, unsigned pass, std::uint32_t salt)
{
    const auto mask = static_cast<std::int64_t>(quarn::lowMask(member.bits));
    const bool isSigned = member.type == RTCM2_TYPE_SIGNED || member.type == RTCM2_TYPE_CHARACTER;
    const std::int64_t above[passes] = {0, mask, 0x5DA5A6B5D37 * (salt + 1) & mask,
                                        0x3A71C6E94B5 * (salt + 3) & mask};
    return above[pass] - (isSigned ? std::int64_t{1} << (member.bits - 1) : 0);
}

// As many words as the pass says, or as the array needs for some three elements, which it gets.
void writeWords(const Spot& at, unsigned pass)
{
    constexpr std::int64_t wordsOf[passes] = {1, 3, 30, 2};
    double count = at.kind.array ? 4 : 0;
    for (std::int64_t words = at.kind.array ? 31 : wordsOf[pass];; --words) {
        EXPECT_EQ(RTCM2_write_integer(at.record, &at.member, 0, words), RTCM2_ACCESS_DONE);
        if (!at.kind.array ||
            (RTCM2_derive(at.record, at.kind.array->length, &count), count <= 3)) {
            break;
        }
    }
    for (; count > 0; --count) {
        ASSERT_NE(RTCM2_append_element(at.record), nullptr);
    }
}

// Writes all values in order, as a program can that knows the table alone, and tells them.
Fields fill(RTCM2_message_s& message, unsigned pass)
{
    Fields written;
    forEachValue(&message, *RTCM2_kind(message.kind), [&](const Spot& at) {
        const auto salt = static_cast<std::uint32_t>(written.size());
        auto value = static_cast<double>(valueFor(at.member, pass, salt));
        if (at.member.name == std::string("No_Of_Data_Words")) {
            return writeWords(at, pass);
        }
        if (at.member.role == RTCM2_ROLE_COUNT && !at.kind.array) {
            RTCM2_derive(at.record, &at.member, &value);
        } else if (at.member.role != RTCM2_ROLE_WIRE && at.member.role != RTCM2_ROLE_RUN) {
            return;
        }
        EXPECT_EQ(RTCM2_write_real(at.record, &at.member, at.index, value), 0) << at.path();
        written[at.path()] = value;
    });
    return written;
}

template <class Test>
void forEachFilled(Test test)
{
    for (const MainKind& kind : mainKinds()) {
        for (unsigned pass = 0; pass < passes; ++pass) {
            SCOPED_TRACE(kind.name() + " pass " + std::to_string(pass));
            TestMessage filled(kind);
            const Fields written = fill(filled.message, pass);
            Bytes bytes(120);
            std::uint32_t offset = shift;
            ASSERT_GT(RTCM2_encode_record(&filled.message, bytes.data(), 120, &offset), 0);
            test(kind, filled.message, bytes, written);
        }
    }
}

Fields decoded(const MainKind& kind, const Bytes& bytes)
{
    TestMessage message(kind);
    std::uint32_t offset = shift;
    EXPECT_GT(RTCM2_decode_record(kind.kind, bytes.data(), 120, &offset, &message.message), 0);
    return valuesOf(message.message);
}

Paths differences(const Fields& some, const Fields& others)
{
    Paths paths;
    for (const auto& [path, value] : some) {
        if (!others.contains(path) || others.at(path) != value) {
            paths.insert(path);
        }
    }
    return paths;
}

TEST(CodecFormat, WrittenValuesGoThroughTheMessage)
{
    forEachFilled([](auto& kind, auto& message, const Bytes& bytes, const Fields& written) {
        const Fields values = valuesOf(message);
        EXPECT_EQ(differences(written, values), Paths());
        EXPECT_EQ(decoded(kind, bytes), values);
    });
}

// What changes with the bits of a value: itself, what follows from it, and what it is a part of.
// Empty when other members or their number depend on it.
Paths changedBy(const Spot& at)
{
    Paths paths{at.path()};
    for (const RTCM2_member_s& other : rtcm2::membersOf(at.kind)) {
        const bool follows = other.of == &at.member;
        if (other.when == &at.member || other.length == &at.member ||
            (follows && other.role == RTCM2_ROLE_COUNT)) {
            return {};
        }
        if (follows || at.member.of == &other) {
            paths.insert(at.path(other, 0));
        }
    }
    return paths;
}

TEST(CodecFormat, LocatedBitsAreThoseOfTheValueAndNoOther)
{
    forEachFilled([](auto& kind, auto& message, const Bytes& bytes, auto&) {
        const Fields before = valuesOf(message);
        forEachValue(&message, kind.row, [&](const Spot& at) {
            SCOPED_TRACE(at.path());
            std::uint32_t start = 0, first = 0, bits = 0;
            if (RTCM2_locate(at.record, &at.member, at.index, &first, &bits) != 0) {
                EXPECT_GE(at.member.role, RTCM2_ROLE_COUNT);
                EXPECT_EQ(at.member.first_bit, -1);
                return;
            }
            const std::uint64_t there = slow::read(bytes, shift + first, bits);
            EXPECT_EQ(there, at.integer(at.member) & quarn::lowMask(bits));
            if (const Paths changed = changedBy(at); !changed.empty()) {
                Bytes flipped = bytes;
                slow::write(flipped, shift + first, bits, ~there);
                EXPECT_EQ(differences(before, decoded(kind, flipped)), changed);
            }
            if (at.record != &message) {
                RTCM2_locate(&message, kind.row.array, at.element, &start, &bits);
                EXPECT_EQ(bits, at.kind.bits);
            }
            const auto ofRow = static_cast<std::uint32_t>(at.member.first_bit);
            EXPECT_EQ(first, at.member.first_bit < 0 ? first : start + ofRow + at.index * 8);
        });
    });
}

TEST(CodecFormat, SlicesFoldIntoTheWhole)
{
    forEachFilled([](auto& kind, auto& message, auto&, auto&) {
        forEachValue(&message, kind.row, [](const Spot& at) {
            const RTCM2_member_s* const whole = at.member.of;
            for (int i = at.member.role == RTCM2_ROLE_SLICE ? 2 : 0; i > 0; --i) {
                const auto mask = static_cast<std::int64_t>(quarn::lowMask(at.member.bits));
                const std::int64_t flipped = at.integer(*whole) ^ mask << at.member.low;
                const std::int64_t part = flipped >> at.member.low & mask;
                EXPECT_EQ(RTCM2_write_integer(at.record, &at.member, 0, part), 0);
                EXPECT_EQ(at.integer(*whole), flipped);
                EXPECT_EQ(at.integer(at.member), part);
            }
        });
    });
}

// Every text stands for one value alone and fits into just as much room as it needs.
TEST(CodecFormat, TextsStandForCodedValues)
{
    forEachFilled([](auto& kind, auto& message, auto&, auto&) {
        forEachValue(&message, kind.row, [](const Spot& at) {
            const bool isFree = !changedBy(at).empty();
            for (std::uint32_t i = 0; isFree && i < at.member.text_count; ++i) {
                const std::string text = at.member.texts[i].text;
                std::string room(RTCM2_TEXT_ROOM, '!');
                const auto read = [&](std::size_t size) {
                    return RTCM2_read_text(at.record, &at.member, at.index, room.data(),
                                           static_cast<std::uint32_t>(size));
                };
                EXPECT_EQ(RTCM2_write_text(at.record, &at.member, at.index, text.c_str()), 0);
                EXPECT_EQ(at.integer(at.member), at.member.texts[i].value) << text;
                EXPECT_EQ(read(text.size()), RTCM2_ACCESS_RANGE);
                EXPECT_EQ(room[0], '!');
                EXPECT_EQ(read(text.size() + 1), RTCM2_ACCESS_DONE);
                EXPECT_EQ(room.substr(0, text.size() + 2), text + '\0' + '!');
            }
        });
    });
}

// Messages of 1 word, or of 3 elements, with the least values.
TEST(CodecFormat, AnswersSayWhyAndRefusalsChangeNothing)
{
    struct Case {
        int type;
        const char* member;
        std::uint32_t index;
        std::string text;
        RTCM2_access_enum answer;
    };
    const Case cases[] = {
        {22, "L2_ECEF_Delta_X", 0, "0", RTCM2_ACCESS_ABSENT},
        {24, "Antenna_Height", 0, "0", RTCM2_ACCESS_ABSENT},
        {23, "Antenna_Serial_Number", 0, "", RTCM2_ACCESS_ABSENT},
        {1, "Preamble", 1, "0", RTCM2_ACCESS_INDEX},
        {16, "Message", 3, "", RTCM2_ACCESS_INDEX},
        {59, "Data", 3, "0", RTCM2_ACCESS_INDEX},
        {1, "Corrections", 0, "0", RTCM2_ACCESS_TYPE},
        {1, "Ns", 0, "1", RTCM2_ACCESS_DERIVED},
        {16, "Message_Length", 0, "91", RTCM2_ACCESS_RANGE},
        {23, "NAD", 0, "32", RTCM2_ACCESS_RANGE},
        {22, "L1_ECEF_Delta_X", 0, "-129", RTCM2_ACCESS_RANGE},
        {22, "L1_ECEF_Delta_X", 0, "127", RTCM2_ACCESS_DONE},
        {22, "L1_ECEF_Delta_X", 0, "", RTCM2_ACCESS_RANGE},
        {22, "L1_ECEF_Delta_X", 0, "5 ", RTCM2_ACCESS_RANGE},
        {24, "ECEF_X", 0, "137438953471", RTCM2_ACCESS_DONE},
        {24, "ECEF_X", 0, "137438953472", RTCM2_ACCESS_RANGE},
        {1, "Modified_Z_Count", 0, "-1", RTCM2_ACCESS_RANGE},
        {1, "Modified_Z_Count", 0, "18446744073709551615", RTCM2_ACCESS_RANGE},
        {1, "Preamble", 0, "fe", RTCM2_ACCESS_DONE},
        {1, "Preamble", 0, "100", RTCM2_ACCESS_RANGE},
        {16, "Message", 0, "\xE9t\xE9", RTCM2_ACCESS_DONE},
        {16, "Message", 0, std::string(90, '\xFF'), RTCM2_ACCESS_DONE},
        {16, "Message", 0, std::string(91, 'x'), RTCM2_ACCESS_RANGE},
    };
    for (const auto& [type, name, index, text, answer] : cases) {
        SCOPED_TRACE(name + (" " + text));
        TestMessage filled(mainKind(type));
        void* const record = &filled.message;
        fill(filled.message, 0);
        const Fields before = valuesOf(filled.message);
        const auto* const member = RTCM2_find_member(RTCM2_kind(filled.message.kind), name);
        std::int64_t value = 0;
        std::uint32_t first, bits;
        char shown[RTCM2_TEXT_ROOM] = "?";
        EXPECT_EQ(RTCM2_write_text(record, member, index, text.c_str()), answer);
        if (answer >= RTCM2_ACCESS_ABSENT && answer <= RTCM2_ACCESS_TYPE) {
            EXPECT_EQ(RTCM2_read_integer(record, member, index, &value), answer);
        }
        if (answer == RTCM2_ACCESS_ABSENT || answer == RTCM2_ACCESS_INDEX ||
            answer == RTCM2_ACCESS_DERIVED) {
            EXPECT_EQ(RTCM2_locate(record, member, index, &first, &bits), answer);
        }
        EXPECT_EQ(RTCM2_is_present(record, member), answer != RTCM2_ACCESS_ABSENT);
        EXPECT_EQ(valuesOf(filled.message) == before, answer != RTCM2_ACCESS_DONE);
        RTCM2_read_text(record, member, index, shown, sizeof shown);
        EXPECT_EQ(shown == text, answer == RTCM2_ACCESS_DONE);
    }
}

TEST(CodecFormat, RealNumbersAreWrittenWhenTheyAreIntegersThatFit)
{
    TestMessage message(mainKind(21));
    const auto write = [&](void* record, const char* name, double value) {
        const auto* const kind = RTCM2_kind(RecordStart(record).kind);
        return RTCM2_write_real(record, RTCM2_find_member(kind, name), 0, value);
    };
    void* const element = RTCM2_append_element(&message.message);
    for (const double value : {0.5, -1.0, 256.0, 0x1p63, 0x1p64, -1e300, HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(write(&message.message, "Preamble", value), RTCM2_ACCESS_RANGE) << value;
        EXPECT_EQ(write(element, "PSF", value), RTCM2_ACCESS_DERIVED) << value;
        EXPECT_EQ(write(&message.message, "Data", value), RTCM2_ACCESS_TYPE) << value;
    }
}

TEST(CodecFormat, NamesFindTheirRows)
{
    for (const RTCM2_kind_s& kind : rtcm2::kindRows) {
        EXPECT_EQ(RTCM2_find_kind(kind.name), &kind);
        EXPECT_EQ(RTCM2_find_kind(kind.display), *kind.display ? &kind : nullptr);
        EXPECT_EQ(RTCM2_kind_of_type(kind.type), kind.type >= 0 ? &kind : nullptr);
        for (const RTCM2_member_s& member : rtcm2::membersOf(kind)) {
            EXPECT_EQ(RTCM2_find_member(&kind, member.name), &member);
            EXPECT_EQ(RTCM2_find_member(&kind, member.display),
                      *member.display ? &member : nullptr);
        }
        EXPECT_EQ(RTCM2_find_member(&kind, "preamble"), nullptr);
    }
}

TEST(CodecFormat, ValuesOfNoKindDoNothing)
{
    RTCM2_context_s context;
    RTCM2_init_context(&context);
    const auto enabled = bytesOf(context);
    for (const std::int32_t kind : {INT_MIN, -1, 0, RTCM2_last_kind() + 1, INT_MAX}) {
        RTCM2_message_s message;
        std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
        std::memcpy(static_cast<void*>(&message), &kind, sizeof kind);
        const auto before = bytesOf(message);
        std::uint8_t bytes[99] = {};
        std::uint32_t offset = 0;
        RTCM2_enable_kind(&context, kind, 1);
        RTCM2_enable_kind(&context, kind, 0);
        EXPECT_EQ(RTCM2_is_kind_enabled(&context, kind), 0);
        EXPECT_EQ(RTCM2_kind(kind), nullptr);
        for (const std::int32_t result :
             {RTCM2_init_record(kind, &message), RTCM2_encode_record(&message, bytes, 99, &offset),
              RTCM2_decode_record(kind, bytes, 99, &offset, &message)}) {
            EXPECT_EQ(result, RTCM2_ERR_INVALID_MESSAGE);
        }
        EXPECT_EQ(RTCM2_append_element(&message), nullptr);
        RTCM2_free_record(&message);
        EXPECT_EQ(bytesOf(message), before);
    }
    EXPECT_EQ(bytesOf(context), enabled);
}

TEST(CodecFormat, ReleasedRecordsAreEmpty)
{
    forEachFilled([](auto& kind, auto& message, auto&, auto&) {
        RTCM2_free_message(&message);
        RTCM2_free_message(&message);
        if (kind.row.array != nullptr) {
            EXPECT_EQ(RTCM2_count(&message, kind.row.array), 0U);
            EXPECT_EQ(RTCM2_element(&message, kind.row.array, 0), nullptr);
        }
    });
}

TEST(CodecFormat, HeaderTellsTheLength)
{
    EXPECT_EQ(RTCM2_packed_length(packedMessage(1, 0, 6).data(), 6), 6);
    EXPECT_EQ(RTCM2_packed_length(packedMessage(1, 31, 6).data(), 6), 99);
    EXPECT_EQ(RTCM2_packed_length(packedMessage(1, 31, 6).data(), 5), RTCM2_ERR_INVALID_MESSAGE);
}

}    // namespace
