// Eight bytes at once, the first one highest.
#pragma once

#include "quarn_platform.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace framing {

inline std::uint64_t bigEndian(std::uint64_t value)
{
    return std::endian::native == std::endian::little ? quarn::reversedBytes(value) : value;
}

inline std::uint64_t loadBig(const std::uint8_t* bytes)
{
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return bigEndian(value);
}

inline void storeBig(std::uint8_t* bytes, std::uint64_t value)
{
    value = bigEndian(value);
    std::memcpy(bytes, &value, sizeof value);
}

}    // namespace framing
