// Where stations say that they are.
#include "base/Geodesy.h"
#include "commands/report/ReportNames.h"
#include "commands/report/Sections.h"
#include "pictures/Plot.h"

#include <algorithm>

namespace {

constexpr double distanceHeight = 200;

std::string pointName(const Positions::Key& key)
{
    const auto& [station, system, isDistance, name] = key;
    return (station ? "station " + stationName(*station) + ", " : "") +
           (system.empty() ? "" : system + ", ") + name;
}

std::vector<Cell> pointRow(const InputReport& input, const Positions::Key& key,
                           const PointHistory& history)
{
    const auto& [station, system, isDistance, name] = key;
    std::vector<Cell> row{station ? stationCell(*station) : Cell{},
                          {system},
                          {name},
                          numberCell(history.told),
                          numberCell(history.changes)};
    if (!history.last) {
        row.push_back(
            {std::string("a distance from '") + history.point->from + "', which nobody told"});
        row.insert(row.end(), 3, {});
        return row;
    }
    const Cartesian metres = cartesianOf(history.last->coordinates);
    const Geodetic place = geodeticOf(metres);
    row.push_back(numberCell(place.latitude, 9));
    row.push_back(numberCell(place.longitude, 9));
    row.push_back(numberCell(place.height, 4));
    row.push_back({history.system != nullptr ? history.system->frame : "not told"});
    const auto& given = input.subject.wanted.position;
    if (given) {
        row.push_back(numberCell(distanceBetween(*given, metres), 3));
    }
    return row;
}

Plot distancePlot(const InputReport& input, const TimeScale& times)
{
    Plot plot{.title = input.subject.wanted.position ? "Distance from the position given"
                                                     : "Distance from where it was first told",
              .unit = "m",
              .times = &times,
              .hasTimeTitle = true};
    Range range{0, 0};
    for (const auto& [key, curve] : input.distances) {
        if (plot.curves.size() == Ink::seriesColours) {
            break;
        }
        range.high = std::max(range.high, curve.valueRange().high);
        const auto number = static_cast<unsigned>(plot.curves.size());
        plot.curves.push_back({&curve, seriesPen(number, 1.6), pointName(key)});
    }
    plot.values = withRoom(range);
    return plot;
}

std::string distancePicture(const InputReport& input)
{
    const bool hasMoved =
        std::any_of(input.distances.begin(), input.distances.end(),
                    [](const auto& entry) { return entry.second.valueRange().length() > 0; });
    if (input.distances.empty() || (!hasMoved && !input.subject.wanted.position)) {
        return "";
    }
    const TimeScale times = input.times();
    const Plot plot = distancePlot(input, times);
    return picture({.width = pageWidth,
                    .height = distanceHeight,
                    .title = plot.title,
                    .description = "Metres over time, a line for each point"},
                   [&](SvgCanvas& canvas) {
                       drawPlot(canvas, {0, 0, pageWidth, distanceHeight}, plot);
                   });
}

}    // namespace

std::string positionSection(const InputReport& input, const std::string& name)
{
    Table table{
        .name = "points",
        .caption =
            std::string("Points, as they were told last; degrees and metres on the "
                        "ellipsoid of ") +
            ellipsoidName +
            (input.subject.wanted.position ? "; how far off the position given they are" : ""),
        .columns = {{"Station", true},
                    {"System"},
                    {"Point"},
                    {"Told, times", true},
                    {"Changes", true},
                    {"Latitude", true},
                    {"Longitude", true},
                    {"Height", true},
                    {"Frame"}}};
    if (input.subject.wanted.position) {
        table.columns.push_back({"Metres off", true});
    }
    for (const auto& [key, history] : input.positions.points()) {
        table.rows.push_back(pointRow(input, key, history));
    }
    return section(name, "Positions", htmlOf(table) + distancePicture(input));
}
