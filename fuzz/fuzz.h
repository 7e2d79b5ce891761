// What the fuzz targets share. Each of them gets arbitrary bytes in LLVMFuzzerTestOneInput, in a
// heap block of exactly their number, and demands promises of docs/security.md by number.
#pragma once

#include "RTCM2_format.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <vector>

#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define FUZZ_COUNTS_HEAP
#endif
#endif
#ifdef FUZZ_COUNTS_HEAP
#include <sanitizer/allocator_interface.h>
#endif

namespace fuzz {

using Bytes = std::vector<std::uint8_t>;

inline void promise(int number, bool kept, const char* what)
{
    if (!kept) {
        std::fprintf(stderr, "broken promise %d: %s\n", number, what);
        std::abort();
    }
}

// Bytes on the heap. Known only with AddressSanitizer, else always 0: what is demanded of it then
// holds trivially.
inline std::size_t heapInUse()
{
#ifdef FUZZ_COUNTS_HEAP
    return __sanitizer_get_current_allocated_bytes();
#else
    return 0;
#endif
}

// The bytes of an input, taken from its front. Zeros follow its end.
class Taker {
public:
    explicit Taker(std::span<const std::uint8_t> bytes) : left(bytes) {}

    std::uint8_t byte()
    {
        std::uint8_t value = 0;
        fill(&value, 1);
        return value;
    }

    void fill(void* target, std::size_t size)
    {
        const std::size_t count = size < left.size() ? size : left.size();
        std::memset(target, 0, size);
        std::memcpy(target, left.data(), count);
        left = left.subspan(count);
    }

    std::span<const std::uint8_t> rest() const { return left; }

private:
    std::span<const std::uint8_t> left;
};

// A record of any kind with the arrays it owns.
class Record {
public:
    Record()
    {
        std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
        message.kind = RTCM2_MESSAGE_NULL;
    }
    ~Record() { release(); }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    std::int32_t decode(RTCM2_context_s* context, std::span<const std::uint8_t> bytes)
    {
        release();
        const Bytes exact(bytes.begin(), bytes.end());
        return RTCM2_decode(context, exact.data(), static_cast<std::uint16_t>(exact.size()),
                            &message);
    }

    // Encodes into a block of exactly `size` bytes, all of which were `fill`.
    std::int32_t encode(std::size_t size, std::uint8_t fill, Bytes& target)
    {
        Bytes(size, fill).swap(target);
        std::uint32_t offset = 0;
        return RTCM2_encode_record(&message, target.data(), static_cast<std::uint16_t>(size),
                                   &offset);
    }

    void release()
    {
        RTCM2_free_message(&message);
        message.kind = RTCM2_MESSAGE_NULL;
    }

    RTCM2_message_s message;
};

// The bits of `bytes` from `bit` on are those of `other`.
inline bool sameBitsFrom(std::size_t bit, const Bytes& bytes, std::uint8_t other)
{
    for (std::size_t i = bit; i < bytes.size() * 8; ++i) {
        if (((bytes[i / 8] ^ other) >> (7 - i % 8) & 1) != 0) {
            return false;
        }
    }
    return true;
}

// The first `bits` bits are the same.
inline bool sameBits(std::size_t bits, const std::uint8_t* a, const std::uint8_t* b)
{
    const unsigned last = bits % 8;
    return std::memcmp(a, b, bits / 8) == 0 &&
           (last == 0 || ((a[bits / 8] ^ b[bits / 8]) >> (8 - last)) == 0);
}

// What was decoded encodes to the bits it came from, whatever stood there before, and to no other.
inline void demandSameBits(Record& record, std::int32_t result, const std::uint8_t* bytes)
{
    const auto bits = static_cast<std::size_t>(result);
    Bytes target;
    for (const std::uint8_t fill : {std::uint8_t{0x00}, std::uint8_t{0xFF}}) {
        promise(4, record.encode((bits + 7) / 8, fill, target) == result, "accepted, not encoded");
        promise(4, sameBits(bits, bytes, target.data()), "other bits than those accepted");
        promise(1, sameBitsFrom(bits, target, fill), "written behind the message");
    }
}

// What was encoded decodes to what encodes to the same bits, unless decoding rejects it.
inline void demandSameBitsIfDecodable(std::span<const std::uint8_t> encoded)
{
    Record record;
    const std::int32_t bits = record.decode(nullptr, encoded);
    if (bits > 0) {
        demandSameBits(record, bits, encoded.data());
    }
}

// A message that is always good: type 1, one correction.
inline constexpr std::uint8_t goodMessage[] = {0x66, 0x04, 0x05, 0x8C, 0xA3, 0x10,
                                               0x2C, 0xFF, 0x9C, 0x05, 0x2A, 0x00};
inline constexpr std::int32_t goodBits = 88;

}    // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
