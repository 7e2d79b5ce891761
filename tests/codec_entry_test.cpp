// The entry of the codec: context, choice of the kind, names.
#include "support/CodecKinds.h"
#include "support/ExactBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <set>

namespace {

struct CodecEntry : testing::Test {
    CodecEntry() { fillWithPattern(); }

    void fillWithPattern()
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

    // Two bytes, which reach the station of the kind that they name.
    std::int32_t decodeStartOf(int type, bool withContext = true)
    {
        return decode({0x66, static_cast<std::uint8_t>(type << 2)}, withContext);
    }

    RTCM2_context_s context;
    RTCM2_message_s message;
};

TEST_F(CodecEntry, ContextEnablesEveryMainKindFirst)
{
    const std::vector<std::uint8_t> expected{0x00, 0x00, 0xFE, 0xFF, 0xFF, 0xC1, 0x00};
    EXPECT_EQ(bytesOf(context), expected);
}

// Flags as other programs set them: by their place, told apart here from the mapping.
TEST_F(CodecEntry, EachFlagDisablesItsKindAlone)
{
    struct Flag {
        int type;
        unsigned byte;
        unsigned mask;
    };
    const Flag flags[] = {{3, 2, 0x80},  {16, 2, 0x40}, {22, 2, 0x20}, {23, 2, 0x10}, {24, 2, 0x08},
                          {32, 2, 0x04}, {59, 2, 0x02}, {1, 3, 0x01},  {9, 3, 0x80},  {15, 3, 0x40},
                          {18, 3, 0x20}, {19, 3, 0x10}, {20, 3, 0x08}, {21, 3, 0x04}, {31, 3, 0x02},
                          {38, 4, 0x01}, {39, 4, 0x80}, {40, 4, 0x40}, {44, 4, 0x20}, {46, 4, 0x10},
                          {47, 4, 0x08}, {48, 4, 0x04}, {49, 4, 0x02}, {50, 5, 0x01}, {51, 5, 0x80},
                          {52, 5, 0x40}};
    std::int32_t disabledCode = -438;
    for (const Flag& flag : flags) {
        for (const MainKind& kind : mainKinds()) {
            SCOPED_TRACE(std::to_string(kind.type) + " without " + std::to_string(flag.type));
            const std::string station =
                "RTCM2_ERR_" + kind.name() + "_REFERENCE_STATION_ID_EXT_BUFFER_OVERFLOW";
            fillWithPattern();
            auto untouched = bytesOf(message);
            untouched[offsetof(RTCM2_header_s, Message_Type)] =
                static_cast<std::uint8_t>(flag.type);
            context.enabled[flag.byte] =
                static_cast<std::uint8_t>(context.enabled[flag.byte] & ~flag.mask);
            if (kind.type == flag.type) {
                EXPECT_EQ(decodeStartOf(kind.type), disabledCode);
                EXPECT_EQ(bytesOf(message), untouched);
            }
            EXPECT_EQ(RTCM2_error_to_string(decodeStartOf(kind.type, kind.type != flag.type)),
                      station);
            EXPECT_EQ(message.kind, kind.kind);
            EXPECT_EQ(context.unknown_type, 0);
            RTCM2_free_message(&message);
        }
        --disabledCode;
    }
}

TEST_F(CodecEntry, TypeOfNoKindIsKept)
{
    for (int type = 0; type < 64; ++type) {
        if (std::none_of(mainKinds().begin(), mainKinds().end(),
                         [=](const MainKind& kind) { return kind.type == type; })) {
            context.unknown_type = 0xEE;
            EXPECT_EQ(decodeStartOf(type), RTCM2_ERR_INVALID_MESSAGE);
            EXPECT_EQ(context.unknown_type, type);
            EXPECT_EQ(message.header.Message_Type, type);
            EXPECT_EQ(decodeStartOf(type, false), RTCM2_ERR_INVALID_MESSAGE);
        }
    }
}

TEST_F(CodecEntry, BufferWithoutTypeChangesNothing)
{
    const auto before = bytesOf(message);
    context.unknown_type = 0x5A;
    for (const std::size_t size : {0U, 1U}) {
        EXPECT_EQ(decode(std::vector<std::uint8_t>(size, 0x66)), RTCM2_ERR_INVALID_MESSAGE);
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

TEST(CodecNames, ErrorsAndKindsHaveTheirNumbers)
{
    const std::pair<std::int32_t, const char*> errors[] = {
        {12, "RTCM2_ERR_NONE"},
        {0, "RTCM2_ERR_NONE"},
        {-1, "RTCM2_ERR_INVALID_CRC"},
        {-2, "RTCM2_ERR_TYPE_15_R_EXT_BUFFER_OVERFLOW"},
        {-57, "RTCM2_ERR_RTK_21_INTERNAL"},
        {-109, "RTCM2_ERR_OCDS_52_INTERNAL"},
        {-130, "RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW"},
        {-172, "RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_SERIAL_NUMBER_SIZE_UNDERFLOW"},
        {-222, "RTCM2_ERR_MESSAGE_TYPE_1_CORRECTIONS_SIZE_UNDERFLOW"},
        {-357, "RTCM2_ERR_MESSAGE_TYPE_46_PRN_BITMAP_EXT_BUFFER_OVERFLOW"},
        {-437, "RTCM2_ERR_MESSAGE_TYPE_52_INTERNAL"},
        {-463, "RTCM2_ERR_MESSAGE_TYPE_52_DISABLED"},
        {-465, "RTCM2_ERR_EOF"},
        {-466, "???"},
        {INT32_MIN, "???"}};
    for (const auto& [code, name] : errors) {
        EXPECT_STREQ(RTCM2_error_to_string(code), name) << code;
    }
    const std::pair<std::int32_t, const char*> kinds[] = {{0, "RTCM2_MESSAGE_NULL"},
                                                          {2, "RTCM2_DGNSS"},
                                                          {15, "RTCM2_OCDS_52"},
                                                          {16, "RTCM2_MESSAGE_TYPE_3"},
                                                          {23, "RTCM2_MESSAGE_TYPE_1"},
                                                          {41, "RTCM2_MESSAGE_TYPE_52"},
                                                          {42, "???"},
                                                          {-1, "???"},
                                                          {INT32_MAX, "???"}};
    for (const auto& [kind, name] : kinds) {
        EXPECT_STREQ(RTCM2_message_enum_to_string(kind), name) << kind;
    }
}

TEST(CodecNames, AreUnique)
{
    std::set<std::string> names;
    for (std::int32_t code = -466; code < 0; ++code) {
        names.insert(RTCM2_error_to_string(code));
    }
    for (std::int32_t kind = 0; kind <= 42; ++kind) {
        names.insert(RTCM2_message_enum_to_string(kind));
    }
    EXPECT_EQ(names.size(), 465U + 42 + 1) << "and ??? for those that there are not";
}

}    // namespace
