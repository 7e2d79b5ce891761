// Records built by hand, their arrays and texts, and the limits of both.
#include "RTCM2.h"
#include "RTCM2_layouts.h"

#include "support/CodecKinds.h"
#include "support/ExactBuffer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>

namespace {

// A packed header with `words` data words and nothing after it.
std::vector<std::uint8_t> header(int type, unsigned words, std::size_t size = 6)
{
    std::vector<std::uint8_t> bytes{0x66, static_cast<std::uint8_t>(type << 2), 0x05, 0x8C,
                                    0xA3, static_cast<std::uint8_t>(words << 3)};
    bytes.resize(size, 0xA5);
    return bytes;
}

struct CodecRecords : testing::Test {
    ~CodecRecords() override
    {
        if (owner != nullptr) {
            owner->release(message);
        }
    }

    std::int32_t decode(const std::vector<std::uint8_t>& bytes)
    {
        ExactBuffer buffer(bytes);
        owner = &mainKind(bytes[1] >> 2);
        return RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message);
    }

    RTCM2_message_s message;
    const MainKind* owner = nullptr;
};

// Counts are computed in the width that stores them.
TEST_F(CodecRecords, CountsOfElementsFollowFromTheWords)
{
    struct Case {
        int type;
        unsigned words;
        unsigned count;
    };
    const Case cases[] = {
        {1, 0, 0},     {1, 4, 2},    {9, 30, 18},   {31, 31, 18},  {15, 2, 1},    {15, 31, 20},
        {18, 0, 0},    {19, 30, 15}, {20, 31, 15},  {21, 2, 1},    {38, 0, 1007}, {38, 1, 1008},
        {38, 2, 0},    {38, 31, 10}, {48, 1, 1008}, {49, 0, 3119}, {49, 1, 3120}, {49, 31, 33},
        {39, 0, 82},   {39, 1, 84},  {39, 2, 0},    {39, 31, 38},  {40, 0, 125},  {40, 1, 126},
        {40, 3, 1},    {46, 0, 50},  {46, 1, 50},   {46, 31, 11},  {50, 1, 50},   {47, 0, 34},
        {47, 1, 35},   {47, 9, 8},   {47, 31, 33},  {51, 0, 4093}, {51, 1, 4095}, {51, 2, 0},
        {52, 1, 4095}, {52, 31, 44}, {44, 31, 12},  {44, 2, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("type " + std::to_string(c.type) + " words " + std::to_string(c.words));
        ExactBuffer buffer(header(c.type, c.words, 6));
        TestMessage decoded(mainKind(c.type));
        RTCM2_decode(nullptr, buffer.data(), buffer.size(), &decoded.message);
        EXPECT_EQ(mainKind(c.type).count(decoded.message), c.count);
        EXPECT_NE(mainKind(c.type).array(decoded.message), nullptr);
    }
}

TEST_F(CodecRecords, WrappedCountFailsWhereTheBufferEnds)
{
    EXPECT_EQ(decode(header(38, 1, 9)), RTCM2_ERR_MESSAGE_TYPE_38_SLOT_BITMAP_EXT_BUFFER_OVERFLOW);
    EXPECT_EQ(message.Message_Type_38.Ns, 1008);
    owner->release(message);
    // Two elements and seven bits of the third.
    EXPECT_EQ(decode(header(38, 1, 10 + 17 + 1)), RTCM2_ERR_JPL_48_DELTA_X_EXT_BUFFER_OVERFLOW);
    EXPECT_EQ(message.header.bit_count, 80U + 130 + 7);
    owner->release(message);
    EXPECT_EQ(decode(header(40, 1, 17)), RTCM2_ERR_OCDS_40_WL_BIAS_EXT_BUFFER_OVERFLOW);
    EXPECT_EQ(message.Message_Type_40.Ns, 126);
    EXPECT_EQ(message.header.bit_count, 96U + 32);
    owner->release(message);
    // Enough bytes for all of them.
    EXPECT_EQ(decode(header(40, 1, 300)), 96 + 126 * 16);
}

TEST_F(CodecRecords, EvenWordCountNeedsAWordMoreThanAnnounced)
{
    EXPECT_EQ(decode(header(18, 4, 15)), RTCM2_ERR_RTK_18_MULTIPLE_MESSAGE_EXT_BUFFER_OVERFLOW);
    EXPECT_EQ(message.header.bit_count, 120U);
    owner->release(message);
    EXPECT_EQ(decode(header(18, 4, 18)), RTCM2_ERR_RTK_18_CARRIER_PHASE_EXT_BUFFER_OVERFLOW);
    owner->release(message);
    EXPECT_EQ(decode(header(18, 4, 21)), 168);
}

TEST_F(CodecRecords, SpecialMessageHoldsNinetyCharacters)
{
    EXPECT_EQ(decode(header(16, 30, 96)), 768);
    EXPECT_EQ(message.Message_Type_16.Message_Length, 90);
    EXPECT_EQ(message.Message_Type_16.Message[89], static_cast<char>(0xA5));
    EXPECT_LT(static_cast<signed char>(message.Message_Type_16.Message[89]), 0);
    EXPECT_EQ(message.Message_Type_16.Message[90], '\0');
    EXPECT_EQ(decode(header(16, 30, 95)), RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_EXT_BUFFER_OVERFLOW);
    for (const std::size_t size : {99U, 96U}) {
        EXPECT_EQ(decode(header(16, 31, size)),
                  RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW);
        EXPECT_EQ(message.Message_Type_16.Message_Length, 93);
        EXPECT_EQ(message.header.bit_count, 768U);
    }
    EXPECT_EQ(decode(header(59, 31, 99)), 48 + 93 * 8);
}

TEST_F(CodecRecords, EndOfATextIsMarked)
{
    std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
    EXPECT_EQ(decode(header(16, 1, 9)), 72);
    EXPECT_EQ(message.Message_Type_16.Message[3], '\0');
    // Both texts at their longest, the flag set.
    auto bytes = header(23, 23, 7 + 31 + 2 + 31);
    bytes[6] = 0x3F;
    bytes[39] = 0x1F;
    EXPECT_EQ(decode(bytes), 48 + 8 + 31 * 8 + 16 + 31 * 8);
    EXPECT_EQ(std::strlen(message.Message_Type_23.Antenna_Descriptor), 31U);
    EXPECT_EQ(std::strlen(message.Message_Type_23.Antenna_Serial_Number), 31U);
    // A serial number that is announced but not sent is empty.
    bytes[6] = 0x00;
    bytes[8] = 0x05;
    EXPECT_EQ(decode(bytes), 72);
    EXPECT_EQ(message.Message_Type_23.NAS, 5);
    EXPECT_STREQ(message.Message_Type_23.Antenna_Descriptor, "");
    EXPECT_STREQ(message.Message_Type_23.Antenna_Serial_Number, "");
}

TEST_F(CodecRecords, TextsAreCutAtTheirRoom)
{
    RTCM2_Message_Type_16_s special;
    RTCM2_init_Message_Type_16(&special);
    EXPECT_EQ(RTCM2_strcpy_Message_Type_16_Message(&special, std::string(100, 'x').c_str()), 0);
    EXPECT_EQ(special.Message_Length, 90);
    EXPECT_EQ(std::string(special.Message), std::string(90, 'x'));
    EXPECT_EQ(RTCM2_strcpy_Message_Type_16_Message(&special, "ab\xE4"), 0);
    EXPECT_EQ(special.Message_Length, 3);
    EXPECT_STREQ(special.Message, "ab\xE4");
    EXPECT_EQ(RTCM2_strcpy_Message_Type_16_Message(&special, ""), 0);
    EXPECT_EQ(special.Message_Length, 0);
    EXPECT_STREQ(special.Message, "");

    RTCM2_Message_Type_23_s antenna;
    RTCM2_init_Message_Type_23(&antenna);
    antenna.Serial_Flag = 0;
    const std::string letters(40, 'y');
    RTCM2_strcpy_Message_Type_23_Antenna_Descriptor(&antenna, letters.c_str());
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&antenna, letters.c_str());
    EXPECT_EQ(antenna.NAD, 31);
    EXPECT_EQ(antenna.NAS, 31);
    EXPECT_EQ(antenna.Serial_Flag, 0);
    EXPECT_EQ(antenna.Antenna_Descriptor, letters.substr(0, 31));
    EXPECT_EQ(antenna.Antenna_Serial_Number, letters.substr(0, 31));
}

