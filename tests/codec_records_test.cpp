// Records built by hand, their arrays and texts, and the limits of both.
#include "support/CodecKinds.h"
#include "support/ExactBuffer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::string textOf(const RTCM2_char* characters)
{
    return reinterpret_cast<const char*>(characters);
}

// Counts are computed in the width that stores them.
TEST(CodecRecords, CountsOfElementsFollowFromTheWords)
{
    struct Case {
        int type;
        unsigned words;
        unsigned count;
    };
    const Case cases[] = {
        {1, 0, 0},     {1, 4, 2},    {9, 30, 18},  {31, 31, 18},  {15, 1, 0},    {15, 4, 2},
        {15, 31, 20},  {18, 1, 0},   {19, 30, 15}, {20, 31, 15},  {21, 2, 1},    {38, 0, 1007},
        {38, 1, 1008}, {38, 2, 0},   {38, 31, 10}, {48, 1, 1008}, {49, 0, 3119}, {49, 1, 3120},
        {49, 31, 33},  {39, 0, 82},  {39, 1, 84},  {39, 2, 0},    {39, 31, 38},  {40, 0, 125},
        {40, 1, 126},  {40, 3, 1},   {46, 0, 50},  {46, 2, 0},    {46, 31, 11},  {50, 1, 50},
        {47, 0, 34},   {47, 1, 35},  {47, 31, 33}, {51, 0, 4093}, {51, 1, 4095}, {51, 2, 0},
        {52, 1, 4095}, {52, 31, 44}, {44, 31, 12}, {44, 4, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("type " + std::to_string(c.type) + " words " + std::to_string(c.words));
        TestMessage message(mainKind(c.type));
        message.decode(packedMessage(c.type, c.words, 6));
        EXPECT_EQ(message.count(), c.count);
        EXPECT_NE(message.array(), nullptr);
    }
}

TEST(CodecRecords, WrappedCountFailsWhereTheBufferEnds)
{
    struct Case {
        int type;
        std::size_t size;
        std::int32_t result;
        unsigned bits;
    };
    const Case cases[] = {
        {38, 9, RTCM2_ERR_MESSAGE_TYPE_38_SLOT_BITMAP_EXT_BUFFER_OVERFLOW, 56},
        // Two elements and seven bits of the third.
        {38, 28, RTCM2_ERR_JPL_48_DELTA_X_EXT_BUFFER_OVERFLOW, 80 + 2 * 65 + 7},
        // Two elements, each at a byte.
        {40, 17, RTCM2_ERR_OCDS_40_WL_BIAS_EXT_BUFFER_OVERFLOW, 96 + 2 * 16},
        // Enough bytes for all of them.
        {40, 300, 96 + 126 * 16, 96 + 126 * 16},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("type " + std::to_string(c.type) + " bytes " + std::to_string(c.size));
        TestMessage message(mainKind(c.type));
        EXPECT_EQ(message.decode(packedMessage(c.type, 1, c.size)), c.result);
        EXPECT_EQ(message.message.header.bit_count, c.bits);
    }
}

// With a parent, the declared length of a wide-area message ends before its elements.
TEST(CodecRecords, NestedLengthIsAppliedBeforeTheElements)
{
    struct Case {
        bool hasParent;
        std::uint32_t declared;
        std::int32_t result;
        unsigned bits;
    };
    const Case cases[] = {
        {true, 0, 168, 168},
        {true, 48, 168, 168},
        {true, 72, 192, 168},
        {true, 47, RTCM2_ERR_MESSAGE_TYPE_44_CORRECTIONS_SIZE_UNDERFLOW, 48},
        {false, 72, RTCM2_ERR_MESSAGE_TYPE_44_CORRECTIONS_SIZE_UNDERFLOW, 168},
        {false, 192, 192, 168},
    };
    const MainKind& kind = mainKind(44);
    for (const Case& c : cases) {
        SCOPED_TRACE("declared " + std::to_string(c.declared));
        TestMessage message(kind);
        ExactBuffer buffer(packedMessage(44, 5, 24));
        std::uint32_t offset = 0;
        EXPECT_EQ(kind.decode(message.message, offset, buffer.data(), buffer.size(), c.declared,
                              c.hasParent ? &offset : nullptr),
                  c.result);
        EXPECT_EQ(message.message.header.bit_count, c.bits);
    }
}

TEST(CodecRecords, SpecialMessageHoldsNinetyCharacters)
{
    TestMessage decoded(mainKind(16));
    const RTCM2_Message_Type_16_s& record = decoded.message.Message_Type_16;
    EXPECT_EQ(decoded.decode(packedMessage(16, 30, 96)), 768);
    EXPECT_EQ(record.Message_Length, 90);
    EXPECT_EQ(record.Message[89], 0xA5 - 256) << "signed, whatever char is";
    EXPECT_EQ(record.Message[90], '\0');
    EXPECT_EQ(decoded.decode(packedMessage(16, 30, 95)),
              RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_EXT_BUFFER_OVERFLOW);
    for (const std::size_t size : {99U, 96U}) {
        EXPECT_EQ(decoded.decode(packedMessage(16, 31, size)),
                  RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW);
        EXPECT_EQ(record.Message_Length, 93);
        EXPECT_EQ(record.bit_count, 768U);
    }
    EXPECT_EQ(TestMessage(mainKind(59)).decode(packedMessage(59, 31, 99)), 48 + 93 * 8);
}

TEST(CodecRecords, EndOfATextIsMarked)
{
    TestMessage special(mainKind(16));
    EXPECT_EQ(special.decode(packedMessage(16, 1, 9)), 72);
    EXPECT_EQ(special.message.Message_Type_16.Message[3], '\0');
    // Both texts at their longest, the flag set.
    TestMessage antenna(mainKind(23));
    const RTCM2_Message_Type_23_s& record = antenna.message.Message_Type_23;
    auto bytes = packedMessage(23, 23, 7 + 31 + 2 + 31);
    bytes[6] = 0x3F;
    bytes[39] = 0x1F;
    EXPECT_EQ(antenna.decode(bytes), 48 + 8 + 31 * 8 + 16 + 31 * 8);
    EXPECT_EQ(textOf(record.Antenna_Descriptor).size(), 31U);
    EXPECT_EQ(textOf(record.Antenna_Serial_Number).size(), 31U);
    // A serial number that is announced but not sent is empty.
    bytes[6] = 0x00;
    bytes[8] = 0x05;
    EXPECT_EQ(antenna.decode(bytes), 72);
    EXPECT_EQ(record.NAS, 5);
    EXPECT_EQ(textOf(record.Antenna_Descriptor), "");
    EXPECT_EQ(textOf(record.Antenna_Serial_Number), "");
}

TEST(CodecRecords, TextsAndBytesAreCutAtTheirRoom)
{
    TestMessage message(mainKind(16));
    RTCM2_Message_Type_16_s& special = message.message.Message_Type_16;
    for (const std::string& text : {std::string(100, 'x'), std::string("ab\xE4"), std::string()}) {
        EXPECT_EQ(RTCM2_strcpy_Message_Type_16_Message(&special, text.c_str()), 0);
        EXPECT_EQ(textOf(special.Message), text.substr(0, 90));
        EXPECT_EQ(special.Message_Length, text.substr(0, 90).size());
    }
    TestMessage antennaMessage(mainKind(23));
    RTCM2_Message_Type_23_s& antenna = antennaMessage.message.Message_Type_23;
    const std::string letters(40, 'y');
    RTCM2_strcpy_Message_Type_23_Antenna_Descriptor(&antenna, letters.c_str());
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&antenna, letters.c_str());
    EXPECT_EQ(antenna.NAD + antenna.NAS, 31 + 31);
    EXPECT_EQ(textOf(antenna.Antenna_Descriptor), letters.substr(0, 31));
    EXPECT_EQ(textOf(antenna.Antenna_Serial_Number), letters.substr(0, 31));

    TestMessage bytesMessage(mainKind(59));
    RTCM2_Message_Type_59_s& proprietary = bytesMessage.message.Message_Type_59;
    ExactBuffer many(200, 0x77);
    EXPECT_EQ(RTCM2_memcpy_Message_Type_59_Data(&proprietary, many.data(), 200), 0);
    EXPECT_EQ(proprietary.Data[92], 0x77);
    ExactBuffer few(2, 0x11);
    EXPECT_EQ(RTCM2_memcpy_Message_Type_59_Data(&proprietary, few.data(), 2), 0);
    EXPECT_EQ(proprietary.Data[1], 0x11);
    EXPECT_EQ(proprietary.Data[2], 0x77);
}

