// Who sends messages, where there is little room.
#pragma once

#include "session/StationId.h"

#include <string>

// "722", or "722/4403003" with the sender by AIS.
inline std::string shortNameOf(const StationId& station)
{
    return std::to_string(station.station) +
           (station.mmsi != 0 ? "/" + std::to_string(station.mmsi) : std::string());
}
