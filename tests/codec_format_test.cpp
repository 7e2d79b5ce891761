// The format as a table: what is written by rows goes through the message and is read again, stands
// where the rows say, and is refused where it does not fit.
#include "RTCM2_reader.h"
#include "quarn_bits.h"
#include "support/CodecKinds.h"
#include "support/SlowBits.h"

#include <climits>
#include <cmath>
#include <set>

namespace {

using Paths = std::set<std::string>;

constexpr std::uint32_t shift = 3;    // bits before every message

std::int64_t integerAt(const Spot& at, const RTCM2_member_s& member)
{
    std::int64_t value = INT64_MIN;
    double real = 0;
    const std::uint32_t index = &member == &at.member ? at.index : 0;
    EXPECT_EQ(RTCM2_read_integer(at.record, &member, index, &value), 0) << at.path(member);
    EXPECT_EQ(RTCM2_read_real(at.record, &member, index, &real), 0) << at.path(member);
    EXPECT_EQ(real, static_cast<double>(value)) << at.path(member);
    RTCM2_reader_s reader;
    RTCM2_compile_reader(&member, &reader);
    EXPECT_EQ(RTCM2_reader_integer(&reader, at.record, index), value) << at.path(member);
    return value;
}

// The least values, the greatest, and others, with words for short and long texts.
constexpr unsigned passes = 4;

std::int64_t valueFor(const RTCM2_member_s& member, unsigned pass, std::uint32_t salt)
{
    const auto mask = static_cast<std::int64_t>(quarn::lowMask(member.bits));
    const std::int64_t above[passes] = {0, mask, 0x5DA5A6B5D37 * (salt + 1) & mask,
                                        0x3A71C6E94B5 * (salt + 3) & mask};
    return above[pass] - (rtcm2::isSigned(member) ? std::int64_t{1} << (member.bits - 1) : 0);
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
Fields fill(TestMessage& message, unsigned pass)
{
    Fields written;
    forEachValue(&message.message, message.kind, [&](const Spot& at) {
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
        EXPECT_EQ(RTCM2_write_real(at.record, &at.member, at.index, value), 0) << at.prefix;
        written[at.path(at.member)] = value;
    });
    return written;
}

Bytes encoded(TestMessage& message)
{
    ExactBuffer bytes(120);
    std::uint32_t offset = shift;
    message.message.header.bit_count = 0;
    EXPECT_GT(message.encodeInto(bytes, offset), 0);
    return bytes.bytes();
}

template <class Test>
void forEachFilled(Test test)
{
    forEachMainKind([&](const RTCM2_kind_s& kind) {
        for (unsigned pass = 0; pass < passes; ++pass) {
            SCOPED_TRACE(pass);
            TestMessage filled(kind);
            const Fields written = fill(filled, pass);
            const Bytes bytes = encoded(filled);
            test(filled, bytes, written);
        }
    });
}

template <class Test>
void forEachFilledValue(Test test)
{
    forEachFilled([&](TestMessage& filled, auto&, auto&) {
        forEachValue(&filled.message, filled.kind, [&](const Spot& at) {
            SCOPED_TRACE(at.path(at.member));
            test(filled, at);
        });
    });
}

Fields decoded(const RTCM2_kind_s& kind, const Bytes& bytes)
{
    TestMessage message(kind);
    std::uint32_t offset = shift;
    EXPECT_GT(message.decodeAt(offset, bytes), 0);
    return message.fields();
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
    forEachFilled([](TestMessage& filled, const Bytes& bytes, const Fields& written) {
        EXPECT_EQ(differences(written, filled.fields()), Paths());
        EXPECT_EQ(differences(filled.fields(), decoded(filled.kind, bytes)), Paths());
    });
}

// What changes with the bits of a value: itself, what follows from it, and what it is a part of.
// Empty when other members or their number depend on it.
Paths changedBy(const Spot& at)
{
    Paths paths{at.path(at.member)};
    for (const RTCM2_member_s& other : rtcm2::membersOf(at.kind)) {
        const bool follows = other.of == &at.member;
        if (other.when == &at.member || other.length == &at.member ||
            (follows && other.role == RTCM2_ROLE_COUNT)) {
            return {};
        }
        if (follows || at.member.of == &other) {
            paths.insert(at.path(other));
        }
    }
    return paths;
}

TEST(CodecFormat, LocatedBitsAreThoseOfTheValueAndNoOther)
{
    forEachFilled([](TestMessage& filled, const Bytes& bytes, auto&) {
        const Fields before = filled.fields();
        forEachValue(&filled.message, filled.kind, [&](const Spot& at) {
            SCOPED_TRACE(at.path(at.member));
            std::uint32_t start = 0, first = 0, bits = 0;
            if (RTCM2_locate(at.record, &at.member, at.index, &first, &bits) != 0) {
                EXPECT_GE(at.member.role, RTCM2_ROLE_COUNT);
                EXPECT_EQ(at.member.first_bit, -1);
                return;
            }
            const std::uint64_t there = slow::read(bytes, shift + first, bits);
            EXPECT_EQ(there,
                      static_cast<std::uint64_t>(integerAt(at, at.member)) & quarn::lowMask(bits));
            if (const Paths changed = changedBy(at); !changed.empty()) {
                Bytes flipped = bytes;
                slow::write(flipped, shift + first, bits, ~there);
                EXPECT_EQ(differences(before, decoded(filled.kind, flipped)), changed);
            }
            if (at.record != &filled.message) {
                RTCM2_locate(&filled.message, filled.kind.array, at.element, &start, &bits);
                EXPECT_EQ(bits, at.kind.bits);
            }
            const auto ofRow = static_cast<std::uint32_t>(at.member.first_bit);
            EXPECT_EQ(first, at.member.first_bit < 0 ? first : start + ofRow + at.index * 8);
        });
    });
}

// By writing them, or by the encoder where a caller has stored them.
TEST(CodecFormat, SlicesFoldIntoTheWhole)
{
    forEachFilledValue([](TestMessage& filled, const Spot& at) {
        const RTCM2_member_s* const whole = at.member.of;
        for (int i = at.member.role == RTCM2_ROLE_SLICE ? 4 : 0; i > 0; --i) {
            const auto mask = static_cast<std::int64_t>(quarn::lowMask(at.member.bits));
            const std::int64_t flipped = integerAt(at, *whole) ^ mask << at.member.low;
            const std::int64_t part = flipped >> at.member.low & mask;
            if (i % 2 == 0) {
                EXPECT_EQ(RTCM2_write_integer(at.record, &at.member, 0, part), 0);
            } else {
                rtcm2::putInteger(rtcm2::placeOf(at.record, at.member), at.member.size, part);
                EXPECT_EQ(decoded(filled.kind, encoded(filled)).at(at.path(*whole)), flipped);
            }
            EXPECT_EQ(integerAt(at, *whole), flipped);
            EXPECT_EQ(integerAt(at, at.member), part);
        }
    });
}

// Every text stands for one value alone and fits into just as much room as it needs.
TEST(CodecFormat, TextsStandForCodedValues)
{
    forEachFilledValue([](auto&, const Spot& at) {
        const bool isFree = !changedBy(at).empty();
        for (std::uint32_t i = 0; isFree && i < at.member.text_count; ++i) {
            const std::string text = at.member.texts[i].text;
            std::string room(RTCM2_TEXT_ROOM, '!');
            const auto read = [&](std::size_t size) {
                return RTCM2_read_text(at.record, &at.member, at.index, room.data(),
                                       static_cast<std::uint32_t>(size));
            };
            EXPECT_EQ(RTCM2_write_text(at.record, &at.member, at.index, text.c_str()), 0);
            EXPECT_EQ(integerAt(at, at.member), at.member.texts[i].value) << text;
            EXPECT_EQ(read(text.size()), RTCM2_ACCESS_RANGE);
            EXPECT_EQ(room[0], '!');
            EXPECT_EQ(read(text.size() + 1), RTCM2_ACCESS_DONE);
            EXPECT_EQ(room.substr(0, text.size() + 2), text + '\0' + '!');
        }
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
        TestMessage filled(type);
        void* const record = &filled.message;
        fill(filled, 0);
        const Fields before = filled.fields();
        const RTCM2_member_s* const member = &filled.row(name);
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
        EXPECT_EQ(filled.fields() == before, answer != RTCM2_ACCESS_DONE);
        RTCM2_read_text(record, member, index, shown, sizeof shown);
        EXPECT_EQ(shown == text, answer == RTCM2_ACCESS_DONE);
    }
}

TEST(CodecFormat, RealNumbersAreWrittenWhenTheyAreIntegersThatFit)
{
    TestMessage message(21);
    void* const record = &message.message;
    void* const element = RTCM2_append_element(record);
    const RTCM2_member_s* const factor = RTCM2_find_member(message.kind.array->elements, "PSF");
    for (const double value : {0.5, -1.0, 256.0, 0x1p63, 0x1p64, -1e300, HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(RTCM2_write_real(record, &message.row("Preamble"), 0, value), RTCM2_ACCESS_RANGE);
        EXPECT_EQ(RTCM2_write_real(record, &message.row("Data"), 0, value), RTCM2_ACCESS_TYPE);
        EXPECT_EQ(RTCM2_write_real(element, factor, 0, value), RTCM2_ACCESS_DERIVED);
    }
}

struct QuantityCase {
    int type;
    std::map<std::string, std::int64_t> values;    // of the element, where there is an array
    const char* member;
    const char* text;    // null: there is none
    const char* system;
};

TEST(CodecFormat, QuantitiesAreExact)
{
    const QuantityCase cases[] = {
        {1, {{"PRC", -217}}, "PRC", "-4.34", "GPS"},
        {9, {{"PRC", 32767}, {"Scale_Factor", 1}}, "PRC", "10485.44", "GPS"},
        {1, {{"PRC", -32768}, {"Scale_Factor", 1}}, "PRC", nullptr, "GPS"},
        {31, {{"RRC", -127}}, "RRC", "-0.254", "GLONASS"},
        {31, {{"RRC", -128}}, "RRC", nullptr, "GLONASS"},
        {31, {{"Satellite_Id", 0}}, "Satellite_Id", "R32", "GLONASS"},
        {1, {{"Satellite_Id", 5}}, "Satellite_Id", "G05", "GPS"},
        {31, {{"Issue_Of_Data", 0xF7}}, "Time_Of_Day", "3570", "GLONASS"},
        {31, {{"Issue_Of_Data", 120}}, "Time_Of_Day", nullptr, "GLONASS"},
        {1, {{"Issue_Of_Data", 9}}, "Time_Of_Day", nullptr, "GPS"},
        {15, {{"G", 1}, {"Satellite_Id", 31}}, "Satellite_Id", "R31", "GLONASS"},
        {18, {{"Carrier_Phase", INT_MIN}}, "Carrier_Phase", "-8388608", "GPS"},
        {18, {{"Carrier_Phase", -1}}, "Carrier_Phase", "-0.00390625", "GPS"},
        {19,
         {{"Pseudorange", UINT32_MAX}, {"Constellation", 1}},
         "Pseudorange",
         "85899345.9",
         "GLONASS"},
        {20,
         {{"Issue_Of_Data_Time_Of_Day", 7}, {"Constellation", 1}},
         "Issue_Of_Data_Time_Of_Day",
         "210",
         "GLONASS"},
        {20, {{"Issue_Of_Data_Time_Of_Day", 7}}, "Issue_Of_Data_Time_Of_Day", nullptr, "GPS"},
        {21,
         {{"Pseudorange_Correction", 100}, {"Range_Rate_Correction_Factor", 1}},
         "Pseudorange_Correction",
         "2",
         "GPS"},
        {21,
         {{"Range_Rate_Correction", 100}, {"Range_Rate_Correction_Factor", 1}},
         "Range_Rate_Correction",
         "3.2",
         "GPS"},
        {3, {{"ECEF_X", -238659278}}, "ECEF_X", "-2386592.78", "GPS"},
        {24,
         {{"Height_Indicator", 1}, {"Antenna_Height", 262143}},
         "Antenna_Height",
         "26.2143",
         "GPS"},
        {22,
         {{"No_Of_Data_Words", 2}, {"L1_ECEF_Delta_Y", -128}},
         "L1_ECEF_Delta_Y",
         "-0.005",
         "GPS"},
        {22,
         {{"No_Of_Data_Words", 3}, {"L2_ECEF_Delta_Y", 127}, {"Constellation", 1}},
         "L2_ECEF_Delta_Y",
         "0.079375",
         "GLONASS"},
        {22,
         {{"No_Of_Data_Words", 2}, {"Phase_Center_Height", 1}},
         "Phase_Center_Height",
         "0.0000390625",
         "GPS"},
        {22,
         {{"No_Of_Data_Words", 2}, {"Phase_Center_Height", 1}, {"Height_Indicator", 1}},
         "Phase_Center_Height",
         nullptr,
         "GPS"},
        {22,
         {{"No_Of_Data_Words", 2}, {"Phase_Center_Height", 174762}},
         "Phase_Center_Height",
         nullptr,
         "GPS"},
        {22, {{"No_Of_Data_Words", 1}}, "Modified_Z_Count", "0", "GPS"},
        {16, {{"Modified_Z_Count", 5999}}, "Modified_Z_Count", "3599.4", "GPS"},
        {59, {{"Modified_Z_Count", 6000}}, "Modified_Z_Count", nullptr, nullptr},
        {18, {}, "GNSS_Time_Of_Measurement", "0", nullptr},
    };
    for (const QuantityCase& test : cases) {
        TestMessage message(test.type);
        void* record = &message.message;
        const RTCM2_kind_s* kind = &message.kind;
        if (kind->array != nullptr && !test.values.empty()) {
            record = RTCM2_append_element(record);
            kind = kind->array->elements;
        }
        for (const RTCM2_member_s& member : rtcm2::membersOf(*kind)) {
            const auto given = test.values.find(member.name);
            if (member.role == RTCM2_ROLE_WIRE) {
                RTCM2_write_integer(record, &member, 0,
                                    given != test.values.end() ? given->second : 0);
            }
        }
        const RTCM2_member_s* const member = RTCM2_find_member(kind, test.member);
        std::string text(RTCM2_QUANTITY_ROOM, '!');
        const auto answer =
            RTCM2_read_quantity_text(record, member, text.data(), RTCM2_QUANTITY_ROOM);
        EXPECT_EQ(answer, test.text != nullptr ? RTCM2_ACCESS_DONE : RTCM2_ACCESS_NONE);
        if (test.text != nullptr) {
            EXPECT_STREQ(text.c_str(), test.text);
        }
        const RTCM2_system_s* const system = RTCM2_system_of(record);
        EXPECT_STREQ(system != nullptr ? system->name : "", test.system ? test.system : "");
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
    const Bytes enabled = bytesOf(context);
    for (const std::int32_t kind : {INT_MIN, -1, 0, RTCM2_last_kind() + 1, INT_MAX}) {
        TestMessage none(1);
        RTCM2_message_s& message = none.message;
        std::memcpy(static_cast<void*>(&message), &kind, sizeof kind);
        const Bytes before = bytesOf(message);
        ExactBuffer bytes(99);
        std::uint32_t offset = 0;
        RTCM2_enable_kind(&context, kind, 1);
        RTCM2_enable_kind(&context, kind, 0);
        EXPECT_EQ(RTCM2_is_kind_enabled(&context, kind), 0);
        EXPECT_EQ(RTCM2_kind(kind), nullptr);
        EXPECT_EQ(RTCM2_init_record(kind, &message), RTCM2_ERR_INVALID_MESSAGE);
        EXPECT_EQ(none.encodeInto(bytes, offset), RTCM2_ERR_INVALID_MESSAGE);
        EXPECT_EQ(RTCM2_decode_record(kind, bytes.data(), 99, &offset, &message),
                  RTCM2_ERR_INVALID_MESSAGE);
        EXPECT_EQ(RTCM2_append_element(&message), nullptr);
        RTCM2_free_record(&message);
        EXPECT_EQ(bytesOf(message), before);
    }
    EXPECT_EQ(bytesOf(context), enabled);
}

}    // namespace