// Counts that a caller stored and that the record has no room for.
TEST(CodecRecords, EncodingStopsAtTheRoomOfATextOrOfBytes)
{
    RTCM2_message_s message{};
    const auto encode = [&](int type) {
        ExactBuffer target(120);
        return mainKind(type).encodeMessage(message, target.data(), 120);
    };
    message.Message_Type_16.Message_Length = 91;
    EXPECT_EQ(encode(16), RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW);
    EXPECT_EQ(message.header.bit_count, 48U + 90 * 8);
    message = {};
    message.Message_Type_23.NAD = 32;
    EXPECT_EQ(encode(23), RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_DESCRIPTOR_INT_BUFFER_OVERFLOW);
    message.Message_Type_23.NAD = 0;
    message.Message_Type_23.NAS = 255;
    message.Message_Type_23.Serial_Flag = 1;
    EXPECT_EQ(encode(23), RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_SERIAL_NUMBER_INT_BUFFER_OVERFLOW);
    message = {};
    message.Message_Type_59.Data_Length = 94;
    EXPECT_EQ(encode(59), RTCM2_ERR_MESSAGE_TYPE_59_DATA_INT_BUFFER_OVERFLOW);
}

TEST(CodecRecords, EncodingRecomputesWhatHasMembersOfItsOwn)
{
    struct Case {
        std::uint8_t high;    // the member of the upper bits
        std::uint8_t low;
        std::uint8_t whole;
    };
    TestMessage message(mainKind(1));
    RTCM2_DGNSS_s* correction =
        RTCM2_append_Message_Type_1_Corrections(&message.message.Message_Type_1);
    for (const Case& c : {Case{0, 0, 0}, {1, 0x25, 0xA5}, {2, 0xFF, 0x7F}, {3, 0x80, 0x80}}) {
        ExactBuffer target(11, 0xFF);
        correction->Issue_Of_Data = 0x21;
        correction->Change_Bit = c.high;
        correction->Time_Of_Day = c.low;
        EXPECT_EQ(mainKind(1).encodeMessage(message.message, target.data(), 11), 88);
        EXPECT_EQ(target.bytes()[10], c.whole);
        EXPECT_EQ(correction->Issue_Of_Data, c.whole);
    }
    RTCM2_message_s wideArea{};
    for (const Case& c : {Case{0, 5, 1}, {1, 1, 5}, {1, 4, 4}}) {
        ExactBuffer target(6);
        wideArea.Message_Type_44.Station_Health_Flag = c.high;
        wideArea.Message_Type_44.Station_Health = c.low;
        EXPECT_EQ(mainKind(44).encodeMessage(wideArea, target.data(), 6), 48);
        EXPECT_EQ(target.bytes()[5] & 7, c.whole);
        EXPECT_EQ(wideArea.Message_Type_44.Station_Health, c.whole);
    }
}

