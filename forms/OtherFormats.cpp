#include "forms/OtherFormats.h"

#include <algorithm>
#include <string_view>

namespace {

using Bytes = std::span<const std::uint8_t>;

// Whether a message of any of the formats begins with this byte.
bool mayBegin(std::uint8_t byte)
{
    return byte == 0xD3 || byte == 0xB5;
}

// Whether `bytes` begin with the characters, as far as there are any.
bool beginWith(Bytes bytes, std::string_view characters)
{
    const std::size_t count = std::min(bytes.size(), characters.size());
    return std::equal(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count),
                      characters.begin(),
                      [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); });
}

// CRC-24Q: the polynomial 0x1864CFB, nothing inverted.
std::uint32_t crcOf(Bytes bytes)
{
    std::uint32_t crc = 0;
    for (const std::uint8_t byte : bytes) {
        crc ^= std::uint32_t{byte} << 16;
        for (int bit = 0; bit < 8; ++bit) {
            crc = crc << 1 ^ ((crc & 0x800000) != 0 ? 0x1864CFB : 0);
        }
    }
    return crc;
}

// Preamble D3, six zeros, ten bits of length, content, CRC.
std::size_t measureRtcm3(Bytes bytes)
{
    constexpr std::size_t around = 6;
    if (bytes[0] != 0xD3) {
        return 0;
    }
    if (bytes.size() < 3) {
        return around;
    }
    const std::size_t size = around + ((bytes[1] & 3U) << 8 | bytes[2]);
    if (bytes[1] > 3 || (bytes.size() >= size && crcOf(bytes.first(size)) != 0)) {
        return 0;
    }
    return size;
}

// B5 62, class, number, two bytes of length, content, two sums over all but the first two bytes.
std::size_t measureUblox(Bytes bytes)
{
    constexpr std::size_t around = 8;
    constexpr std::size_t longest = 1024;    // so that noise is no work; longer ones are rare
    if (!beginWith(bytes, "\xB5\x62")) {
        return 0;
    }
    if (bytes.size() < around) {
        return around;
    }
    const std::size_t size = around + (bytes[4] | static_cast<std::size_t>(bytes[5]) << 8);
    if (size > around + longest || bytes.size() < size) {
        return size > around + longest ? 0 : size;
    }
    std::uint8_t first = 0;
    std::uint8_t second = 0;
    for (const std::uint8_t byte : bytes.subspan(2, size - 4)) {
        first = static_cast<std::uint8_t>(first + byte);
        second = static_cast<std::uint8_t>(second + first);
    }
    return first == bytes[size - 2] && second == bytes[size - 1] ? size : 0;
}

}    // namespace

OtherFormats::OtherFormats()
    : counts{{{.name = "RTCM 3", .measure = measureRtcm3},
              {.name = "u-blox", .measure = measureUblox}}}
{
}

void OtherFormats::look(std::span<const std::uint8_t> seen)
{
    while (place < seen.size()) {
        if (!mayBegin(seen[place])) {
            ++place;
            continue;
        }
        const Bytes rest = seen.subspan(place);
        std::size_t size = 0;
        for (Count& count : counts) {
            size = count.measure(rest);
            if (size > 0) {
                count.messages += size <= rest.size() ? 1 : 0;
                break;
            }
        }
        if (size > rest.size()) {
            return;
        }
        place += std::max<std::size_t>(size, 1);
    }
}

bool OtherFormats::any() const
{
    return std::any_of(counts.begin(), counts.end(),
                       [](const Count& count) { return count.messages > 0; });
}

std::string OtherFormats::description() const
{
    std::string text;
    for (const Count& count : counts) {
        if (count.messages > 0) {
            text += (text.empty() ? "" : " and ") + std::string(count.name) + " (" +
                    std::to_string(count.messages) +
                    (count.messages == 1 ? " message)" : " messages)");
        }
    }
    return text;
}