TEST_F(CodecRecords, BytesAreCutAtTheirRoom)
{
    ExactBuffer many(200, 0x77);
    RTCM2_Message_Type_59_s record;
    RTCM2_init_Message_Type_59(&record);
    record.Data_Length = 12;
    EXPECT_EQ(RTCM2_memcpy_Message_Type_59_Data(&record, many.data(), 200), 0);
    EXPECT_EQ(record.Data[92], 0x77);
    EXPECT_EQ(record.Data_Length, 12);
    ExactBuffer few(2, 0x11);
    EXPECT_EQ(RTCM2_memcpy_Message_Type_59_Data(&record, few.data(), 2), 0);
    EXPECT_EQ(record.Data[1], 0x11);
    EXPECT_EQ(record.Data[2], 0x77);
}

// Counts that a caller stored and that the record has no room for.
TEST_F(CodecRecords, EncodingStopsAtTheRoomOfATextOrOfBytes)
{
    ExactBuffer target(120);
    RTCM2_init_Message_Type_16(&message.Message_Type_16);
    std::memset(message.Message_Type_16.Message, 'm', 91);
    message.Message_Type_16.Message_Length = 91;
    EXPECT_EQ(RTCM2_encode_Message_Type_16(target.data(), 120, &message.Message_Type_16),
              RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW);
    EXPECT_EQ(target.bytes()[95], 'm');
    EXPECT_EQ(target.bytes()[96], 0);

    RTCM2_init_Message_Type_23(&message.Message_Type_23);
    message.Message_Type_23.NAD = 32;
    EXPECT_EQ(RTCM2_encode_Message_Type_23(target.data(), 120, &message.Message_Type_23),
              RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_DESCRIPTOR_INT_BUFFER_OVERFLOW);
    message.Message_Type_23.NAD = 0;
    message.Message_Type_23.NAS = 255;
    message.Message_Type_23.Serial_Flag = 1;
    EXPECT_EQ(RTCM2_encode_Message_Type_23(target.data(), 120, &message.Message_Type_23),
              RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_SERIAL_NUMBER_INT_BUFFER_OVERFLOW);

    RTCM2_init_Message_Type_59(&message.Message_Type_59);
    message.Message_Type_59.Data_Length = 94;
    EXPECT_EQ(RTCM2_encode_Message_Type_59(target.data(), 120, &message.Message_Type_59),
              RTCM2_ERR_MESSAGE_TYPE_59_DATA_INT_BUFFER_OVERFLOW);
}

