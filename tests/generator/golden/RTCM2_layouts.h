// Rendered by generator/render.py from schema through RTCM2_layouts.h.j2. Do not edit.
//
// The decoders and encoders of the single kinds, internal to the codec. Each starts at bit *offset
// of data, data_size bytes long, and leaves *offset after what it consumed or wrote.
//
// A decoder stores parent in the record. declared_length is the record's length in bits as told from
// outside, 0 for none: when it is less than what was consumed, the result is the kind's
// _SIZE_UNDERFLOW code; when it is more, the rest is skipped and counted in the result.
#pragma once

#include "RTCM2.h"

#include <cstdint>

namespace rtcm2::layouts {

std::int32_t decode_Buoy(RTCM2_Buoy_s* record, std::uint32_t* offset, const std::uint8_t* data,
    std::uint16_t data_size, void* parent, std::uint32_t declared_length);
std::int32_t encode_Buoy(RTCM2_Buoy_s* record, std::uint8_t* data, std::uint16_t data_size,
    std::uint32_t* offset);

std::int32_t decode_Harbour(RTCM2_Harbour_s* record, std::uint32_t* offset, const std::uint8_t* data,
    std::uint16_t data_size, void* parent, std::uint32_t declared_length);
std::int32_t encode_Harbour(RTCM2_Harbour_s* record, std::uint8_t* data, std::uint16_t data_size,
    std::uint32_t* offset);

std::int32_t decode_Tide(RTCM2_Tide_s* record, std::uint32_t* offset, const std::uint8_t* data,
    std::uint16_t data_size, void* parent, std::uint32_t declared_length);
std::int32_t encode_Tide(RTCM2_Tide_s* record, std::uint8_t* data, std::uint16_t data_size,
    std::uint32_t* offset);

}    // namespace rtcm2::layouts
