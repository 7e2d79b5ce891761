// What stations say of themselves: how they are, and what they tell people.
#include "commands/report/ReportNames.h"
#include "commands/report/Sections.h"
#include "pictures/Bands.h"

#include <algorithm>

namespace {

constexpr std::size_t mostShownStations = 6;
constexpr std::size_t mostHealthBands = 40;

std::string healthName(const RTCM2_member_s* row, std::int64_t value)
{
    const char* const text = row != nullptr ? RTCM2_text_of(row, value) : nullptr;
    return text != nullptr ? text : "health " + std::to_string(value);
}

Role healthRole(const RTCM2_member_s* row, std::int64_t value)
{
    for (std::uint32_t i = 0; row != nullptr && i < row->alarm_count; ++i) {
        if (row->alarms[i].value == value) {
            return row->alarms[i].alarm == RTCM2_ALARM_FAILURE ? Role::bad : Role::warning;
        }
    }
    return Role::good;
}

Band healthBand(const InputReport& input, const StationId& id, const StationState& station)
{
    Band band{.label = "station " + stationName(id)};
    const RTCM2_member_s* const row = input.check.healthRow();
    const auto& states = station.health();
    for (std::size_t i = 0; i < states.size(); ++i) {
        const bool isLast = i + 1 == states.size();
        const Place& end = isLast ? station.lastPlace : states[i + 1].since;
        band.spans.push_back({.time = {input.secondsOf(states[i].since), input.secondsOf(end)},
                              .ink = {healthRole(row, states[i].value)},
                              .height = 0.3,
                              .text = healthName(row, states[i].value)});
    }
    return band;
}

LegendEntry healthEntry(const char* text, Role role)
{
    return {text, [role](Canvas& on, const Box& sign) {
                on.rectangle({sign.left, sign.bottom() - 5, sign.width, 4}, {role});
            }};
}

std::string healthPicture(const InputReport& input)
{
    const TimeScale times = input.times();
    Bands bands{.title = "Health of the stations",
                .times = &times,
                .legend = {healthEntry("works", Role::good),
                           healthEntry("use with care", Role::warning),
                           healthEntry("do not use", Role::bad)}};
    for (const auto& [id, station] : input.check.stations) {
        if (bands.bands.size() < mostHealthBands && !station.health().empty()) {
            bands.bands.push_back(healthBand(input, id, station));
        }
    }
    const SvgCanvas measure({});
    const double height = heightOf(measure, bands, pageWidth);
    return picture({.width = pageWidth,
                    .height = height,
                    .title = bands.title,
                    .description = "A band for each station over time with what it says of itself"},
                   [&](SvgCanvas& canvas) {
                       drawBands(canvas, {0, 0, pageWidth, height}, bands);
                   });
}

std::string healthHistory(const InputReport& input, const StationState& station)
{
    std::string text;
    for (const HealthState& state : station.health()) {
        text += (text.empty() ? "" : ", ") + healthName(input.check.healthRow(), state.value) +
                " from " + (state.since.time ? input.timeText(state.since) : "the beginning");
    }
    return text;
}

}    // namespace

std::vector<StationId> shownStations(const InputReport& input)
{
    std::vector<std::pair<std::uint64_t, StationId>> all;
    for (const auto& [id, station] : input.check.stations) {
        all.emplace_back(station.messages, id);
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    all.resize(std::min(all.size(), mostShownStations));
    std::vector<StationId> shown;
    for (const auto& [messages, id] : all) {
        shown.push_back(id);
    }
    std::sort(shown.begin(), shown.end());
    return shown;
}

std::string notShownText(const InputReport& input)
{
    const std::size_t count = input.check.stations.size();
    return count <= mostShownStations
               ? ""
               : element("p",
                         "Pictures of the " + std::to_string(mostShownStations) +
                             " stations with the most messages, of " + std::to_string(count) +
                             "; the tables have all of them, and --station shows others.",
                         "class=\"note\"");
}

std::string stationsSection(const InputReport& input, const std::string& name)
{
    Table table{.name = "stations",
                .caption = "Stations, and what they say of themselves; times as on the axes",
                .columns = {{"Station", true},
                            {"Messages", true},
                            {"Last at", true},
                            {"Health", false, true},
                            {"Changes of it", true}}};
    for (const auto& [id, station] : input.check.stations) {
        table.rows.push_back(
            {stationCell(id),
             numberCell(station.messages),
             {input.timeText(station.lastPlace), input.secondsOf(station.lastPlace)},
             {healthHistory(input, station)},
             numberCell(station.healthChanges())});
    }
    return table.rows.empty()
               ? ""
               : section(name, "Stations and their health", healthPicture(input) + htmlOf(table));
}

std::string textsSection(const InputReport& input, const std::string& name)
{
    const TimeScale times = input.times();
    Table table{.name = "texts",
                .caption = "Texts for people; times as on the axes",
                .columns = {{"Station", true},
                            {"Text", false, true},
                            {"Times", true},
                            {"First at", true},
                            {"Last at", true}}};
    for (const auto& [key, use] : input.texts) {
        table.rows.push_back({stationCell(key.first),
                              {key.second},
                              numberCell(use.times),
                              {times.text(use.first), use.first},
                              {times.text(use.last), use.last}});
    }
    std::string html = htmlOf(table);
    if (input.otherTexts > 0) {
        html += element("p", "and " + std::to_string(input.otherTexts) +
                                 " messages with further texts, which were not kept");
    }
    return section(name, "Special messages", html);
}
