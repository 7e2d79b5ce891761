// What comes with a message beside its own bits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

// The AIS station that sent a message.
struct AisSender {
    static constexpr std::int32_t unitsPerDegree = 600;    // tenths of a minute
    static constexpr std::int32_t noLongitude = 181 * unitsPerDegree;
    static constexpr std::int32_t noLatitude = 91 * unitsPerDegree;

    std::uint32_t mmsi = 0;                  // Maritime Mobile Service Identity, 9 digits
    std::int32_t longitude = noLongitude;    // tenths of a minute, east positive
    std::int32_t latitude = noLatitude;      // tenths of a minute, north positive

    bool operator==(const AisSender&) const = default;
    bool hasPosition() const { return longitude != noLongitude && latitude != noLatitude; }
    double longitudeDegrees() const { return static_cast<double>(longitude) / unitsPerDegree; }
    double latitudeDegrees() const { return static_cast<double>(latitude) / unitsPerDegree; }
};

struct Envelope {
    std::optional<std::int64_t> received{};    // microseconds since 1970, UTC
    std::optional<AisSender> sender{};         // of a message that came by AIS

    // How many bits of the packed message were heard, where that may be fewer than its header
    // declares; what stands behind them is fill.
    std::optional<std::size_t> bitsHeard{};

    bool operator==(const Envelope&) const = default;
};
