// What came when, and how often.
#include "base/PlainText.h"
#include "commands/report/ReportNames.h"
#include "commands/report/Sections.h"
#include "pictures/Plot.h"

#include <algorithm>

namespace {

constexpr std::size_t mostShownLanes = 40;
constexpr std::size_t mostStepPlots = 24;
constexpr double usualSteps = 3;    // that a gap is longer than

using NamedLane = std::pair<Traffic::Key, const TrafficLane*>;

std::string laneName(const InputReport& input, const Traffic::Key& key)
{
    const auto& stations = input.check.stations;
    const bool isOne = stations.size() == 1;
    const std::string system = systemName(key.system);
    return "type " + std::to_string(key.type) + (system.empty() ? "" : " " + system) +
           (isOne ? "" : ", " + stationName(key.station));
}

// Those with the most messages, in their order.
std::vector<NamedLane> busiest(const Traffic& traffic, std::size_t most)
{
    std::vector<NamedLane> lanes;
    for (const auto& [key, lane] : traffic.lanes()) {
        lanes.emplace_back(key, &lane);
    }
    std::stable_sort(lanes.begin(), lanes.end(), [](const NamedLane& a, const NamedLane& b) {
        return a.second->messages().count() > b.second->messages().count();
    });
    lanes.resize(std::min(lanes.size(), most));
    std::sort(lanes.begin(), lanes.end(),
              [](const NamedLane& a, const NamedLane& b) { return a.first < b.first; });
    return lanes;
}

// What comes regularly is missing when it does not come for several times as long.
std::vector<Stretch> gapsOf(const InputCheck& check, const NamedLane& lane)
{
    const auto& [key, traffic] = lane;
    const auto rate = check.rates.find({key.station, key.type, key.system});
    const bool isRegular = rate != check.rates.end() && rate->second.isRegular();
    return isRegular ? traffic->gapsAbove(usualSteps * *rate->second.period() * check.secondsOf(1))
                     : std::vector<Stretch>();
}

std::vector<Mark> lossMarks(const InputReport& input)
{
    std::vector<Mark> marks;
    for (const Loss& loss : input.check.losses.all) {
        marks.push_back({input.secondsOf(loss.place),
                         (loss.station ? loss.station->text() + ": " : "") +
                             (loss.isExact ? "" : "at least ") + countText(loss.least, "message") +
                             " missing before message " + std::to_string(loss.place.number)});
    }
    return marks;
}

Lanes lanesOf(const InputReport& input, const TimeScale& times)
{
    Lanes picture{.title = "What came when, by type" +
                           std::string(input.check.stations.size() > 1 ? " and station" : ""),
                  .times = &times};
    for (const NamedLane& lane : busiest(input.traffic, mostShownLanes)) {
        picture.lanes.push_back({.label = laneName(input, lane.first),
                                 .messages = &lane.second->messages(),
                                 .faulty = &lane.second->faulty(),
                                 .gaps = gapsOf(input.check, lane)});
    }
    const std::vector<Mark> losses = lossMarks(input);
    if (!losses.empty()) {
        picture.lanes.push_back({.label = "lost", .losses = losses});
    }
    if (input.traffic.damage().count() > 0) {
        picture.lanes.push_back({.label = "damaged", .faulty = &input.traffic.damage()});
    }
    return picture;
}

Plot stepPlot(const InputReport& input, const NamedLane& lane, const TimeScale& times)
{
    const Curve& steps = lane.second->steps();
    const Range values = steps.valueRange();
    return {.title = laneName(input, lane.first),
            .note = rangeText(values, "s"),
            .unit = "s",
            .times = &times,
            .values = withRoom({0, values.high}),
            .curves = {{.curve = &steps, .pen = {.ink = {Role::series}, .width = 1.4}}}};
}

std::string stepPlots(const InputReport& input, const TimeScale& times)
{
    std::string html;
    for (const NamedLane& lane : busiest(input.traffic, mostStepPlots)) {
        if (lane.second->steps().values() < 2) {
            continue;
        }
        const Plot plot = stepPlot(input, lane, times);
        html += picture({.width = 330,
                         .height = 130,
                         .title = "Seconds from message to message: " + plot.title,
                         .description = "From " + plot.note + ", over " + times.title()},
                        [&](SvgCanvas& canvas) {
                            drawPlot(canvas, {0, 0, 330, 130}, plot);
                        });
    }
    return html.empty()
               ? ""
               : element("h4", "Seconds from each message to the next one of its type") +
                     element("p",
                             "Left to right: " + times.title() +
                                 ". Upwards: seconds, on a scale of each type's own, since "
                                 "some come a hundred times as often as others. A peak is "
                                 "a gap.",
                             "class=\"note\"") +
                     "<div class=\"grid\">" + html + "</div>\n";
}

std::vector<Cell> rateRow(const InputReport& input, const RateKey& key, const TypeRate& rate)
{
    const InputCheck& check = input.check;
    std::vector<Cell> row{numberCell(std::uint64_t{key.type}),
                          stationCell(key.station),
                          {systemName(key.system)},
                          numberCell(rate.messages())};
    if (const auto period = rate.period()) {
        const auto [least, most] = rate.usualSteps();
        const TypeRate::Longest& longest = rate.longestGaps().front();
        row.push_back(numberCell(*period * check.secondsOf(1), 2));
        row.push_back(numberCell(check.secondsOf(least), 1));
        row.push_back(numberCell(check.secondsOf(most), 1));
        row.push_back(numberCell(check.secondsOf(longest.units), 1));
        row.push_back({input.timeText(longest.to), input.secondsOf(longest.to)});
    } else {
        row.insert(row.end(), 5, {});
    }
    const ExpectedType* const expected = check.expectation(key.type);
    row.push_back(expected != nullptr ? numberCell(expected->seconds, 2) : Cell{});
    return row;
}

}    // namespace

