// The inlined form of quarn, for code that has made its bounds tests: no assertion, and loads that
// touch exactly the bytes in which the field lies.
#pragma once

#include "quarn_platform.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace quarn {

// The low `width` bits set; width 0 to 64.
constexpr std::uint64_t lowMask(unsigned width)
{
    return width >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << width) - 1;
}

// A field's bits as a value of its storage type: sign-extended for signed types.
template <class T>
constexpr T fromBits(std::uint64_t bits, unsigned width)
{
    if (std::is_signed_v<T> && width > 0) {
        // Up to the sign and back: without a branch, which could not be predicted.
        const unsigned unused = 64 - width;
        return static_cast<T>(static_cast<std::int64_t>(bits << unused) >> unused);
    }
    return static_cast<T>(bits);
}

// The `width` bits (0 to 64) that start at bit `offset` of data.
inline std::uint64_t readBits(const std::uint8_t* data, std::uint32_t offset, unsigned width)
{
    if (width == 0) {
        return 0;
    }
    const std::uint8_t* byte = data + offset / 8;
    const unsigned firstBits = 8 - offset % 8;
    std::uint64_t value = *byte & lowMask(firstBits);
    if (width <= firstBits) {
        return value >> (firstBits - width);
    }
    unsigned missing = width - firstBits;
    for (; missing >= 8; missing -= 8) {
        value = value << 8 | *++byte;
    }
    if (missing > 0) {
        value = value << missing | static_cast<std::uint64_t>(*++byte >> (8 - missing));
    }
    return value;
}

// Replaces the bits of `byte` under `mask`.
inline void replaceBits(std::uint8_t& byte, unsigned mask, unsigned bits)
{
    byte = static_cast<std::uint8_t>((byte & ~mask) | (bits & mask));
}

// Writes the low `width` bits (0 to 64) of value at bit `offset` of data and no other bit.
inline void writeBits(std::uint8_t* data, std::uint32_t offset, unsigned width, std::uint64_t value)
{
    std::uint8_t* byte = data + offset / 8;
    unsigned room = 8 - offset % 8;
    while (width >= room) {
        width -= room;
        replaceBits(*byte++, static_cast<unsigned>(lowMask(room)),
                    static_cast<unsigned>(value >> width & lowMask(room)));
        room = 8;
    }
    if (width > 0) {
        const unsigned below = room - width;
        replaceBits(*byte, static_cast<unsigned>(lowMask(width) << below),
                    static_cast<unsigned>((value & lowMask(width)) << below));
    }
}

// A number of the bytes at data, the first the highest.
template <class Word>
inline std::uint64_t loadWord(const std::uint8_t* data)
{
    Word word;
    std::memcpy(&word, data, sizeof word);
    return std::endian::native == std::endian::big ? word : reversedBytes(word);
}

// `Bytes` (1 to 8) bytes as a number, the first the highest.
template <unsigned Bytes>
inline std::uint64_t load(const std::uint8_t* data)
{
    static_assert(Bytes >= 1 && Bytes <= 8);
    if constexpr (Bytes == 8) {
        return loadWord<std::uint64_t>(data);
    } else if constexpr (Bytes > 4) {
        return loadWord<std::uint32_t>(data) << 8 * (Bytes - 4) | load<Bytes - 4>(data + 4);
    } else if constexpr (Bytes == 4) {
        return loadWord<std::uint32_t>(data);
    } else if constexpr (Bytes > 2) {
        return loadWord<std::uint16_t>(data) << 8 | data[2];
    } else if constexpr (Bytes == 2) {
        return loadWord<std::uint16_t>(data);
    } else {
        return *data;
    }
}

// Constant position and width: `Offset` bits after the first bit of data. Only the first `Loadable`
// bytes of data are touched: where they allow it by one load, even of more than the field.
template <class T, unsigned Offset, unsigned Width, unsigned Loadable = (Offset + Width + 7) / 8>
inline T read(const std::uint8_t* data)
{
    static_assert(Width >= 1 && Width <= 64);
    constexpr unsigned first = Offset / 8;
    constexpr unsigned end = (Offset + Width + 7) / 8;
    static_assert(end - first <= 8, "the field spans more bytes than a 64-bit word has");
    static_assert(end <= Loadable);
    constexpr unsigned loaded = std::bit_ceil(end - first);
    constexpr unsigned from = std::min(first, Loadable - std::min(Loadable, loaded));
    constexpr unsigned to = std::max(end, std::min(Loadable, from + loaded));
    constexpr unsigned below = 8 * to - Offset - Width;
    return fromBits<T>(load<to - from>(data + from) >> below & lowMask(Width), Width);
}

template <unsigned Offset, unsigned Width, class T>
inline void write(std::uint8_t* data, T value)
{
    static_assert(Width >= 1 && Width <= 64);
    constexpr unsigned first = Offset / 8;
    constexpr unsigned last = (Offset + Width - 1) / 8;
    constexpr unsigned below = 8 * (last + 1) - Offset - Width;
    static_assert(last - first < 8, "the field spans more bytes than a 64-bit word has");
    constexpr std::uint64_t mask = lowMask(Width) << below;
    const std::uint64_t word = static_cast<std::uint64_t>(value) << below & mask;
    QUARN_UNROLL_8
    for (unsigned i = first; i <= last; ++i) {
        const unsigned shift = 8 * (last - i);
        replaceBits(data[i], static_cast<unsigned>(mask >> shift & 0xFF),
                    static_cast<unsigned>(word >> shift & 0xFF));
    }
}

}    // namespace quarn