TEST_F(CodecRecords, EncodingRecomputesWhatHasMembersOfItsOwn)
{
    RTCM2_Message_Type_1_s record;
    std::memset(static_cast<void*>(&record), 0, sizeof record);
    RTCM2_init_Message_Type_1(&record);
    RTCM2_DGNSS_s* correction = RTCM2_append_Message_Type_1_Corrections(&record);
    std::memset(&correction->Scale_Factor, 0, 3);
    correction->PRC = 0;
    correction->RRC = 0;
    struct Case {
        std::uint8_t changeBit;
        std::uint8_t timeOfDay;
        std::uint8_t issueOfData;
    };
    for (const Case& c : {Case{0, 0, 0}, {1, 0x25, 0xA5}, {2, 0xFF, 0x7F}, {3, 0x80, 0x80}}) {
        ExactBuffer target(11, 0xFF);
        correction->Issue_Of_Data = 0x21;
        correction->Change_Bit = c.changeBit;
        correction->Time_Of_Day = c.timeOfDay;
        EXPECT_EQ(RTCM2_encode_Message_Type_1(target.data(), 11, &record), 88);
        EXPECT_EQ(target.bytes()[10], c.issueOfData);
        EXPECT_EQ(correction->Issue_Of_Data, c.issueOfData);
    }
    RTCM2_free_Message_Type_1_children(&record);

    ExactBuffer target(6);
    std::memset(static_cast<void*>(&message), 0, sizeof message);
    RTCM2_init_Message_Type_44(&message.Message_Type_44);
    for (const Case& c : {Case{0, 5, 1}, {1, 1, 5}, {1, 4, 4}, {0, 4, 0}}) {
        message.Message_Type_44.Station_Health_Flag = c.changeBit;
        message.Message_Type_44.Station_Health = c.timeOfDay;
        EXPECT_EQ(RTCM2_encode_Message_Type_44(target.data(), 6, &message.Message_Type_44), 48);
        EXPECT_EQ(target.bytes()[5] & 7, c.issueOfData);
        EXPECT_EQ(message.Message_Type_44.Station_Health, c.issueOfData);
    }
}

