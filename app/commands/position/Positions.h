// The points that messages tell the coordinates of, and how these change.
#pragma once

#include "base/Geodesy.h"
#include "session/Found.h"
#include "session/StationId.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

using Coordinates = std::array<RTCM2_decimal_s, 3>;

Cartesian cartesianOf(const Coordinates& coordinates);

// Coordinates, and the message that told them.
struct Telling {
    Coordinates coordinates{};
    std::optional<RTCM2_decimal_s> antennaHeight;    // the last one that was told with the point
    std::size_t input = 0;
    std::uint64_t number = 0;
    std::uint64_t byte = 0;
    std::optional<RTCM2_decimal_s> time;    // seconds of the hour
    double moved = 0;                       // metres from the coordinates before
};

// One point of a station and system.
struct PointHistory {
    const RTCM2_system_s* system = nullptr;    // null: no message told it
    const RTCM2_point_s* point = nullptr;
    std::uint64_t told = 0;       // times
    std::uint64_t changes = 0;    // of coordinates or height
    std::vector<Telling> kept;    // the first coordinates and what they changed to
    std::optional<Telling> last;
    std::optional<Telling> distance;    // from a point that was not told yet
};

class Positions {
public:
    // The station, if messages name one; the system's name; the coordinates of points that others
    // are from stand first.
    using Key = std::tuple<std::optional<StationId>, std::string, bool, std::string>;
    using Points = std::map<Key, PointHistory>;

    // Of all points together, since changes may have no end.
    static constexpr std::size_t mostKept = 10000;

    // Of the index-th point that messages of its kind tell.
    static Key keyOf(const Found& message, std::uint32_t index);

    void beginInput(const std::string& name) { names.push_back(name); }
    void add(const Found& message);

    const Points& points() const { return found; }
    const std::vector<std::string>& inputs() const { return names; }

private:
    void addPoint(const Key& key, const RTCM2_system_s* system, const RTCM2_point_s& point,
                  Telling telling);
    void place(PointHistory& history, Telling telling);
    void placeDistancesFrom(const Key& key, const Telling& origin);
    void keep(PointHistory& history, const Telling& telling);
    const PointHistory* originOf(const Key& key, const RTCM2_point_s& point) const;

    Points found;
    std::vector<std::string> names;
    std::size_t keptCount = 0;
};
