#include "base/Columns.h"
#include "base/Terminal.h"
#include "commands/position/PositionSink.h"
#include "format/Decimal.h"

#include <set>

namespace {

std::string coordinatesText(const Coordinates& coordinates)
{
    return "X " + textOf(coordinates[0]) + " m, Y " + textOf(coordinates[1]) + " m, Z " +
           textOf(coordinates[2]) + " m";
}

// The message that told it, latitude, longitude and height, and how far the point has moved.
std::string tellingText(const Positions& positions, const Telling& telling, bool isFirst)
{
    const Geodetic place = geodeticOf(cartesianOf(telling.coordinates));
    std::string text = right(telling.number, 12) + right(telling.byte, 12) +
                       right(telling.time ? textOf(*telling.time) : "", 10) +
                       right(withDecimals(place.latitude, 9), 17) +
                       right(withDecimals(place.longitude, 9), 17) +
                       right(withDecimals(place.height, 4), 15) +
                       (isFirst ? "" : right(withDecimals(telling.moved, 4), 14)) +
                       "\n              " + coordinatesText(telling.coordinates);
    if (telling.antennaHeight) {
        text += ", antenna height " + textOf(*telling.antennaHeight) + " m";
    }
    if (positions.inputs().size() > 1) {
        text += ", in " + printable(positions.inputs()[telling.input]);
    }
    return text + "\n";
}

std::string historyText(const Positions& positions, const PointHistory& history)
{
    std::string text = right("Message", 12) + right("Byte", 12) + right("Second", 10) +
                       right("Latitude", 17) + right("Longitude", 17) + right("Height", 15);
    text += history.changes > 0 ? right("Moved", 14) + "\n" : "\n";
    for (const Telling& telling : history.kept) {
        text += tellingText(positions, telling, &telling == &history.kept.front());
    }
    const std::uint64_t further = history.changes + 1 - history.kept.size();
    if (further > 0) {
        text += "    and " + std::to_string(further) +
                " further changes, of which this is the last:\n" +
                tellingText(positions, *history.last, false);
    }
    return text;
}

std::string distanceText(const Positions& positions, const PointHistory& history)
{
    const Telling& telling = *history.distance;
    const std::string input =
        positions.inputs().size() > 1 ? " of " + printable(positions.inputs()[telling.input]) : "";
    return "    message " + std::to_string(telling.number) + input + " at byte " +
           std::to_string(telling.byte) + ": " + coordinatesText(telling.coordinates) +
           "\n    from the point '" + history.point->from +
           (history.system != nullptr ? "', which no message tells\n"
                                      : "' of a system that the message does not tell\n");
}

std::string headText(const Positions::Key& key, const PointHistory& history)
{
    const auto& [station, system, isDistance, name] = key;
    return (station ? "S" + station->text().substr(1) + ", " : "") +
           (system.empty() ? "system not told" : system) + ": " + name + ", told " +
           (history.told == 1 ? "once" : std::to_string(history.told) + " times") +
           (history.changes == 0 ? "" : ", changed " + std::to_string(history.changes) + " x") +
           "\n";
}

// What the coordinates are in.
std::string notes(const Positions::Points& points)
{
    std::set<std::string> frames;
    bool isUnknown = false;
    for (const auto& [key, history] : points) {
        const RTCM2_system_s* const system = history.system;
        isUnknown = isUnknown || system == nullptr;
        if (system != nullptr && system->frame != std::string(ellipsoidName)) {
            frames.insert(std::string("Points of ") + system->name + " are in its own frame, " +
                          system->frame + "; they are not converted.\n");
        }
    }
    std::string text = std::string("Degrees and metres on the ellipsoid of ") + ellipsoidName +
                       "; seconds of the hour.\n";
    for (const std::string& frame : frames) {
        text += frame;
    }
    return isUnknown ? text + "Where the system is not told, the frame is unknown, too.\n" : text;
}

}    // namespace

std::string positionTable(const Positions& positions)
{
    std::string text;
    for (const auto& [key, history] : positions.points()) {
        text += headText(key, history);
        text += history.last ? historyText(positions, history) : distanceText(positions, history);
        text += "\n";
    }
    return text.empty() ? text : text + notes(positions.points());
}
