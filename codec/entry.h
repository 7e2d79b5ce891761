// The way from RTCM2_decode to the decoder of a kind. Which kinds there are is rendered.
#pragma once

#include "codec_support.h"

#include <array>
#include <cstdint>

namespace rtcm2 {

// Takes what RTCM2_decode takes, which goes on there once it has seen the type.
using Decoder = std::int32_t (*)(RTCM2_context_s* context, const std::uint8_t* data,
                                 std::uint16_t size, RTCM2_message_s* message);

inline std::uint8_t typeOf(const std::uint8_t* data)
{
    return quarn::read<std::uint8_t, 8, 6>(data);
}

// Decodes a message from its first bit, of no parent and no declared length; the kind's decoder is
// made anew for that.
template <auto decodeKind, auto member, RTCM2_message_enum kind, std::int32_t disabledError>
QUARN_FLATTEN std::int32_t decodeKnown(RTCM2_context_s* context,
                                       const std::uint8_t* QUARN_RESTRICT data, std::uint16_t size,
                                       RTCM2_message_s* message)
{
    if (context != nullptr && !EnableFlag(kind).test(*context)) {
        message->header.Message_Type = typeOf(data);
        return disabledError;
    }
    std::uint32_t offset = 0;
    return decodeKind(&(message->*member), &offset, data, size, nullptr, 0);
}

// By the value of the field Message Type; null where there is no kind.
extern const std::array<Decoder, 64> decoders;

}    // namespace rtcm2