TEST_F(CodecRecords, EncodingKeepsWhatTheCallerStored)
{
    ExactBuffer target(21);
    std::memset(static_cast<void*>(&message), 0, sizeof message);
    RTCM2_init_Message_Type_24(&message.Message_Type_24);
    message.Message_Type_24.ECEF_X = (std::int64_t{1} << 38) + 1;
    message.Message_Type_24.Preamble = 0xAB;
    EXPECT_EQ(RTCM2_encode_Message_Type_24(target.data(), 21, &message.Message_Type_24), 168);
    EXPECT_EQ(target.bytes()[0], 0xAB);
    EXPECT_EQ(target.bytes()[6], 0) << "bits beyond the field are lost";
    EXPECT_EQ(target.bytes()[10], 0x04);
    EXPECT_EQ(RTCM2_encode_Message_Type_24(target.data(), 21, &message.Message_Type_24), 168);
    EXPECT_EQ(message.header.bit_count, 336U);
}

template <class Record>
Record patterned()
{
    Record record;
    std::memset(static_cast<void*>(&record), 0x2A, sizeof record);
    return record;
}

TEST(CodecInit, WritesFirstValuesAndLeavesTheRest)
{
    auto dgnss = patterned<RTCM2_DGNSS_s>();
    RTCM2_init_DGNSS(&dgnss);
    EXPECT_EQ(dgnss.parent, nullptr);
    EXPECT_EQ(dgnss.Change_Bit | dgnss.Time_Of_Day, 0);
    EXPECT_EQ(dgnss.Issue_Of_Data, 0x2A);
    auto rtk = patterned<RTCM2_RTK_21_s>();
    RTCM2_init_RTK_21(&rtk);
    EXPECT_EQ(rtk.PRN, 0);
    EXPECT_EQ(rtk.PSF, 0.0);
    EXPECT_EQ(rtk.Pseudorange_Correction, 0x2A2A);
    auto clock = patterned<RTCM2_OCDS_51_s>();
    RTCM2_init_OCDS_51(&clock);
    EXPECT_EQ(clock.PRN, 0);
    EXPECT_EQ(clock.Clock, 0x2A2A);
    auto point = patterned<RTCM2_Message_Type_24_s>();
    RTCM2_init_Message_Type_24(&point);
    EXPECT_EQ(point.Reserved | point.Reserved2 | point.Reserved3, 0);
    EXPECT_EQ(point.Antenna_Height, 0x2A2A2A2AU);
    auto wideArea = patterned<RTCM2_Message_Type_44_s>();
    RTCM2_init_Message_Type_44(&wideArea);
    EXPECT_EQ(wideArea.Station_Health_Flag, 0);
    auto antenna = patterned<RTCM2_Message_Type_23_s>();
    RTCM2_init_Message_Type_23(&antenna);
    for (const char* text : {antenna.Antenna_Descriptor, antenna.Antenna_Serial_Number}) {
        EXPECT_EQ(text[0] | text[31], 0);
        EXPECT_EQ(text[1] & text[30], 0x2A);
    }
}

// What follows holds for every kind with an array.
template <class Record>
struct Appending;

#define APPENDING(TYPE, MEMBER, ELEMENT, KIND, WIDEST)                                             \
    template <>                                                                                    \
    struct Appending<RTCM2_Message_Type_##TYPE##_s> {                                              \
        static constexpr int type = TYPE;                                                          \
        static constexpr RTCM2_message_enum elementKind = KIND;                                    \
        static constexpr unsigned widest = WIDEST;                                                 \
        static auto* append(RTCM2_Message_Type_##TYPE##_s* record)                                 \
        {                                                                                          \
            return RTCM2_append_Message_Type_##TYPE##_##MEMBER(record);                            \
        }                                                                                          \
        static RTCM2_##ELEMENT##_s*& array(RTCM2_Message_Type_##TYPE##_s& record)                  \
        {                                                                                          \
            return record.MEMBER;                                                                  \
        }                                                                                          \
    };

