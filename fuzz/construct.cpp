// Records built from arbitrary members, encoded into buffers of arbitrary size.
#include "fuzz.h"

using namespace fuzz;

namespace {

using rtcm2::KindRow;
using rtcm2::MemberRole;
using rtcm2::MemberRow;

// Main kinds come last.
const KindRow& chooseKind(std::uint8_t choice)
{
    constexpr std::size_t first = RTCM2_MESSAGE_TYPE_3;
    const auto mainKinds = rtcm2::kindRows().subspan(first);
    return mainKinds[choice % mainKinds.size()];
}

// Any bytes are a value of every member, but for the array, which belongs to the record.
void fillMembers(const KindRow& kind, void* record, Taker& input)
{
    for (const MemberRow& member : kind.members) {
        if (member.role != MemberRole::records) {
            const std::size_t count = member.role == MemberRole::run ? member.limit : 1;
            input.fill(static_cast<char*>(record) + member.offset, count * member.size);
        }
    }
}

const MemberRow* arrayOf(const KindRow& kind)
{
    for (const MemberRow& member : kind.members) {
        if (member.role == MemberRole::records) {
            return &member;
        }
    }
    return nullptr;
}

void appendElements(const KindRow& kind, const MemberRow& array, RTCM2_message_s& message,
                    Taker& input)
{
    // The count tells how many elements the array really has.
    const MemberRow& count = kind.members[static_cast<std::size_t>(array.length)];
    std::memset(reinterpret_cast<char*>(&message) + count.offset, 0, count.size);
    const KindRow& elementKind = rtcm2::kindRows()[static_cast<std::size_t>(array.element)];
    for (unsigned left = input.byte(); left > 0; --left) {
        void* const element = kind.append(&message);
        if (element == nullptr) {
            return;
        }
        fillMembers(elementKind, element, input);
    }
}

void construct(Record& record, Taker& input)
{
    const KindRow& kind = chooseKind(input.byte());
    kind.init(&record.message);
    fillMembers(kind, &record.message, input);
    if (const MemberRow* const array = arrayOf(kind)) {
        appendElements(kind, *array, record.message, input);
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
