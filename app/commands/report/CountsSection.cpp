// Everything counted, as `stats` has it.
#include "commands/report/ReportNames.h"
#include "commands/report/Sections.h"

namespace {

std::string plainNumbers(const Stats& stats)
{
    Table table{
        .name = "numbers", .caption = "What was found", .columns = {{"Number", true}, {"of"}}};
    for (const NamedNumber& named : namedNumbers) {
        table.rows.push_back({numberCell(stats.*named.number), {named.words}});
    }
    return htmlOf(table);
}

std::vector<Cell> senderRow(const StatsCounter& counter, const KindModel& kind,
                            const std::optional<Sender>& sender, const StationStats& station)
{
    const auto seconds = [&](bool isKnown, auto units) {
        return isKnown ? numberCell(counter.secondsOf(kind, static_cast<std::int64_t>(units)), 1)
                       : Cell{};
    };
    const bool hasTime = station.first.has_value();
    return {kind.typeNumber >= 0 ? numberCell(static_cast<std::uint64_t>(kind.typeNumber)) : Cell{},
            {kind.text.empty() ? kind.name : kind.text},
            sender ? stationCell(sender->station) : Cell{"others"},
            {sender ? systemName(sender->system) : ""},
            numberCell(station.messages),
            seconds(hasTime, station.first.value_or(0)),
            seconds(hasTime, station.last),
            seconds(hasTime, station.elapsed),
            station.elapsed > 0 ? numberCell(counter.messagesPerSecond(kind, station), 3) : Cell{}};
}

std::string kindsTable(const InputReport& input)
{
    Table table{.name = "kinds",
                .caption =
                    "Messages by type, station and system; first and last are seconds of the "
                    "hour",
                .columns = {{"Type", true},
                            {"Message"},
                            {"Station", true},
                            {"System"},
                            {"Count", true},
                            {"First", true},
                            {"Last", true},
                            {"Seconds", true},
                            {"Per second", true}}};
    for (const auto& [kind, counted] : input.stats.kinds) {
        for (const auto& [sender, station] : counted.allStations()) {
            table.rows.push_back(senderRow(input.counter, *kind, sender, station));
        }
    }
    return htmlOf(table);
}

std::string sightingsTable(const InputReport& input)
{
    Table table{.name = "sightings",
                .caption = "How often each satellite was in messages of a type",
                .columns = {{"Type", true}, {"System"}, {"Satellite"}, {"Times", true}}};
    for (const auto& [kind, counted] : input.stats.kinds) {
        for (const auto& satellite : input.counter.satellitesOf(*kind, counted)) {
            table.rows.push_back({{std::to_string(kind->typeNumber)},
                                  {satellite.system},
                                  {satellite.name},
                                  numberCell(satellite.seen.times)});
        }
    }
    return htmlOf(table);
}

template <class Counts, class Show>
std::string countsTable(const char* name, const char* caption, const Counts& counts, Show show)
{
    Table table{
        .name = name, .caption = caption, .columns = {{"Times", true}, {"What", false, true}}};
    for (const auto& [what, times] : counts.sorted()) {
        table.rows.push_back({numberCell(times), {show(what)}});
    }
    if (counts.others > 0) {
        table.rows.push_back({numberCell(counts.others), {"of others"}});
    }
    return htmlOf(table);
}

}    // namespace

std::string countsSection(const InputReport& input, const std::string& name)
{
    const auto type = [](int number) { return "type " + std::to_string(number); };
    const Stats& stats = input.stats;
    return section(name, "Everything counted",
                   plainNumbers(stats) + kindsTable(input) + sightingsTable(input) +
                       countsTable("unknown_types", "Unknown types", stats.unknownTypes, type) +
                       countsTable("unreported_types", "Types that are decoded but not reported",
                                   stats.unreportedTypes, type) +
                       countsTable("events", "What could not be decoded", stats.events,
                                   [](const std::string& event) { return event; }));
}
