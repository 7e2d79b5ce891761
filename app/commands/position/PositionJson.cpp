#include "base/Characters.h"
#include "base/Columns.h"
#include "commands/JsonWriter.h"
#include "commands/StationJson.h"
#include "commands/position/PositionSink.h"
#include "format/Decimal.h"

namespace {

void writeCoordinates(JsonWriter& json, const Coordinates& coordinates)
{
    json.number("x", textOf(coordinates[0]));
    json.number("y", textOf(coordinates[1]));
    json.number("z", textOf(coordinates[2]));
}

void writeMessage(JsonWriter& json, const Positions& positions, const Telling& telling)
{
    json.member("input", validUtf8(positions.inputs()[telling.input]));
    json.member("number", telling.number);
    json.member("byte", telling.byte);
    if (telling.time) {
        json.number("time_s", textOf(*telling.time));
    }
}

void writePosition(JsonWriter& json, const Positions& positions, const Telling& telling)
{
    writeMessage(json, positions, telling);
    const Geodetic place = geodeticOf(cartesianOf(telling.coordinates));
    json.number("latitude", withDecimals(place.latitude, 9));
    json.number("longitude", withDecimals(place.longitude, 9));
    json.number("height", withDecimals(place.height, 4));
    writeCoordinates(json, telling.coordinates);
    if (telling.antennaHeight) {
        json.number("antenna_height", textOf(*telling.antennaHeight));
    }
    json.number("moved", withDecimals(telling.moved, 4));
}

// The first coordinates and what they changed to, and the last ones if these were not kept.
std::vector<Telling> positionsOf(const PointHistory& history)
{
    std::vector<Telling> all = history.kept;
    if (history.changes >= all.size() && history.last) {
        all.push_back(*history.last);
    }
    return all;
}

void writePoint(JsonWriter& json, const Positions& positions, const Positions::Key& key,
                const PointHistory& history)
{
    const RTCM2_system_s* const system = history.system;
    writeStationId(json, std::get<0>(key));
    json.member("system", std::get<1>(key));
    json.member("frame", std::string(system != nullptr ? system->frame : ""));
    json.member("point", std::get<3>(key));
    json.member("told", history.told);
    json.member("changes", history.changes);
    json.objects("positions", positionsOf(history),
                 [&](const Telling& telling) { writePosition(json, positions, telling); });
    if (history.distance) {
        json.key("distance");
        json.beginObject();
        json.member("from", std::string(history.point->from));
        writeMessage(json, positions, *history.distance);
        writeCoordinates(json, history.distance->coordinates);
        json.endObject();
    }
}

}    // namespace

std::string positionJson(const Positions& positions)
{
    JsonWriter json;
    json.beginObject();
    json.member("ellipsoid", std::string(ellipsoidName));
    json.objects("points", positions.points(), [&](const auto& entry) {
        writePoint(json, positions, entry.first, entry.second);
    });
    json.endObject();
    return json.take();
}