template <class Record>
Record initialised(std::int32_t (*init)(Record*))
{
    Record record;
    std::memset(static_cast<void*>(&record), 0x2A, sizeof record);
    init(&record);
    return record;
}

TEST(CodecRecords, InitWritesFirstValuesAndLeavesTheRest)
{
    const auto dgnss = initialised(RTCM2_init_DGNSS);
    EXPECT_EQ(dgnss.parent, nullptr);
    EXPECT_EQ(dgnss.Change_Bit | dgnss.Time_Of_Day, 0);
    EXPECT_EQ(dgnss.Issue_Of_Data, 0x2A);
    const auto rtk = initialised(RTCM2_init_RTK_21);
    EXPECT_EQ(rtk.PRN, 0);
    EXPECT_EQ(rtk.PSF, 0.0);
    EXPECT_EQ(rtk.Pseudorange_Correction, 0x2A2A);
    const auto point = initialised(RTCM2_init_Message_Type_24);
    EXPECT_EQ(point.Reserved | point.Reserved2 | point.Reserved3, 0);
    const auto antenna = initialised(RTCM2_init_Message_Type_23);
    for (const auto* text : {antenna.Antenna_Descriptor, antenna.Antenna_Serial_Number}) {
        EXPECT_EQ(text[0] | text[31], 0);
        EXPECT_EQ(text[1] & text[30], 0x2A);
    }
}

TEST(CodecArrays, GrowToTheLargestCountAndNoFurther)
{
    for (const MainKind& kind : mainKinds()) {
        if (kind.array() == nullptr) {
            continue;
        }
        SCOPED_TRACE(kind.type);
        TestMessage message(kind);
        const std::size_t elementSize = kind.array()->elements->size;
        const unsigned most = kind.count()->size == 1 ? 255 : 65535;
        EXPECT_EQ(message.array(), nullptr);
        for (const unsigned count : {0U, 1U, 2U, most - 1}) {
            message.setCount(count);
            const auto* element = static_cast<char*>(RTCM2_append_element(&message.message));
            ASSERT_NE(element, nullptr);
            EXPECT_EQ(element, message.array() + count * elementSize);
            EXPECT_EQ(message.count(), count + 1);
            const RecordStart start(element);
            EXPECT_EQ(start.kind, kind.array()->elements->kind);
            EXPECT_EQ(start.bitCount, 0U);
            EXPECT_EQ(start.parent, &message.message);
        }
        const char* const full = message.array();
        EXPECT_EQ(RTCM2_append_element(&message.message), nullptr);
        EXPECT_EQ(message.array(), full);
        EXPECT_EQ(message.count(), most);
    }
}

TEST(CodecArrays, CountWithoutArrayIsNotEncoded)
{
    for (const MainKind& kind : mainKinds()) {
        if (kind.array() != nullptr) {
            TestMessage message(kind);
            ExactBuffer target(100);
            message.setCount(2);
            EXPECT_EQ(RTCM2_error_to_string(
                          kind.encodeMessage(message.message, target.data(), target.size())),
                      "RTCM2_ERR_" + kind.name() + "_INTERNAL");
        }
    }
}

}    // namespace
