// The codec's decoder on arbitrary bytes; what it accepts is encoded and decoded again.
#include "fuzz.h"

#include <algorithm>

using namespace fuzz;

namespace {

// The longest array has 4095 elements, those of type 51; none is longer in bytes.
constexpr std::size_t mostHeap = 4095 * sizeof(RTCM2_OCDS_51_s);

RTCM2_context_s* context()
{
    static RTCM2_context_s made = [] {
        RTCM2_context_s fresh;
        RTCM2_init_context(&fresh);
        return fresh;
    }();
    return &made;
}

void demandGoodMessage()
{
    Record record;
    promise(3, record.decode(context(), goodMessage) == goodBits, "a good message is rejected");
    const RTCM2_Message_Type_1_s& message = record.message.Message_Type_1;
    promise(3, message.Ns == 1 && message.Corrections[0].PRC == -100, "it is decoded wrongly");
}

void demandRoundTrip(Record& first, std::int32_t bits, const std::uint8_t* data)
{
    demandSameBits(first, bits, data);
    Bytes encoded;
    first.encode((static_cast<std::size_t>(bits) + 7) / 8, 0, encoded);
    Record second;
    promise(4, second.decode(nullptr, encoded) == bits, "its own encoding is not accepted");
    demandSameBits(second, bits, data);
    promise(1, first.encode(encoded.size() - 1, 0, encoded) < 0, "fits into too few bytes");
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span bytes(data, std::min<std::size_t>(size, 65535));
    const std::size_t before = heapInUse();
    {
        Record record;
        const std::int32_t result = RTCM2_decode(
            context(), bytes.data(), static_cast<std::uint16_t>(bytes.size()), &record.message);
        promise(1, result <= static_cast<std::int32_t>(bytes.size() * 8), "more bits than given");
        promise(2, heapInUse() - before <= mostHeap, "more memory than any message needs");
        promise(3, result != 0 && std::strcmp(RTCM2_error_to_string(result), "???") != 0,
                "neither bits nor an error code");
        if (result > 0) {
            demandRoundTrip(record, result, data);
        }
    }
    promise(6, heapInUse() == before, "memory is not returned");
    demandGoodMessage();
    return 0;
}
