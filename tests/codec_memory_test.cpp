// The codec when the heap is at its end. The linker puts the two functions below in the place of
// malloc and realloc.
#include "support/CodecKinds.h"

#include <gtest/gtest.h>

#include <cstdlib>

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
std::int32_t decodeWithoutMemory(TestMessage& message, const std::vector<std::uint8_t>& bytes)
{
    refused = 0;
    heapIsEmpty = true;
    const std::int32_t result = message.decode(bytes);
    heapIsEmpty = false;
    return result;
}

TEST(CodecMemory, ArrayThatCannotBeAllocatedIsTheKindsInternalError)
{
    for (const MainKind& kind : mainKinds()) {
        SCOPED_TRACE(kind.type);
        TestMessage message(kind);
        const std::int32_t result =
            decodeWithoutMemory(message, packedMessage(kind.type, 7, 27, 0));
        EXPECT_EQ(refused, kind.array() ? 1U : 0U);
        EXPECT_EQ(RTCM2_error_to_string(result),
                  kind.array() ? "RTCM2_ERR_" + kind.name() + "_INTERNAL" : "RTCM2_ERR_NONE");
        EXPECT_EQ(message.array(), nullptr);
        EXPECT_EQ(message.count(), 0U);
    }
}

TEST(CodecMemory, EarlierErrorOutweighsTheLackOfMemory)
{
    TestMessage message(mainKind(38));
    EXPECT_EQ(decodeWithoutMemory(message, packedMessage(38, 1, 9)),
              RTCM2_ERR_MESSAGE_TYPE_38_SLOT_BITMAP_EXT_BUFFER_OVERFLOW);
    EXPECT_EQ(message.count(), 0U);
}

TEST(CodecMemory, EmptyArrayNeedsNone)
{
    TestMessage message(mainKind(1));
    EXPECT_EQ(decodeWithoutMemory(message, packedMessage(1, 1, 9)), 48);
}

TEST(CodecMemory, AppendThatCannotGrowChangesNothing)
{
    TestMessage record(mainKind(51));
    for (unsigned count = 0; count < 3; ++count) {
        const auto before = bytesOf(record.message);
        heapIsEmpty = true;
        EXPECT_EQ(RTCM2_append_Message_Type_51_Corrections(&record.message.Message_Type_51),
                  nullptr);
        heapIsEmpty = false;
        EXPECT_EQ(bytesOf(record.message), before);
        RTCM2_append_Message_Type_51_Corrections(&record.message.Message_Type_51);
        EXPECT_EQ(record.count(), count + 1);
    }
}

}    // namespace
