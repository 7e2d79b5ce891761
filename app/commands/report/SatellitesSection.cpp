// Satellites: their corrections, how accurate these are, and when their data changed.
#include "base/PlainText.h"
#include "commands/report/ReportNames.h"
#include "commands/report/Sections.h"
#include "format/FieldText.h"
#include "pictures/Bands.h"
#include "pictures/Plot.h"

#include <algorithm>

namespace {

constexpr double plotWidth = 250;
constexpr double plotHeight = 150;

using Track = std::pair<const FieldCurves::Key, FieldTrack>;

// The tracks of one station and system whose elements are of one kind, by number. Systems have
// clocks of their own: on common axes, what one is off would hide what the other does.
struct SatelliteGroup {
    StationId station{};
    std::uint32_t system = 0;
    const SatelliteFields* fields = nullptr;
    std::vector<const Track*> tracks{};
};

bool isSameGroup(const SatelliteGroup& one, const SatelliteGroup& other)
{
    return one.station == other.station && one.system == other.system && one.fields == other.fields;
}

std::vector<SatelliteGroup> groupsOf(const InputReport& input)
{
    std::vector<SatelliteGroup> groups;
    const std::vector<StationId> shown = shownStations(input);
    for (const Track& track : input.satellites.tracks()) {
        const FieldCurves::Key& key = track.first;
        if (!std::binary_search(shown.begin(), shown.end(), key.station)) {
            continue;
        }
        const SatelliteFields& fields = input.subject.satellites.groups[key.group];
        const SatelliteGroup own{key.station, key.system, &fields};
        if (groups.empty() || !isSameGroup(groups.back(), own)) {
            groups.push_back(own);
        }
        groups.back().tracks.push_back(&track);
    }
    return groups;
}

std::string fieldName(const FieldPath& path, const KindModel& element)
{
    return element.fields[static_cast<std::size_t>(path.part->index)].name;
}

std::string unitOf(const FieldPath& path)
{
    return path.part->isScaled() ? path.part->row->quantity->unit : path.part->unit;
}

Range rangeOf(const SatelliteGroup& group, std::size_t value)
{
    std::optional<Range> range;
    for (const Track* track : group.tracks) {
        const Curve& curve = track->second.values[value];
        if (!curve.isEmpty()) {
            const Range own = curve.valueRange();
            range =
                range ? Range{std::min(range->low, own.low), std::max(range->high, own.high)} : own;
        }
    }
    return withRoom(range.value_or(Range{}));
}

std::string plotOf(const Track& track, std::size_t value, const std::string& unit,
                   const TimeScale& times, const Range& range)
{
    const Curve& curve = track.second.values[value];
    if (curve.isEmpty()) {
        return "";
    }
    const Plot plot{.title = track.second.name,
                    .note = rangeText(curve.valueRange(), unit),
                    .unit = unit,
                    .times = &times,
                    .values = range,
                    .showsBreaks = true,
                    .curves = {{.curve = &curve, .pen = {.ink = {Role::series}, .width = 1.4}}}};
    return picture({.width = plotWidth,
                    .height = plotHeight,
                    .title = plot.title + ": " + plot.note,
                    .description = countText(curve.values(), "value") + " over " + times.title()},
                   [&](SvgCanvas& canvas) {
                       drawPlot(canvas, {0, 0, plotWidth, plotHeight}, plot);
                   });
}

std::string multiplesOf(const SatelliteGroup& group, std::size_t value, const TimeScale& times)
{
    const FieldPath& path = group.fields->values[value];
    const Range range = rangeOf(group, value);
    std::string html;
    for (const Track* track : group.tracks) {
        html += plotOf(*track, value, unitOf(path), times, range);
    }
    return html.empty() ? ""
                        : element("h5", fieldName(path, *group.fields->element) +
                                            " by satellite, in " + unitOf(path)) +
                              "<div class=\"grid small\">" + html + "</div>\n";
}

// The classes of accuracy that occur, the best first.
std::vector<std::int64_t> classesOf(const SatelliteGroup& group)
{
    std::int64_t worst = 0;
    for (const Track* track : group.tracks) {
        const Curve& curve = track->second.values[*group.fields->accuracy];
        worst = std::max(worst, static_cast<std::int64_t>(curve.valueRange().high));
    }
    std::vector<std::int64_t> classes;
    for (std::int64_t value = 0; value <= std::min<std::int64_t>(worst, 15); ++value) {
        classes.push_back(value);
    }
    return classes;
}

// Height and colour of the worst class in a time: the worse, the higher.
Span accuracySpan(const Stretch& time, double value, std::size_t classes)
{
    const double share = (value + 1) / static_cast<double>(classes);
    return {.time = time,
            .ink = {Role::series, static_cast<unsigned>(value)},
            .height = std::min(1.0, share)};
}

Band bandOf(const Track& track, const SatelliteGroup& group, const TimeScale& times)
{
    const auto& accuracy = group.fields->accuracy;
    const Curve& curve = track.second.values[accuracy.value_or(0)];
    const std::size_t classes = accuracy ? classesOf(group).size() : 1;
    Band band{.label = track.second.name};
    const auto columns = curve.columns(times.range, 800);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].count == 0) {
            continue;
        }
        const bool isJoined = i + 1 < columns.size() &&
                              columns[i + 1].first.x - columns[i].last.x <= curve.longestJoin();
        const Stretch time{columns[i].first.x,
                           isJoined ? columns[i + 1].first.x : columns[i].last.x};
        const Span span = accuracySpan(time, accuracy ? columns[i].greatest.y : 0, classes);
        Span* const last = band.spans.empty() ? nullptr : &band.spans.back();
        if (last != nullptr && last->time.to == time.from && last->ink.number == span.ink.number) {
            last->time.to = time.to;
        } else {
            band.spans.push_back(span);
        }
    }
    for (const auto& column : track.second.issueChanges.columns(times.range, 800)) {
        band.marks.push_back(column.bin.first);
    }
    return band;
}