std::string trafficSection(const InputReport& input, const std::string& name)
{
    const TimeScale times = input.times();
    const Lanes lanes = lanesOf(input, times);
    if (lanes.lanes.empty()) {
        return "";
    }
    SvgCanvas measure({});
    const double height = heightOf(measure, lanes, pageWidth);
    std::string html =
        picture({.width = pageWidth,
                 .height = height,
                 .title = lanes.title,
                 .description = "A lane for each type of each station over time, with gaps, lost "
                                "and damaged messages"},
                [&](SvgCanvas& canvas) {
                    drawLanes(canvas, {0, 0, pageWidth, height}, lanes);
                });
    const std::size_t shown = std::min(input.traffic.lanes().size(), mostShownLanes);
    if (input.traffic.lanes().size() > shown) {
        html += element("p",
                        "Only the " + std::to_string(shown) + " lanes with the most messages, of " +
                            std::to_string(input.traffic.lanes().size()) +
                            "; the table has all of them.",
                        "class=\"note\"");
    }
    if (input.check.restarts > 0) {
        html +=
            element("p",
                    "The time of messages goes back in this input, see above. From there on the "
                    "axes count on, so that they show other times than the messages tell.",
                    "class=\"note\"");
    }
    return section(name, "Messages over time", html);
}

std::string rateSection(const InputReport& input, const std::string& name)
{
    Table table{.name = "rates",
                .caption = "How often each type comes, in seconds, and when the longest gap ended",
                .columns = {{"Type", true},
                            {"Station", true},
                            {"System"},
                            {"Messages", true},
                            {"Every", true},
                            {"Steps from", true},
                            {"to", true},
                            {"Longest", true},
                            {"until", true},
                            {"Expected", true}}};
    for (const auto& [key, rate] : input.check.rates) {
        table.rows.push_back(rateRow(input, key, rate));
    }
    return section(name, "Rates and gaps", htmlOf(table) + stepPlots(input, input.times()));
}