APPENDING(1, Corrections, DGNSS, RTCM2_DGNSS, 255)
APPENDING(9, Corrections, DGNSS, RTCM2_DGNSS, 255)
APPENDING(31, Corrections, DGNSS, RTCM2_DGNSS, 255)
APPENDING(15, Corrections, Type_15, RTCM2_TYPE_15, 255)
APPENDING(18, Data, RTK_18, RTCM2_RTK_18, 255)
APPENDING(19, Data, RTK_19, RTCM2_RTK_19, 255)
APPENDING(20, Data, RTK_20, RTCM2_RTK_20, 255)
APPENDING(21, Data, RTK_21, RTCM2_RTK_21, 255)
APPENDING(38, Corrections, JPL_48, RTCM2_JPL_48, 65535)
APPENDING(39, Corrections, OCDS_39, RTCM2_OCDS_39, 255)
APPENDING(40, Corrections, OCDS_40, RTCM2_OCDS_40, 255)
APPENDING(44, Corrections, WACorrection, RTCM2_WACORRECTION, 255)
APPENDING(46, Corrections, JPL_46, RTCM2_JPL_46, 255)
APPENDING(47, Corrections, JPL_47, RTCM2_JPL_47, 255)
APPENDING(48, Corrections, JPL_48, RTCM2_JPL_48, 65535)
APPENDING(49, Corrections, JPL_49, RTCM2_JPL_49, 65535)
APPENDING(50, Corrections, JPL_46, RTCM2_JPL_46, 255)
APPENDING(51, Corrections, OCDS_51, RTCM2_OCDS_51, 65535)
APPENDING(52, Corrections, OCDS_52, RTCM2_OCDS_52, 65535)

template <class Record>
struct CodecArrays : testing::Test {
};

using ArrayKinds =
    testing::Types<RTCM2_Message_Type_1_s, RTCM2_Message_Type_9_s, RTCM2_Message_Type_31_s,
                   RTCM2_Message_Type_15_s, RTCM2_Message_Type_18_s, RTCM2_Message_Type_19_s,
                   RTCM2_Message_Type_20_s, RTCM2_Message_Type_21_s, RTCM2_Message_Type_38_s,
                   RTCM2_Message_Type_39_s, RTCM2_Message_Type_40_s, RTCM2_Message_Type_44_s,
                   RTCM2_Message_Type_46_s, RTCM2_Message_Type_47_s, RTCM2_Message_Type_48_s,
                   RTCM2_Message_Type_49_s, RTCM2_Message_Type_50_s, RTCM2_Message_Type_51_s,
                   RTCM2_Message_Type_52_s>;
TYPED_TEST_SUITE(CodecArrays, ArrayKinds);

TYPED_TEST(CodecArrays, GrowToTheLargestCountAndNoFurther)
{
    using Kind = Appending<TypeParam>;
    const MainKind& kind = mainKind(Kind::type);
    RTCM2_message_s message;
    std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
    kind.init(message);
    auto& record = reinterpret_cast<TypeParam&>(message);
    auto*& array = Kind::array(record);
    EXPECT_EQ(array, nullptr);
    const auto appendTo = [&](unsigned end) {
        while (record.Ns < end) {
            const unsigned i = record.Ns;
            auto* element = Kind::append(&record);
            ASSERT_NE(element, nullptr);
            ASSERT_EQ(element, array + i);
            ASSERT_EQ(element->kind, Kind::elementKind);
            ASSERT_EQ(element->bit_count, 0U);
            ASSERT_EQ(element->parent, &record);
            ASSERT_EQ(record.Ns, i + 1);
        }
    };
    appendTo(3);
    // To the last two at once: one by one takes too long where the count has 16 bits.
    const std::size_t most = Kind::widest;
    void* grown = std::realloc(array, (most - 2) * sizeof *array);
    ASSERT_NE(grown, nullptr);
    array = static_cast<std::remove_reference_t<decltype(array)>>(grown);
    record.Ns = static_cast<decltype(record.Ns)>(most - 2);
    appendTo(Kind::widest);
    const auto* full = array;
    EXPECT_EQ(Kind::append(&record), nullptr);
    EXPECT_EQ(array, full);
    EXPECT_EQ(record.Ns, most);
    kind.release(message);
}