std::vector<LegendEntry> bandLegend(const SatelliteGroup& group)
{
    std::vector<LegendEntry> legend;
    if (group.fields->accuracy) {
        const KindModel& element = *group.fields->element;
        const FieldModel& field = *element.field(RTCM2_MEANS_ACCURACY);
        const auto classes = classesOf(group);
        for (const std::int64_t value : classes) {
            const char* const text = RTCM2_text_of(field.row, value);
            legend.push_back(
                {field.name + " " + (text != nullptr ? text : std::to_string(value)),
                 [value, count = classes.size()](Canvas& on, const Box& sign) {
                     const Span span = accuracySpan({}, static_cast<double>(value), count);
                     const double height = sign.height * span.height;
                     on.rectangle({sign.left, sign.bottom() - height, sign.width, height},
                                  span.ink);
                 }});
        }
    }
    const bool hasChanges =
        std::any_of(group.tracks.begin(), group.tracks.end(),
                    [](const Track* track) { return track->second.issueChanges.count() > 0; });
    if (hasChanges) {
        legend.push_back(
            {"issue of data changed", [](Canvas& on, const Box& sign) {
                 on.line({sign.left + 11, sign.top}, {sign.left + 11, sign.bottom()}, {.width = 2});
             }});
    }
    return legend;
}

std::string bandsOf(const SatelliteGroup& group, const TimeScale& times)
{
    const FieldModel* const accuracy = group.fields->element->field(RTCM2_MEANS_ACCURACY);
    Bands bands{.title =
                    std::string("Satellites in the messages") +
                    (accuracy != nullptr ? ", and their " + accuracy->name + ", at its worst" : ""),
                .times = &times,
                .legend = bandLegend(group)};
    for (const Track* track : group.tracks) {
        bands.bands.push_back(bandOf(*track, group, times));
    }
    const SvgCanvas measure({});
    const double height = heightOf(measure, bands, pageWidth);
    return picture({.width = pageWidth,
                    .height = height,
                    .title = bands.title,
                    .description = "A band for each satellite over time; the worse its accuracy, "
                                   "the higher. Strokes are changes of the issue of data"},
                   [&](SvgCanvas& canvas) {
                       drawBands(canvas, {0, 0, pageWidth, height}, bands);
                   });
}

std::string groupText(const SatelliteGroup& group, const TimeScale& times)
{
    const std::string system = systemName(group.system);
    std::string html = element("h4", "Station " + stationName(group.station) +
                                         (system.empty() ? "" : ", " + system) + ", " +
                                         group.fields->element->name);
    html += bandsOf(group, times);
    for (std::size_t value = 0; value < group.fields->values.size(); ++value) {
        html += multiplesOf(group, value, times);
    }
    return html;
}

Table satelliteTable(const InputReport& input)
{
    const InputCheck& check = input.check;
    Table table{.name = "satellites",
                .caption = "Satellites; times as on the axes",
                .columns = {{"Station", true},
                            {"System"},
                            {"Satellite"},
                            {"Times", true},
                            {"First at", true},
                            {"Last at", true},
                            {"Times away", true},
                            {"At the end"},
                            {"Issues changed", true},
                            {"Last time", true}}};
    const auto at = [&](const Place& place) {
        return Cell{input.timeText(place), input.secondsOf(place)};
    };
    for (const auto& [id, station] : check.stations) {
        for (const auto& [key, satellite] : station.satellites()) {
            table.rows.push_back({stationCell(id),
                                  {systemName(key.first)},
                                  {satellite.name},
                                  numberCell(satellite.times),
                                  at(satellite.firstPlace),
                                  at(satellite.lastPlace),
                                  numberCell(satellite.returns),
                                  {station.isAway(satellite, check.now()) ? "gone" : ""},
                                  numberCell(satellite.issueChanges),
                                  satellite.issueChanges > 0 ? at(satellite.lastChange) : Cell{}});
        }
    }
    return table;
}

}    // namespace

std::string satellitesSection(const InputReport& input, const std::string& name)
{
    const TimeScale times = input.times();
    std::string html;
    for (const SatelliteGroup& group : groupsOf(input)) {
        html += groupText(group, times);
    }
    if (!html.empty()) {
        html = notShownText(input) +
               element("p",
                       "Left to right: " + times.title() +
                           ". All pictures of a quantity and system have the same axes. A short "
                           "stroke at the "
                           "upper edge: the issue of data changed there, and the line begins anew.",
                       "class=\"note\"") +
               html;
    }
    if (input.satellites.others() > 0) {
        html += element("p", "There was no room for curves of all satellites: " +
                                 std::to_string(input.satellites.others()) +
                                 " values are in no picture.");
    }
    return section(name, "Satellites and corrections", html + htmlOf(satelliteTable(input)));
}
