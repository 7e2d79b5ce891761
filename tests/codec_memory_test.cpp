// The codec when the heap is at its end. The linker puts the two functions below in the place of
// malloc and realloc.
#include "RTCM2.h"

#include "support/CodecKinds.h"
#include "support/ExactBuffer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

namespace {

bool heapIsEmpty = false;
unsigned refused = 0;

bool refuses()
{
    refused += heapIsEmpty ? 1 : 0;
    return heapIsEmpty;
}

}    // namespace

// The linker gives these names.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size)
{
    return refuses() ? nullptr : __real_malloc(size);
}

void* __wrap_realloc(void* block, std::size_t size)
{
    return refuses() ? nullptr : __real_realloc(block, size);
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace {

// Decodes with an empty heap.
std::int32_t decodeWithoutMemory(RTCM2_message_s& message, const std::vector<std::uint8_t>& bytes)
{
    ExactBuffer buffer(bytes);
    refused = 0;
    heapIsEmpty = true;
    const std::int32_t result = RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message);
    heapIsEmpty = false;
    return result;
}

std::vector<std::uint8_t> packed(int type, unsigned words, std::size_t size)
{
    std::vector<std::uint8_t> bytes(size);
    bytes[0] = 0x66;
    bytes[1] = static_cast<std::uint8_t>(type << 2);
    bytes[5] = static_cast<std::uint8_t>(words << 3);
    return bytes;
}

TEST(CodecMemory, ArrayThatCannotBeAllocatedIsTheKindsInternalError)
{
    for (const MainKind& kind : mainKinds()) {
        SCOPED_TRACE(kind.type);
        TestMessage message(kind);
        const std::int32_t result = decodeWithoutMemory(message.message, packed(kind.type, 7, 27));
        if (refused == 0) {
            EXPECT_GT(result, 0) << "a kind without an array";
            continue;
        }
        EXPECT_EQ(RTCM2_error_to_string(result), "RTCM2_ERR_" + kind.name() + "_INTERNAL");
        EXPECT_EQ(kind.array(message.message), nullptr);
        EXPECT_EQ(kind.count(message.message), 0U);
    }
}

TEST(CodecMemory, EarlierErrorOutweighsTheLackOfMemory)
{
    const MainKind& kind = mainKind(38);
    TestMessage message(kind);
    EXPECT_EQ(decodeWithoutMemory(message.message, packed(38, 1, 9)),
              RTCM2_ERR_MESSAGE_TYPE_38_SLOT_BITMAP_EXT_BUFFER_OVERFLOW);
    EXPECT_EQ(refused, 1U);
    EXPECT_EQ(kind.array(message.message), nullptr);
    EXPECT_EQ(kind.count(message.message), 0U);
}

TEST(CodecMemory, EmptyArrayNeedsNone)
{
    TestMessage message(mainKind(1));
    EXPECT_EQ(decodeWithoutMemory(message.message, packed(1, 1, 9)), 48);
}

TEST(CodecMemory, EncodingNeedsNone)
{
    for (const MainKind& kind : mainKinds()) {
        SCOPED_TRACE(kind.type);
        ExactBuffer buffer(packed(kind.type, 7, 27));
        TestMessage message(kind);
        const std::int32_t bits =
            RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message.message);
        ASSERT_GT(bits, 0);
        ExactBuffer target(27);
        refused = 0;
        heapIsEmpty = true;
        EXPECT_EQ(kind.encodeMessage(message.message, target.data(), target.size()), bits);
        heapIsEmpty = false;
        EXPECT_EQ(refused, 0U);
    }
}

TEST(CodecMemory, AppendThatCannotGrowChangesNothing)
{
    RTCM2_Message_Type_51_s record;
    std::memset(static_cast<void*>(&record), 0x2A, sizeof record);
    RTCM2_init_Message_Type_51(&record);
    for (unsigned count = 0; count < 3; ++count) {
        const auto before = bytesOf(record);
        refused = 0;
        heapIsEmpty = true;
        EXPECT_EQ(RTCM2_append_Message_Type_51_Corrections(&record), nullptr);
        heapIsEmpty = false;
        EXPECT_EQ(refused, 1U);
        EXPECT_EQ(bytesOf(record), before);
        ASSERT_NE(RTCM2_append_Message_Type_51_Corrections(&record), nullptr);
    }
    EXPECT_EQ(record.Ns, 3);
    RTCM2_free_Message_Type_51_children(&record);
}

}    // namespace
