// The limits of records: counts, lengths from outside, texts without room, arrays that grow, and
// the end of the heap. The linker puts the two functions below in the place of malloc and realloc.
#include "quarn_bits.h"
#include "support/CodecKinds.h"

#include <cstdlib>

namespace {

bool heapIsEmpty = false;
unsigned refused = 0;

}    // namespace

// The linker gives these names.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_malloc(std::size_t size)
{
    return heapIsEmpty ? (++refused, nullptr) : __real_malloc(size);
}
void* __wrap_realloc(void* block, std::size_t size);
void* __wrap_realloc(void* block, std::size_t size)
{
    return heapIsEmpty ? (++refused, nullptr) : __real_realloc(block, size);
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace {

std::string textOf(const RTCM2_char* characters)
{
    return reinterpret_cast<const char*>(characters);
}

// Computed in the width that stores them: too few words give many.
TEST(CodecRecords, CountsOfElementsFollowFromTheWords)
{
    const struct {
        int type;
        unsigned words;
        double count;
    } wrapped[] = {{15, 0, 0},  {19, 30, 15}, {38, 1, 1008}, {39, 1, 84},   {40, 0, 125},
                   {46, 0, 50}, {47, 1, 35},  {49, 0, 3119}, {51, 1, 4095}, {52, 2, 0}};
    forEachMainKind([&](const RTCM2_kind_s& kind) {
        for (unsigned words = 0; words < 32 && kind.array != nullptr; ++words) {
            TestMessage message(kind);
            double count = -1;
            message.decode(packedMessage(kind.type, words, 6));
            RTCM2_derive(&message.message, kind.array->length, &count);
            EXPECT_EQ(message.get(kind.array->length->name), count) << words << " words";
            EXPECT_NE(message.array(), nullptr);
            for (const auto& [type, of, expected] : wrapped) {
                EXPECT_TRUE(type != kind.type || of != words || count == expected) << count;
            }
        }
    });
}

TEST(CodecRecords, DecodingEndsWhereBufferRoomOrDeclaredLengthDo)
{
    struct Case {
        int type;
        unsigned words;
        std::size_t size;
        std::int32_t result;
        unsigned bits;
        std::uint32_t declared = 0;
        bool hasParent = false;
    };
    const Case cases[] = {
        {38, 1, 9, RTCM2_ERR_MESSAGE_TYPE_38_SLOT_BITMAP_EXT_BUFFER_OVERFLOW, 56},
        // Two elements and seven bits of the third.
        {38, 1, 28, RTCM2_ERR_JPL_48_DELTA_X_EXT_BUFFER_OVERFLOW, 80 + 2 * 65 + 7},
        // Two elements, each at a byte; and enough bytes for all of them.
        {40, 1, 17, RTCM2_ERR_OCDS_40_WL_BIAS_EXT_BUFFER_OVERFLOW, 96 + 2 * 16},
        {40, 1, 300, 96 + 126 * 16, 96 + 126 * 16},
        {16, 30, 95, RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_EXT_BUFFER_OVERFLOW, 760},
        {16, 31, 99, RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW, 768},
        {16, 31, 96, RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW, 768},
        {59, 31, 99, 48 + 93 * 8, 48 + 93 * 8},
        // With a parent, the declared length of a wide-area message ends before its elements.
        {44, 5, 24, 168, 168, 0, true},
        {44, 5, 24, 168, 168, 48, true},
        {44, 5, 24, 192, 168, 72, true},
        {44, 5, 24, RTCM2_ERR_MESSAGE_TYPE_44_CORRECTIONS_SIZE_UNDERFLOW, 48, 47, true},
        {44, 5, 24, RTCM2_ERR_MESSAGE_TYPE_44_CORRECTIONS_SIZE_UNDERFLOW, 168, 72},
        {44, 5, 24, 192, 168, 192},
    };
    for (const auto& [type, words, size, result, bits, declared, hasParent] : cases) {
        SCOPED_TRACE(::testing::Message()
                     << "type " << type << " bytes " << size << " declared " << declared);
        TestMessage message(type);
        std::uint32_t offset = 0;
        EXPECT_EQ(message.decodeAt(offset, packedMessage(type, words, size), declared,
                                   hasParent ? &offset : nullptr),
                  result);
        EXPECT_EQ(message.message.header.bit_count, bits);
    }
}

TEST(CodecRecords, EndOfATextIsMarked)
{
    TestMessage special(16);
    EXPECT_EQ(special.decode(packedMessage(16, 30, 96)), 768);
    EXPECT_EQ(textOf(special.message.Message_Type_16.Message), std::string(90, '\xA5'));
    EXPECT_EQ(special.message.Message_Type_16.Message[89], 0xA5 - 256) << "whatever char is";
    // Both texts at their longest, the flag set.
    TestMessage antenna(23);
    const RTCM2_Message_Type_23_s& record = antenna.message.Message_Type_23;
    Bytes bytes = packedMessage(23, 23, 7 + 31 + 2 + 31);
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
    EXPECT_EQ(textOf(record.Antenna_Descriptor) + textOf(record.Antenna_Serial_Number), "");
}

TEST(CodecRecords, TextsAndBytesAreCutAtTheirRoom)
{
    RTCM2_message_s special{}, antenna{}, proprietary{};
    RTCM2_Message_Type_23_s& texts = antenna.Message_Type_23;
    const std::string letters(100, 'x');
    for (const std::string& text : {letters, std::string("ab\xE4"), std::string()}) {
        EXPECT_EQ(RTCM2_strcpy_Message_Type_16_Message(&special.Message_Type_16, text.c_str()), 0);
        EXPECT_EQ(textOf(special.Message_Type_16.Message), text.substr(0, 90));
        EXPECT_EQ(special.Message_Type_16.Message_Length, text.substr(0, 90).size());
    }
    RTCM2_strcpy_Message_Type_23_Antenna_Descriptor(&texts, letters.c_str());
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&texts, letters.c_str());
    EXPECT_EQ(texts.NAD + texts.NAS, 31 + 31);
    EXPECT_EQ(textOf(texts.Antenna_Descriptor), letters.substr(0, 31));
    EXPECT_EQ(textOf(texts.Antenna_Serial_Number), letters.substr(0, 31));
    RTCM2_Message_Type_59_s& bytes = proprietary.Message_Type_59;
    for (const unsigned count : {200U, 2U}) {
        ExactBuffer block(count, static_cast<std::uint8_t>(count));
        EXPECT_EQ(RTCM2_memcpy_Message_Type_59_Data(&bytes, block.data(), count), 0);
        EXPECT_EQ(bytes.Data[1], count);
        EXPECT_EQ(bytes.Data[2] & bytes.Data[92], 200);
    }
}

// Counts that a caller stored and that the record has no room for.
TEST(CodecRecords, EncodingStopsAtTheRoomOfATextOrOfBytes)
{
    const struct {
        int type;
        const char* count;
        int value;
        std::int32_t result;
    } cases[] = {
        {16, "Message_Length", 91, RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW},
        {23, "NAD", 32, RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_DESCRIPTOR_INT_BUFFER_OVERFLOW},
        {23, "NAS", 255, RTCM2_ERR_MESSAGE_TYPE_23_ANTENNA_SERIAL_NUMBER_INT_BUFFER_OVERFLOW},
        {59, "Data_Length", 94, RTCM2_ERR_MESSAGE_TYPE_59_DATA_INT_BUFFER_OVERFLOW}};
    for (const auto& [type, count, value, result] : cases) {
        TestMessage message(type);
        if (type == 23) {
            message.put("Serial_Flag", 1);
        }
        message.put(count, value);
        ExactBuffer target(120);
        std::uint32_t offset = 0;
        EXPECT_EQ(message.encodeInto(target, offset), result);
        EXPECT_EQ(message.message.header.bit_count, offset);
    }
}

TEST(CodecRecords, InitWritesFirstValuesAndLeavesTheRest)
{
    for (const RTCM2_kind_s& kind : rtcm2::kindRows) {
        SCOPED_TRACE(kind.name);
        const TestMessage initialised(kind);
        EXPECT_EQ(rtcm2::headOf(&initialised.message).parent, nullptr);
        for (const RTCM2_member_s& member : rtcm2::membersOf(kind)) {
            const char* const place = rtcm2::placeOf(&initialised.message, member);
            if (member.role == RTCM2_ROLE_ARRAY) {
                EXPECT_EQ(rtcm2::valueAt<char*>(place), nullptr);
            } else if (member.type == RTCM2_TYPE_REAL) {
                EXPECT_EQ(rtcm2::valueAt<double>(place), 0.0);
            } else if (member.role == RTCM2_ROLE_RUN) {
                const char end = member.type == RTCM2_TYPE_CHARACTER ? '\0' : 0x2A;
                EXPECT_EQ(place[0], end) << member.name;
                EXPECT_EQ(place[member.limit - (end ? 1 : 0)], end) << member.name;
                EXPECT_EQ(place[1] & place[member.limit - 1], 0x2A) << member.name;
            } else {
                const auto pattern = static_cast<std::int64_t>(0x2A2A2A2A2A2A2A2A &
                                                               quarn::lowMask(8U * member.size));
                EXPECT_EQ(rtcm2::integerAt(place, member),
                          member.has_initial ? member.initial : pattern)
                    << member.name;
            }
        }
    }
    EXPECT_EQ(TestMessage(18).get("Preamble") + TestMessage(18).get("Message_Type"), 0x66 + 18);
}

TEST(CodecArrays, GrowToTheLargestCountNoFurtherAndEndEmpty)
{
    forEachMainKind([](const RTCM2_kind_s& kind) {
        if (kind.array == nullptr) {
            return;
        }
        TestMessage message(kind);
        const char* const counter = kind.array->length->name;
        const unsigned most = kind.array->length->size == 1 ? 255 : 65535;
        EXPECT_EQ(message.array(), nullptr);
        for (const unsigned count : {0U, 1U, 2U, most - 1}) {
            message.put(counter, count);
            const auto* element = static_cast<char*>(RTCM2_append_element(&message.message));
            ASSERT_NE(element, nullptr);
            EXPECT_EQ(element, message.array() + std::size_t{count} * kind.array->elements->size);
            EXPECT_EQ(message.get(counter), count + 1);
            const rtcm2::RecordHead head = rtcm2::headOf(element);
            EXPECT_EQ(head.kind, kind.array->elements->kind);
            EXPECT_EQ(head.bit_count, 0U);
            EXPECT_EQ(head.parent, &message.message);
        }
        const Bytes full = bytesOf(message.message);
        EXPECT_EQ(RTCM2_append_element(&message.message), nullptr);
        EXPECT_EQ(bytesOf(message.message), full);
        // Released, twice, and then told to have elements.
        RTCM2_free_message(&message.message);
        RTCM2_free_message(&message.message);
        EXPECT_EQ(RTCM2_count(&message.message, kind.array), 0U);
        message.put(counter, 2);
        EXPECT_EQ(RTCM2_element(&message.message, kind.array, 0), nullptr);
        ExactBuffer target(100);
        std::uint32_t offset = 0;
        EXPECT_EQ(RTCM2_error_to_string(message.encodeInto(target, offset)),
                  errorOf(kind, "INTERNAL"));
    });
}

// Decodes with an empty heap.
std::string decodeWithoutMemory(TestMessage& message, const Bytes& bytes)
{
    refused = 0;
    message.reset();
    heapIsEmpty = true;
    const std::int32_t result = RTCM2_decode(
        nullptr, bytes.data(), static_cast<std::uint16_t>(bytes.size()), &message.message);
    heapIsEmpty = false;
    if (message.kind.array != nullptr) {
        EXPECT_EQ(message.array(), nullptr);
        EXPECT_EQ(message.get(message.kind.array->length->name), 0);
    }
    return RTCM2_error_to_string(result);
}

TEST(CodecMemory, ArrayThatCannotBeAllocatedIsTheKindsInternalError)
{
    forEachMainKind([](const RTCM2_kind_s& kind) {
        const bool needsMemory = kind.array != nullptr;
        TestMessage message(kind);
        EXPECT_EQ(decodeWithoutMemory(message, packedMessage(kind.type, 7, 27, 0)),
                  needsMemory ? errorOf(kind, "INTERNAL") : "RTCM2_ERR_NONE");
        EXPECT_EQ(refused, needsMemory ? 1U : 0U);
    });
    // An earlier error outweighs it; an empty array needs none.
    TestMessage cut(38), empty(1);
    EXPECT_EQ(decodeWithoutMemory(cut, packedMessage(38, 1, 9)),
              "RTCM2_ERR_MESSAGE_TYPE_38_SLOT_BITMAP_EXT_BUFFER_OVERFLOW");
    EXPECT_EQ(decodeWithoutMemory(empty, packedMessage(1, 1, 9)), "RTCM2_ERR_NONE");
}

TEST(CodecMemory, AppendThatCannotGrowChangesNothing)
{
    TestMessage record(51);
    auto* const message = &record.message.Message_Type_51;
    for (unsigned count = 0; count < 3; ++count) {
        const Bytes before = bytesOf(record.message);
        heapIsEmpty = true;
        EXPECT_EQ(RTCM2_append_Message_Type_51_Corrections(message), nullptr);
        heapIsEmpty = false;
        EXPECT_EQ(bytesOf(record.message), before);
        RTCM2_append_Message_Type_51_Corrections(message);
        EXPECT_EQ(message->Ns, count + 1);
    }
}

}    // namespace
