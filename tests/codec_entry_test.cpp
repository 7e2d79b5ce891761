// The entry of the codec: context, choice of the kind, names.
#include "RTCM2.h"

#include "support/CodecKinds.h"
#include "support/ExactBuffer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <iterator>
#include <set>

namespace {

struct CodecEntry : testing::Test {
    CodecEntry()
    {
        RTCM2_init_context(&context);
        std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
    }

    std::int32_t decode(std::vector<std::uint8_t> bytes, bool withContext = true)
    {
        ExactBuffer buffer(bytes);
        return RTCM2_decode(withContext ? &context : nullptr, buffer.data(), buffer.size(),
                            &message);
    }

    RTCM2_context_s context;
    RTCM2_message_s message;
};

std::vector<std::uint8_t> startOf(int type)
{
    return {0x66, static_cast<std::uint8_t>(type << 2)};
}

TEST_F(CodecEntry, ContextEnablesEveryMainKindFirst)
{
    const std::vector<std::uint8_t> expected{0x00, 0x00, 0xFE, 0xFF, 0xFF, 0xC1, 0x00};
    EXPECT_EQ(bytesOf(context), expected);
}

TEST_F(CodecEntry, TwoBytesReachTheStationOfTheKindThatTheyName)
{
    for (const MainKind& kind : mainKinds()) {
        const std::string expected = "RTCM2_ERR_MESSAGE_TYPE_" + std::to_string(kind.type) +
                                     "_REFERENCE_STATION_ID_EXT_BUFFER_OVERFLOW";
        EXPECT_EQ(RTCM2_error_to_string(decode(startOf(kind.type))), expected);
        EXPECT_EQ(message.kind, kind.kind);
        kind.release(message);
    }
    EXPECT_EQ(context.unknown_type, 0);
}

// Flags as other programs set them: by their place, told apart here from the mapping.
TEST_F(CodecEntry, EachFlagDisablesItsKindAlone)
{
    struct Flag {
        int type;
        unsigned byte;
        unsigned mask;
        std::int32_t code;
    };
    const Flag flags[] = {
        {3, 2, 0x80, -438},  {16, 2, 0x40, -439}, {22, 2, 0x20, -440}, {23, 2, 0x10, -441},
        {24, 2, 0x08, -442}, {32, 2, 0x04, -443}, {59, 2, 0x02, -444}, {1, 3, 0x01, -445},
        {9, 3, 0x80, -446},  {15, 3, 0x40, -447}, {18, 3, 0x20, -448}, {19, 3, 0x10, -449},
        {20, 3, 0x08, -450}, {21, 3, 0x04, -451}, {31, 3, 0x02, -452}, {38, 4, 0x01, -453},
        {39, 4, 0x80, -454}, {40, 4, 0x40, -455}, {44, 4, 0x20, -456}, {46, 4, 0x10, -457},
        {47, 4, 0x08, -458}, {48, 4, 0x04, -459}, {49, 4, 0x02, -460}, {50, 5, 0x01, -461},
        {51, 5, 0x80, -462}, {52, 5, 0x40, -463}};
    for (const Flag& flag : flags) {
        SCOPED_TRACE(flag.type);
        RTCM2_init_context(&context);
        std::uint8_t& enabled = context.enabled[flag.byte];
        enabled = static_cast<std::uint8_t>(enabled & ~flag.mask);
        for (const MainKind& kind : mainKinds()) {
            std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
            const std::size_t typeAt = offsetof(RTCM2_header_s, Message_Type);
            auto untouched = bytesOf(message);
            untouched[typeAt] = static_cast<std::uint8_t>(flag.type);
            const std::int32_t code = decode(startOf(kind.type));
            if (kind.type != flag.type) {
                EXPECT_GT(code, -438);
                kind.release(message);
                continue;
            }
            EXPECT_EQ(code, flag.code);
            EXPECT_EQ(bytesOf(message), untouched);
            EXPECT_GT(decode(startOf(flag.type), false), -438) << "without context";
            kind.release(message);
        }
    }
    EXPECT_EQ(context.unknown_type, 0);
}

TEST_F(CodecEntry, TypeOfNoKindIsKept)
{
    std::set<int> known;
    for (const MainKind& kind : mainKinds()) {
        known.insert(kind.type);
    }
    for (int type = 0; type < 64; ++type) {
        if (!known.contains(type)) {
            context.unknown_type = 0xEE;
            EXPECT_EQ(decode(startOf(type)), RTCM2_ERR_INVALID_MESSAGE);
            EXPECT_EQ(context.unknown_type, type);
            EXPECT_EQ(message.header.Message_Type, type);
            EXPECT_EQ(decode(startOf(type), false), RTCM2_ERR_INVALID_MESSAGE);
        }
    }
}

TEST_F(CodecEntry, BufferWithoutTypeChangesNothing)
{
    const auto before = bytesOf(message);
    context.unknown_type = 0x5A;
    for (const std::vector<std::uint8_t>& bytes :
         {std::vector<std::uint8_t>{}, std::vector<std::uint8_t>{0x66}}) {
        EXPECT_EQ(decode(bytes), RTCM2_ERR_INVALID_MESSAGE);
        EXPECT_EQ(decode(bytes, false), RTCM2_ERR_INVALID_MESSAGE);
    }
    EXPECT_EQ(context.unknown_type, 0x5A);
    EXPECT_EQ(bytesOf(message), before);
}

TEST_F(CodecEntry, LongestBufferDecodes)
{
    std::vector<std::uint8_t> bytes(65535, 0xFF);
    bytes[1] = 0x04;
    EXPECT_EQ(decode(bytes), 48 + 18 * 40);
    RTCM2_free_Message_Type_1_children(&message.Message_Type_1);
}

TEST(CodecNames, ErrorsHaveTheirNumbers)
{
    const std::pair<std::int32_t, const char*> names[] = {
        {0, "RTCM2_ERR_NONE"},
        {12, "RTCM2_ERR_NONE"},
        {-1, "RTCM2_ERR_INVALID_CRC"},
        {-2, "RTCM2_ERR_TYPE_15_R_EXT_BUFFER_OVERFLOW"},
        {-7, "RTCM2_ERR_TYPE_15_RATE_OF_CHANGE_SIZE_UNDERFLOW"},
        {-12, "RTCM2_ERR_DGNSS_PRC_EXT_BUFFER_OVERFLOW"},
        {-16, "RTCM2_ERR_DGNSS_INTERNAL"},
        {-57, "RTCM2_ERR_RTK_21_INTERNAL"},
        {-91, "RTCM2_ERR_JPL_48_SF_SIZE_UNDERFLOW"},
        {-109, "RTCM2_ERR_OCDS_52_INTERNAL"},
        {-114, "RTCM2_ERR_MESSAGE_TYPE_3_SEQUENCE_NO_EXT_BUFFER_OVERFLOW"},
        {-130, "RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW"},
        {-140, "RTCM2_ERR_MESSAGE_TYPE_22_L1_ECEF_DELTA_X_EXT_BUFFER_OVERFLOW"},
        {-166, "RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_DESCRIPTOR_INT_BUFFER_OVERFLOW"},
        {-172, "RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_SERIAL_NUMBER_SIZE_UNDERFLOW"},
        {-190, "RTCM2_ERR_MESSAGE_TYPE_24_RESERVED3_SIZE_UNDERFLOW"},
        {-212, "RTCM2_ERR_MESSAGE_TYPE_59_DATA_INT_BUFFER_OVERFLOW"},
        {-215, "RTCM2_ERR_MESSAGE_TYPE_1_PREAMBLE_EXT_BUFFER_OVERFLOW"},
        {-222, "RTCM2_ERR_MESSAGE_TYPE_1_CORRECTIONS_SIZE_UNDERFLOW"},
        {-288, "RTCM2_ERR_MESSAGE_TYPE_21_DATA_SIZE_UNDERFLOW"},
        {-357, "RTCM2_ERR_MESSAGE_TYPE_46_PRN_BITMAP_EXT_BUFFER_OVERFLOW"},
        {-437, "RTCM2_ERR_MESSAGE_TYPE_52_INTERNAL"},
        {-438, "RTCM2_ERR_MESSAGE_TYPE_3_DISABLED"},
        {-463, "RTCM2_ERR_MESSAGE_TYPE_52_DISABLED"},
        {-464, "RTCM2_ERR_INVALID_MESSAGE"},
        {-465, "RTCM2_ERR_EOF"},
        {-466, "???"},
        {INT32_MIN, "???"}};
    for (const auto& [code, name] : names) {
        EXPECT_STREQ(RTCM2_error_to_string(code), name) << code;
    }
}

TEST(CodecNames, AreUnique)
{
    std::set<std::string> errors;
    for (std::int32_t code = -1; code >= -465; --code) {
        errors.insert(RTCM2_error_to_string(code));
    }
    EXPECT_EQ(errors.size(), 465U);
    EXPECT_FALSE(errors.contains("???"));
    std::set<std::string> kinds;
    for (std::int32_t kind = 0; kind <= 41; ++kind) {
        kinds.insert(RTCM2_message_enum_to_string(kind));
    }
    EXPECT_EQ(kinds.size(), 42U);
    EXPECT_FALSE(kinds.contains("???"));
}

TEST(CodecNames, KindsHaveTheirNumbers)
{
    const std::pair<std::int32_t, const char*> names[] = {{0, "RTCM2_MESSAGE_NULL"},
                                                          {1, "RTCM2_TYPE_15"},
                                                          {2, "RTCM2_DGNSS"},
                                                          {7, "RTCM2_WACORRECTION"},
                                                          {15, "RTCM2_OCDS_52"},
                                                          {16, "RTCM2_MESSAGE_TYPE_3"},
                                                          {23, "RTCM2_MESSAGE_TYPE_1"},
                                                          {30, "RTCM2_MESSAGE_TYPE_31"},
                                                          {41, "RTCM2_MESSAGE_TYPE_52"},
                                                          {42, "???"},
                                                          {-1, "???"},
                                                          {INT32_MAX, "???"}};
    for (const auto& [kind, name] : names) {
        EXPECT_STREQ(RTCM2_message_enum_to_string(kind), name) << kind;
    }
}

}    // namespace
