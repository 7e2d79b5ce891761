// What the codec accepts, encoded and decoded again.
#include "fuzz.h"

#include <algorithm>

using namespace fuzz;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span bytes(data, std::min<std::size_t>(size, 65535));
    const std::size_t before = heapInUse();
    {
        Record first;
        const std::int32_t bits = first.decode(nullptr, bytes);
        if (bits < 0) {
            return 0;
        }
        demandSameBits(first, bits, data);

        Bytes encoded;
        first.encode((static_cast<std::size_t>(bits) + 7) / 8, 0, encoded);
        Record second;
        promise(4, second.decode(nullptr, encoded) == bits, "its own encoding is not accepted");
        demandSameBits(second, bits, data);

        encoded.resize(encoded.size() - 1);
        promise(1, first.encode(encoded.size(), 0, encoded) < 0, "fits into too few bytes");
    }
    promise(6, heapInUse() == before, "memory is not returned");
    return 0;
}
