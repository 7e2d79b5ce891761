#include "commands/stats/StatsTable.h"

#include "base/Characters.h"
#include "base/Columns.h"
#include "base/Terminal.h"

#include <array>

namespace {

constexpr std::size_t width = 100;

// A line of the table of kinds. Cells that are empty at its end leave no blanks. The sender is told
// where messages came by AIS.
std::string row(const std::array<std::string, 9>& cells, const std::optional<std::string>& sender)
{
    std::string line = right(cells[0], 4) + "  " + left(cells[1], 30) + right(cells[2], 8) + "  ";
    line += (sender ? right(*sender, 9) + "  " : "") + left(cells[3], 8);
    constexpr std::array<std::size_t, 5> widths = {8, 8, 8, 10, 12};
    for (std::size_t i = 0; i < widths.size(); ++i) {
        line += right(cells[i + 4], widths[i]);
    }
    line.resize(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string typeText(const KindModel& kind)
{
    return kind.typeNumber >= 0 ? std::to_string(kind.typeNumber) : std::string();
}

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// A text in one line, in quotes, cut to the width of the table.
std::string shownText(const std::string& characters)
{
    std::string utf8;
    appendUtf8(utf8, characters);
    const std::string shown = printable(utf8);
    std::size_t room = width - 12 - std::string_view("\"\"...").size();
    std::size_t end = 0;
    while (end < shown.size() && (room > 0 || continuesCharacter(shown[end]))) {
        room -= continuesCharacter(shown[end++]) ? 0 : 1;
    }
    return '"' + shown.substr(0, end) + (end < shown.size() ? "\"..." : "\"");
}

// How often each of them occurred; nothing where none did.
template <class Counts, class Show>
std::string countsText(const char* title, const Counts& counts, const char* others, Show show)
{
    if (counts.values.empty()) {
        return "";
    }
    std::string text = std::string("\n") + title + "\n";
    for (const auto& [counted, times] : counts.sorted()) {
        text += right(times, 10) + "  " + show(counted) + "\n";
    }
    return counts.others == 0 ? text : text + right(counts.others, 10) + "  " + others + "\n";
}

std::string mmsiText(const StationId& id)
{
    return id.mmsi != 0 ? std::to_string(id.mmsi) : "";
}

// In which time the systems' messages count.
std::string clocksText()
{
    std::string text;
    for (std::uint32_t i = 0; const RTCM2_system_s* system = systemAt(i); ++i) {
        text += std::string(i == 0 ? ", in the time of " : ", ") + system->time + " for " +
                system->name;
    }
    return text;
}

}    // namespace

void StatsTable::writeInput(const Stats& stats, const std::string& name,
                            const ReaderCounters& counters)
{
    const std::string form = counters.form;
    const char* const likely = counters.certainty == Certainty::likely ? ", likely" : "";
    output << (isFirst ? "" : "\n") << printable(name)
           << (form.empty() ? "" : " (form: " + form + likely + ")") << "\n";
    isFirst = false;
    writeStats(stats);
}

void StatsTable::writeTotal(const Stats& stats, std::size_t inputs)
{
    if (inputs > 1) {
        output << "\nTotal of " << std::to_string(inputs) << " inputs\n";
        writeStats(stats);
    }
}

void StatsTable::writeStats(const Stats& stats)
{
    for (const NamedNumber& named : namedNumbers) {
        output << right(stats.*named.number, 14) << " " << named.words << "\n";
    }
    if (!stats.kinds.empty()) {
        writeKinds(stats);
        writeSatellites(stats);
    }
    const auto type = [](int number) { return "type " + std::to_string(number); };
    output << countsText("Text messages", stats.texts, "of further texts, which were not kept",
                         shownText)
           << countsText("Types that are decoded but not reported", stats.unreportedTypes,
                         "of further types", type)
           << countsText("Unknown types", stats.unknownTypes, "of further types", type)
           << countsText("Events", stats.events, "further events",
                         [](const std::string& name) { return name; });
}

void StatsTable::writeKinds(const Stats& stats)
{
    const bool withSenders = stats.haveSenders();
    output << "\n"
           << row({"Type", "Message", "Station", "System", "Count", "First", "Last", "Seconds",
                   "Per second"},
                  withSenders ? std::optional<std::string>("MMSI") : std::nullopt);
    for (const auto& [kind, counted] : stats.kinds) {
        const std::string others = counted.stations.values.empty() ? "" : "others";
        for (const auto& [sender, station] : counted.allStations()) {
            const RTCM2_system_s* const system = sender ? systemAt(sender->system) : nullptr;
            const auto seconds = [&, &of = *kind](bool isKnown, auto units) {
                const double number = counter.secondsOf(of, static_cast<std::int64_t>(units));
                return isKnown ? withDecimals(number, 1) : std::string();
            };
            const bool hasTime = station.first.has_value();
            output << row({typeText(*kind), kind->text.empty() ? kind->name : kind->text,
                           sender ? std::to_string(sender->station.station) : others,
                           system != nullptr ? system->name : "", std::to_string(station.messages),
                           seconds(hasTime, station.first.value_or(0)),
                           seconds(hasTime, station.last), seconds(hasTime, station.elapsed),
                           station.elapsed > 0
                               ? withDecimals(counter.messagesPerSecond(*kind, station), 3)
                               : ""},
                          withSenders ? std::optional(sender ? mmsiText(sender->station) : "")
                                      : std::nullopt);
        }
    }
    output << "First and Last are seconds of the hour" << clocksText() << ".\n";
}

void StatsTable::writeSatellites(const Stats& stats)
{
    std::string lines;
    for (const auto& [kind, counted] : stats.kinds) {
        std::optional<std::uint64_t> lastSystem;
        std::size_t columns = 0;
        for (const auto& [system, number, name, seen] : counter.satellitesOf(*kind, counted)) {
            const std::string entry = "  " + name + ": " + std::to_string(seen.times);
            const bool isNewSystem = seen.system != lastSystem;
            if (isNewSystem || columns + entry.size() > width) {
                const std::string head = isNewSystem
                                             ? right(typeText(*kind), 4) + "  " + left(system, 8)
                                             : std::string(14, ' ');
                lines += "\n" + head;
                columns = head.size();
            }
            lines += entry;
            columns += entry.size();
            lastSystem = seen.system;
        }
        if (counted.satellites.others() != 0) {
            lines += "\n      and " + std::to_string(counted.satellites.others()) +
                     " times satellites of larger numbers";
        }
    }
    if (!lines.empty()) {
        output << "\nSatellites and how often they were seen" << lines << "\n";
    }
}
