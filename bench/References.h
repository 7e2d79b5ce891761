// Decoders, encoders and a framer to measure against, for the kinds that the benchmarks use. They
// fill the same records with the same allocations as the codec.
#pragma once

#include "RTCM2.h"

#include <cstdint>
#include <span>
#include <vector>

namespace bench {

using Bytes = std::span<const std::uint8_t>;

// What a careful programmer writes for one kind and one platform: one test of the length, then
// whole-byte loads at constant positions. Returns the number of bits, or a negative number.
namespace straight_line {

std::int32_t decode(Bytes packed, RTCM2_Message_Type_1_s& record);
std::int32_t decode(Bytes packed, RTCM2_Message_Type_16_s& record);
std::int32_t decode(Bytes packed, RTCM2_Message_Type_18_s& record);
std::int32_t decode(Bytes packed, RTCM2_Message_Type_24_s& record);

}    // namespace straight_line

// What the definition of the format says, one bit after the other.
namespace bit_by_bit {

std::int32_t decode(Bytes packed, RTCM2_Message_Type_1_s& record);
std::int32_t decode(Bytes packed, RTCM2_Message_Type_16_s& record);
std::int32_t decode(Bytes packed, RTCM2_Message_Type_18_s& record);
std::int32_t decode(Bytes packed, RTCM2_Message_Type_24_s& record);

std::int32_t encode(std::span<std::uint8_t> packed, const RTCM2_Message_Type_1_s& record);
std::int32_t encode(std::span<std::uint8_t> packed, const RTCM2_Message_Type_16_s& record);
std::int32_t encode(std::span<std::uint8_t> packed, const RTCM2_Message_Type_18_s& record);
std::int32_t encode(std::span<std::uint8_t> packed, const RTCM2_Message_Type_24_s& record);

// Finds the messages of an undamaged stream.
class Framer {
public:
    // Calls found(packed bytes) for every message that is complete with these bytes.
    template <class Found>
    void push(Bytes stream, Found&& found)
    {
        for (const std::uint8_t byte : stream) {
            if ((byte & 0xC0) != 0x40) {
                continue;
            }
            for (unsigned bit = 0; bit < 6; ++bit) {
                if (pushBit((byte >> bit & 1) != 0)) {
                    found(Bytes(message_));
                }
            }
        }
    }

private:
    bool pushBit(bool bit);
    bool goodParity() const;

    std::vector<std::uint8_t> message_;
    std::uint32_t received_ = 0;    // the last two bits of the word before, then 30 bits
    unsigned bitsOfWord_ = 0;
    bool inMessage_ = false;
};

}    // namespace bit_by_bit

}    // namespace bench