TYPED_TEST(CodecArrays, CountWithoutArrayIsNotEncoded)
{
    using Kind = Appending<TypeParam>;
    const MainKind& kind = mainKind(Kind::type);
    RTCM2_message_s message;
    std::memset(static_cast<void*>(&message), 0, sizeof message);
    kind.init(message);
    auto& record = reinterpret_cast<TypeParam&>(message);
    ExactBuffer target(100);
    record.Ns = 2;
    const std::int32_t code = kind.encodeMessage(message, target.data(), target.size());
    EXPECT_EQ(RTCM2_error_to_string(code), "RTCM2_ERR_" + kind.name() + "_INTERNAL");
    record.Ns = 0;
    EXPECT_GE(kind.encodeMessage(message, target.data(), target.size()), 48);
    kind.release(message);
}

// Sub-records by themselves: decoded from zeros, with each sort of declared length.
template <class Record>
using Decoder = std::int32_t (*)(Record*, std::uint32_t*, const std::uint8_t*, std::uint16_t, void*,
                                 std::uint32_t);

template <class Record>
void checkDeclaredLength(Decoder<Record> decode, RTCM2_message_enum kind, std::int32_t bits)
{
    const std::string name =
        "RTCM2_ERR_" +
        std::string(RTCM2_message_enum_to_string(kind)).substr(std::strlen("RTCM2_"));
    SCOPED_TRACE(name);
    Record record;
    int parent = 0;
    const auto end = static_cast<std::uint32_t>(bits);
    for (const std::uint32_t start : {0U, 8U, 3U}) {
        ExactBuffer buffer((start + end + 7) / 8);
        const auto run = [&](std::uint32_t declared, std::uint32_t expectedEnd) {
            std::uint32_t offset = start;
            const std::int32_t code =
                decode(&record, &offset, buffer.data(), buffer.size(), &parent, declared);
            EXPECT_EQ(offset, expectedEnd);
            EXPECT_EQ(record.kind, kind);
            EXPECT_EQ(record.bit_count, end);
            EXPECT_EQ(record.parent, &parent);
            return code;
        };
        EXPECT_EQ(run(0, start + end), bits);
        EXPECT_EQ(run(end, start + end), bits);
        EXPECT_EQ(run(end + 30, start + end + 30), bits + 30);
        const std::string underflow = RTCM2_error_to_string(run(end - 1, start + end));
        EXPECT_TRUE(underflow.starts_with(name) && underflow.ends_with("_SIZE_UNDERFLOW"))
            << underflow;
        if (start > 0) {
            EXPECT_EQ(RTCM2_error_to_string(run(0xFFFFFFFF, start - 1)), name + "_INTERNAL");
        }
    }
}

TEST(CodecSubRecords, DeclaredLengthSkipsPaddingAndRefusesLongerRecords)
{
    using namespace rtcm2::layouts;
    checkDeclaredLength(decode_Type_15, RTCM2_TYPE_15, 36);
    checkDeclaredLength(decode_DGNSS, RTCM2_DGNSS, 40);
    checkDeclaredLength(decode_RTK_18, RTCM2_RTK_18, 48);
    checkDeclaredLength(decode_RTK_19, RTCM2_RTK_19, 48);
    checkDeclaredLength(decode_RTK_20, RTCM2_RTK_20, 48);
    checkDeclaredLength(decode_RTK_21, RTCM2_RTK_21, 48);
    checkDeclaredLength(decode_WACorrection, RTCM2_WACORRECTION, 60);
    checkDeclaredLength(decode_JPL_46, RTCM2_JPL_46, 60);
    checkDeclaredLength(decode_JPL_47, RTCM2_JPL_47, 20);
    checkDeclaredLength(decode_JPL_48, RTCM2_JPL_48, 65);
    checkDeclaredLength(decode_JPL_49, RTCM2_JPL_49, 21);
    checkDeclaredLength(decode_OCDS_39, RTCM2_OCDS_39, 18);
    checkDeclaredLength(decode_OCDS_40, RTCM2_OCDS_40, 16);
    checkDeclaredLength(decode_OCDS_51, RTCM2_OCDS_51, 16);
    checkDeclaredLength(decode_OCDS_52, RTCM2_OCDS_52, 16);
}

}    // namespace
