// A station in JSON, alike wherever it occurs.
#pragma once

#include "commands/JsonWriter.h"
#include "session/StationId.h"

#include <optional>

// Of what came by AIS also its sender.
inline void writeStationId(JsonWriter& json, const std::optional<StationId>& id)
{
    json.member("station", id ? std::optional(std::uint64_t{id->station}) : std::nullopt);
    if (id && id->mmsi != 0) {
        json.member("mmsi", std::uint64_t{id->mmsi});
    }
}
