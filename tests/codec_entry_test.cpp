// The entry of the codec: context, choice of the kind, names.
#include "support/CodecKinds.h"

#include <cstddef>
#include <set>

namespace {

struct CodecEntry : testing::Test {
    CodecEntry() { fillWithPattern(); }

    void fillWithPattern()
    {
        RTCM2_init_context(&context);
        std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
    }

    std::int32_t decode(const Bytes& bytes, bool withContext = true)
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
    EXPECT_EQ(bytesOf(context), Bytes({0x00, 0x00, 0xFE, 0xFF, 0xFF, 0xC1, 0x00}));
}

// Flags as other programs set them: by their place.
TEST_F(CodecEntry, EachFlagDisablesItsKindAlone)
{
    std::int32_t disabledCode = -438;
    forEachMainKind([&](const RTCM2_kind_s& off) {
        forEachMainKind([&](const RTCM2_kind_s& kind) {
            fillWithPattern();
            Bytes untouched = bytesOf(message);
            untouched[offsetof(RTCM2_header_s, Message_Type)] = static_cast<std::uint8_t>(off.type);
            std::uint8_t& flags = context.enabled[(off.kind + 1) / 8];
            flags = static_cast<std::uint8_t>(flags & ~(0x80U >> off.kind % 8));
            if (&kind == &off) {
                EXPECT_EQ(decodeStartOf(kind.type), disabledCode);
                EXPECT_EQ(bytesOf(message), untouched);
            }
            EXPECT_EQ(RTCM2_error_to_string(decodeStartOf(kind.type, &kind != &off)),
                      errorOf(kind, "REFERENCE_STATION_ID_EXT_BUFFER_OVERFLOW"));
            EXPECT_EQ(message.kind, kind.kind);
            EXPECT_EQ(context.unknown_type, 0);
            RTCM2_free_message(&message);
        });
        --disabledCode;
    });
}

TEST_F(CodecEntry, TypeOfNoKindIsKept)
{
    for (int type = 0; type < 64; ++type) {
        if (RTCM2_kind_of_type(type) == nullptr) {
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
    const Bytes before = bytesOf(message);
    context.unknown_type = 0x5A;
    EXPECT_EQ(decode({}), RTCM2_ERR_INVALID_MESSAGE);
    EXPECT_EQ(decode({0x66}), RTCM2_ERR_INVALID_MESSAGE);
    EXPECT_EQ(context.unknown_type, 0x5A);
    EXPECT_EQ(bytesOf(message), before);
}

TEST(CodecNames, ErrorsAndKindsHaveTheirNumbers)
{
    const std::pair<std::int32_t, const char*> errors[] = {
        {12, "RTCM2_ERR_NONE"},
        {0, "RTCM2_ERR_NONE"},
        {-1, "RTCM2_ERR_INVALID_CRC"},
        {-2, "RTCM2_ERR_TYPE_15_R_EXT_BUFFER_OVERFLOW"},
        {-130, "RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW"},
        {-222, "RTCM2_ERR_MESSAGE_TYPE_1_CORRECTIONS_SIZE_UNDERFLOW"},
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
                                                          {16, "RTCM2_MESSAGE_TYPE_3"},
                                                          {41, "RTCM2_MESSAGE_TYPE_52"},
                                                          {42, "???"},
                                                          {-1, "???"},
                                                          {INT32_MAX, "???"}};
    for (const auto& [kind, name] : kinds) {
        EXPECT_STREQ(RTCM2_message_enum_to_string(kind), name) << kind;
    }
    std::set<std::string> names;
    for (std::int32_t code = -466; code < 0; ++code) {
        names.insert(RTCM2_error_to_string(code));
    }
    EXPECT_EQ(names.size(), 465U + 1) << "and ??? for those that there are not";
}

}    // namespace
