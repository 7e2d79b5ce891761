// Records built from arbitrary members, encoded into buffers of arbitrary size.
#include "fuzz.h"

using namespace fuzz;

namespace {

// Main kinds come last.
const RTCM2_kind_s& chooseKind(std::uint8_t choice)
{
    constexpr int first = RTCM2_MESSAGE_TYPE_3;
    return *RTCM2_kind(first + choice % (RTCM2_last_kind() - first + 1));
}

// Any bytes are a value of every member, but for the array, which belongs to the record.
void fillMembers(const RTCM2_kind_s& kind, void* record, Taker& input)
{
    for (std::uint32_t i = 0; i < kind.member_count; ++i) {
        const RTCM2_member_s& member = kind.members[i];
        if (member.role != RTCM2_ROLE_ARRAY) {
            const std::size_t count = member.role == RTCM2_ROLE_RUN ? member.limit : 1;
            input.fill(static_cast<char*>(record) + member.offset, count * member.size);
        }
    }
}

void appendElements(const RTCM2_member_s& array, RTCM2_message_s& message, Taker& input)
{
    // The count tells how many elements the array really has.
    std::memset(reinterpret_cast<char*>(&message) + array.length->offset, 0, array.length->size);
    for (unsigned left = input.byte(); left > 0; --left) {
        void* const element = RTCM2_append_element(&message);
        if (element == nullptr) {
            return;
        }
        fillMembers(*array.elements, element, input);
    }
}

void construct(Record& record, Taker& input)
{
    const RTCM2_kind_s& kind = chooseKind(input.byte());
    RTCM2_init_record(kind.kind, &record.message);
    fillMembers(kind, &record.message, input);
    if (kind.array != nullptr) {
        appendElements(*kind.array, record.message, input);
    }
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::size_t before = heapInUse();
    {
        Taker input({data, size});
        const std::size_t room = input.byte() * (input.byte() % 8 + 1U);
        Record record;
        construct(record, input);
        Bytes target;
        const std::int32_t bits = record.encode(room, 0x5A, target);
        promise(1, bits <= static_cast<std::int32_t>(room * 8), "more bits than there is room for");
        if (bits > 0) {
            promise(1, sameBitsFrom(static_cast<std::size_t>(bits), target, 0x5A),
                    "written behind the message");
            demandSameBits(record, bits, Bytes(target).data());
            demandSameBitsIfDecodable(target);
        }
    }
    promise(6, heapInUse() == before, "memory is not returned");
    return 0;
}
