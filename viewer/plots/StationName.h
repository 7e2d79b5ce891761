// Who sends messages, where there is little room.
#pragma once

#include "session/StationId.h"

#include <string>

// "722", or "722/4403003" with the sender by AIS.
inline std::string shortNameOf(const StationId& station)
{
    std::string name = std::to_string(station.station);
    if (station.mmsi != 0) {
        name.append("/").append(std::to_string(station.mmsi));
    }
    return name;
}
