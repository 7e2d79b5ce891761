#include "commands/stats/StatsTable.h"

#include "base/Characters.h"
#include "base/Terminal.h"
#include "commands/stats/StatsSystems.h"

#include <array>
#include <cstdio>

namespace {

constexpr std::size_t width = 100;

std::string left(std::string text, std::size_t columns)
{
    if (text.size() > columns) {
        text.replace(columns - 3, text.npos, "...");
    }
    text.resize(columns, ' ');
    return text;
}

std::string right(const std::string& text, std::size_t columns)
{
    return std::string(text.size() < columns ? columns - text.size() : 0, ' ') + text;
}

std::string right(std::uint64_t number, std::size_t columns)
{
    return right(std::to_string(number), columns);
}

std::string withDecimals(double number, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, number);
    return text;
}

// A line of the table of kinds. Cells that are empty at its end leave no blanks.
std::string row(const std::array<std::string, 8>& cells)
{
    std::string line = right(cells[0], 4) + "  " + left(cells[1], 36);
    constexpr std::array<std::size_t, 6> widths = {8, 11, 7, 7, 13, 12};
    for (std::size_t i = 0; i < widths.size(); ++i) {
        line += right(cells[i + 2], widths[i]);
    }
    line.resize(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string typeText(const KindModel& kind)
{
    return kind.typeNumber >= 0 ? std::to_string(kind.typeNumber) : std::string();
}

const std::string& nameOf(const KindModel& kind)
{
    return kind.text.empty() ? kind.name : kind.text;
}

std::string timeText(const std::optional<std::uint64_t>& time)
{
    return time ? std::to_string(*time) : std::string();
}

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// A text in one line, in quotes, cut to the width of the table.
std::string shownText(const std::string& characters, std::size_t columns)
{
    std::string utf8;
    appendUtf8(utf8, characters);
    const std::string shown = printable(utf8);
    std::size_t room = columns - std::string_view("\"\"...").size();
    std::size_t end = 0;
    while (end < shown.size() && (room > 0 || continuesCharacter(shown[end]))) {
        room -= continuesCharacter(shown[end++]) ? 0 : 1;
    }
    return '"' + shown.substr(0, end) + (end < shown.size() ? "\"..." : "\"");
}

}    // namespace

void StatsTable::input(const Stats& stats)
{
    output << (isFirst ? "" : "\n") << printable(stats.input)
           << (stats.form.empty() ? "" : " (form: " + stats.form + ")") << "\n";
    isFirst = false;
    write(stats);
}

void StatsTable::total(const Stats& stats, std::size_t inputs)
{
    if (inputs > 1) {
        output << "\nTotal of " << std::to_string(inputs) << " inputs\n";
        write(stats);
    }
}

void StatsTable::write(const Stats& stats)
{
    writeSummary(stats);
    writeKinds(stats);
    writeSatellites(stats);
    writeTexts(stats);
    writeTypes("Types that are decoded but not reported", stats.unreportedTypes);
    writeTypes("Unknown types", stats.unknownTypes);
    writeEvents(stats);
}

void StatsTable::writeSummary(const Stats& stats)
{
    const std::pair<const char*, std::uint64_t> lines[] = {
        {"messages", stats.messages},
        {"decoded, but of kinds that are not reported", stats.unreported},
        {"of unknown type", stats.unknown},
        {"with content that does not fit their type", stats.misfit},
        {"damaged", stats.damaged},
        {"truncated", stats.truncated},
        {"bytes read", stats.read.bytesRead},
        {"bytes skipped", stats.read.bytesSkipped}};
    for (const auto& [name, number] : lines) {
        output << right(number, 14) << " " << name << "\n";
    }
}

void StatsTable::writeKinds(const Stats& stats)
{
    if (stats.kinds.empty()) {
        return;
    }
    output << "\n"
           << row({"Type", "Message", "Station", "Count", "First", "Last", "Seconds",
                   "Per second"});
    for (const auto* kind : stats.sortedKinds()) {
        const KindStats& counted = stats.kinds.at(kind);
        for (const auto& [station, numbers] : counted.stations) {
            writeStation(*kind, std::to_string(station), numbers);
        }
        if (counted.otherStations.messages != 0) {
            writeStation(*kind, counted.stations.empty() ? "" : "others", counted.otherStations);
        }
    }
    output << "First and Last are values of " << parts.time << ".\n";
}

void StatsTable::writeStation(const KindModel& kind, const std::string& name,
                              const StationStats& station)
{
    const double seconds = static_cast<double>(station.time.elapsed()) * parts.secondsPerTimeUnit;
    const auto steps = static_cast<double>(station.time.steps());
    output << row({typeText(kind), nameOf(kind), name, std::to_string(station.messages),
                   timeText(station.time.first()), timeText(station.time.last()),
                   station.time.first() ? withDecimals(seconds, 1) : "",
                   seconds > 0 ? withDecimals(steps / seconds, 3) : ""});
}

void StatsTable::writeSatellites(const Stats& stats)
{
    bool began = false;
    for (const auto* kind : stats.sortedKinds()) {
        std::string line;
        std::string lastSystem;
        const auto flush = [&] {
            if (!line.empty()) {
                output << (began ? "" : "\nSatellites and how often they were seen\n") << line
                       << "\n";
                began = true;
            }
        };
        const SatelliteCounts& satellites = stats.kinds.at(kind).satellites;
        satellites.forEach([&](std::size_t system, std::size_t satellite, std::uint64_t times) {
            const std::string name = systemName(*kind, system, parts);
            const std::string entry =
                "  " + std::to_string(satellite) + ": " + std::to_string(times);
            if (line.empty() || name != lastSystem || line.size() + entry.size() > width) {
                const bool goesOn = !line.empty() && name == lastSystem;
                flush();
                line = goesOn ? std::string(14, ' ')
                              : right(typeText(*kind), 4) + "  " + left(name, 8);
                lastSystem = name;
            }
            line += entry;
        });
        flush();
        if (satellites.others() != 0) {
            output << "      and " << std::to_string(satellites.others())
                   << " times satellites of larger numbers\n";
        }
    }
}

void StatsTable::writeTexts(const Stats& stats)
{
    if (stats.texts.isEmpty()) {
        return;
    }
    output << "\nText messages\n";
    for (const auto& [text, times] : stats.texts.sorted()) {
        output << right(times, 10) << "  " << shownText(text, width - 12) << "\n";
    }
    if (stats.texts.others() != 0) {
        output << right(stats.texts.others(), 10) << "  of further texts, which were not kept\n";
    }
}

void StatsTable::writeTypes(const char* title, const BoundedCounts<int>& types)
{
    if (types.isEmpty()) {
        return;
    }
    output << "\n" << title << "\n";
    for (const auto& [type, times] : types.sorted()) {
        output << right(times, 10) << "  type " << std::to_string(type) << "\n";
    }
    if (types.others() != 0) {
        output << right(types.others(), 10) << "  of further types\n";
    }
}

void StatsTable::writeEvents(const Stats& stats)
{
    if (stats.events.isEmpty()) {
        return;
    }
    output << "\nEvents\n";
    for (const auto& [name, times] : stats.events.sorted()) {
        output << right(times, 10) << "  " << name << "\n";
    }
    if (stats.events.others() != 0) {
        output << right(stats.events.others(), 10) << "  further events\n";
    }
}
