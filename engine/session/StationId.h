// Who sends a message.
#pragma once

#include "forms/Envelope.h"

#include <cstdint>
#include <string>

// The number that the station gives itself and, of what came by AIS, the identity of the sender,
// since several senders use the same number.
struct StationId {
    unsigned station = 0;
    std::uint32_t mmsi = 0;    // 0: the message did not come by AIS

    StationId() = default;
    StationId(unsigned number, const Envelope& envelope)
        : station(number), mmsi(envelope.sender ? envelope.sender->mmsi : 0)
    {
    }

    auto operator<=>(const StationId&) const = default;

    // "station 722", or "station 722 of MMSI 4403003"
    std::string text() const
    {
        return "station " + std::to_string(station) +
               (mmsi != 0 ? " of MMSI " + std::to_string(mmsi) : "");
    }
};
