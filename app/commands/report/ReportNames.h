// What things are called in a report.
#pragma once

#include "base/Columns.h"
#include "check/InputCheck.h"
#include "commands/report/Page.h"
#include "session/StationId.h"

#include <string>

inline std::string systemName(std::uint32_t index)
{
    const RTCM2_system_s* const system = systemAt(index);
    return system != nullptr ? system->name : "";
}

// "417", or "417 of MMSI 2000417"
inline std::string stationName(const StationId& id)
{
    return id.text().substr(std::string_view("station ").size());
}

inline Cell stationCell(const StationId& id)
{
    constexpr double stations = 4096;    // more than there are numbers
    return {stationName(id), id.mmsi * stations + id.station};
}

inline Cell numberCell(std::uint64_t number)
{
    return {std::to_string(number)};
}

inline Cell numberCell(double number, int decimals)
{
    return {withDecimals(number, decimals)};
}
