#include "commands/check/CheckText.h"

#include "base/Columns.h"
#include "base/PlainText.h"
#include "base/Terminal.h"
#include "check/CheckNumbers.h"
#include "forms/TimeStamp.h"

#include <cmath>

namespace {

constexpr std::size_t mostProblems = 50;

std::string timeText(const Place& place)
{
    return place.time ? minutesText(*place.time) : "";
}

std::string stationsText(const InputCheck& check)
{
    const std::size_t count = check.stations.size();
    return count == 1 ? check.stations.begin()->first.text() : std::to_string(count) + " stations";
}

std::string lossText(const Losses& losses)
{
    if (losses.lost > 0) {
        return (losses.isExact ? "" : "at least ") + std::to_string(losses.lost) + " lost";
    }
    return losses.areCounted ? "none lost"
                             : "whether any are lost cannot be told: they have no "
                               "numbers that count";
}

std::string verdictLine(const InputCheck& check)
{
    std::string text = verdictText(check.findings.worst(), check.messages);
    if (check.messages == 0) {
        return text + ": no message\n";
    }
    text += ": " + stationsText(check) + ", " + countText(check.messages, "message") + " in " +
            minutesText(check.seconds()) + ", " + lossText(check.losses);
    struct {
        std::uint64_t number;
        const char* words;
    } const counts[] = {{check.damaged, " damaged"},
                        {check.misfit, " that do not fit"},
                        {check.misplaced, " misplaced"},
                        {check.repeated, " repeated"},
                        {check.unknown, " of unknown type"},
                        {check.shortened, " shorter than they say"},
                        {check.truncated, " cut off at the end"},
                        {check.ofOthers, " of stations for which there was no room"}};
    for (const auto& [number, words] : counts) {
        text += number == 0 ? "" : ", " + std::to_string(number) + words;
    }
    return text + "\n";
}

std::string problemsText(const InputCheck& check)
{
    std::string text;
    const auto& problems = check.findings.kept();
    for (std::size_t i = 0; i < std::min(problems.size(), mostProblems); ++i) {
        text += "  " + lineOf(problems[i]) + "\n";
    }
    const std::uint64_t others =
        problems.size() - std::min(problems.size(), mostProblems) + check.findings.notKept();
    return others == 0 ? text : text + "  and " + countText(others, "further problem") + "\n";
}

std::string senderText(const StationId& id)
{
    return right(id.mmsi != 0 ? std::to_string(id.mmsi) : "", 9) + "  ";
}

// Of messages that came by AIS.
bool hasSenders(const InputCheck& check)
{
    return std::any_of(check.stations.begin(), check.stations.end(),
                       [](const auto& entry) { return entry.first.mmsi != 0; });
}

std::string ratesText(const InputCheck& check)
{
    const bool withSenders = hasSenders(check);
    std::string text = std::string("\n Type  Station  ") + (withSenders ? "     MMSI  " : "") +
                       "System    Messages     Every             Steps   Longest  "
                       "until   Expected\n";
    for (const auto& [key, rate] : check.rates) {
        const RTCM2_system_s* const system = systemAt(key.system);
        std::string line = right(std::to_string(key.type), 5) +
                           right(std::to_string(key.station.station), 9) + "  " +
                           (withSenders ? senderText(key.station) : "") +
                           left(system != nullptr ? system->name : "", 8) +
                           right(std::to_string(rate.messages()), 10);
        if (const auto period = rate.period()) {
            const auto [least, most] = rate.usualSteps();
            const TypeRate::Longest& longest = rate.longestGaps().front();
            line += right(withDecimals(*period * check.secondsOf(1), 2), 10) +
                    right(withDecimals(check.secondsOf(least), 1) + " to " +
                              withDecimals(check.secondsOf(most), 1),
                          18) +
                    right(withDecimals(check.secondsOf(longest.units), 1), 10) + "  " +
                    timeText(longest.to);
        }
        if (const ExpectedType* expected = check.expectation(key.type)) {
            line.resize(withSenders ? 101 : 90, ' ');
            line += right(withDecimals(expected->seconds, 2), 8);
        }
        text += line + "\n";
    }
    return text + "Times are seconds; until: minutes of the hour.\n";
}

std::string healthText(const InputCheck& check, const StationState& station)
{
    std::string text;
    const RTCM2_member_s* const row = check.healthRow();
    for (const HealthState& state : station.health()) {
        const char* const name = row != nullptr ? RTCM2_text_of(row, state.value) : nullptr;
        text += (text.empty() ? "" : ", ") +
                (name != nullptr ? std::string(name) : std::to_string(state.value)) + " from " +
                timeText(state.since);
    }
    return text;
}

// What is remarkable about a satellite; nothing for one that was there all the time.
std::string satelliteText(const InputCheck& check, const StationState& station,
                          const SatelliteState& satellite)
{
    std::string text;
    if (station.isLate(satellite)) {
        text += ", came " + timeText(satellite.firstPlace);
    }
    if (satellite.returns > 0) {
        text += ", away " + countText(satellite.returns, "time");
    }
    if (station.isAway(satellite, check.now())) {
        text += ", gone since " + timeText(satellite.lastPlace);
    }
    if (satellite.issueChanges > 0) {
        text += ", issue of data changed " + countText(satellite.issueChanges, "time") + ", last " +
                timeText(satellite.lastChange);
    }
    return text.empty() ? text : text.substr(2);
}

std::string satellitesText(const InputCheck& check, const StationState& station)
{
    std::string always;
    std::string others;
    for (const auto& [key, satellite] : station.satellites()) {
        const std::string text = satelliteText(check, station, satellite);
        if (text.empty()) {
            always += " " + satellite.name;
        } else {
            others += "  " + satellite.name + ": " + text + "\n";
        }
    }
    return (always.empty() ? "" : "  Satellites without change:" + always + "\n") + others;
}

std::string accuracyText(const KindModel& kind, const StationState::Accuracy& accuracy)
{
    std::uint64_t all = 0;
    for (const auto& [value, times] : accuracy.classes) {
        all += times;
    }
    std::string text = "  " + kind.name + ", " + accuracy.field->name + ":";
    for (const auto& [value, times] : accuracy.classes) {
        const char* const name = RTCM2_text_of(accuracy.field->row, value);
        const double share = 100 * static_cast<double>(times) / static_cast<double>(all);
        text += std::string(text.back() == ':' ? " " : ", ") +
                (name != nullptr ? name : std::to_string(value)) + " " + withDecimals(share, 1) +
                " %";
    }
    return text + "\n";
}

std::string pointText(const RTCM2_system_s* system, const PointState& point)
{
    std::string text = std::string("  ") + point.point->name +
                       (system != nullptr ? std::string(" (") + system->name + "):" : ":");
    for (const double metres : point.metres) {
        text += " " + withDecimals(metres, 4);
    }
    return text + " m from " + timeText(point.since) + "\n";
}

std::string stationText(const InputCheck& check, const StationId& id, const StationState& station)
{
    std::string text = "\nS" + id.text().substr(1) + ": " + countText(station.messages, "message") +
                       ", last " + timeText(station.lastPlace) +
                       "\n  Health: " + healthText(check, station) + "\n";
    for (const auto& [key, point] : station.points()) {
        text += pointText(systemAt(static_cast<std::uint32_t>(key[1])), point);
    }
    text += satellitesText(check, station);
    for (const auto& [kind, accuracy] : station.accuracies()) {
        text += accuracyText(*kind, accuracy);
    }
    return text;
}

std::string damageText(const InputCheck& check)
{
    double most = 0;
    std::size_t place = 0;
    const auto& stretches = check.damage.stretches();
    for (std::size_t i = 0; i < stretches.size(); ++i) {
        const double share = stretches[i].all == 0 ? 0
                                                   : static_cast<double>(stretches[i].bad) /
                                                         static_cast<double>(stretches[i].all);
        place = share > most ? i : place;
        most = std::max(share, most);
    }
    const double each = check.secondsOf(check.damage.unitsEach());
    return most == 0 ? ""
                     : "\nMost damage: " + withDecimals(100 * most, 1) + " % of what came in the " +
                           minutesText(each) + " from " +
                           minutesText(static_cast<double>(place) * each) + " after the start\n";
}

}    // namespace

const char* verdictText(Severity severity, std::uint64_t messages)
{
    if (messages == 0) {
        return "UNKNOWN";
    }
    return severity == Severity::good      ? "OK"
           : severity == Severity::warning ? "WARNING"
                                           : "CRITICAL";
}

const char* nameOf(Severity severity)
{
    return severity == Severity::good ? "good"
                                      : (severity == Severity::warning ? "warning" : "critical");
}

std::string lineOf(const Finding& problem)
{
    std::string text = std::string(nameOf(problem.severity)) + ": ";
    if (problem.place.number > 0) {
        text += "message " + std::to_string(problem.place.number) + ", byte " +
                std::to_string(problem.place.byte);
        text += problem.place.time ? ", " + minutesText(*problem.place.time) : "";
        text += problem.place.received ? ", received " + timeText(*problem.place.received) : "";
        text += ": ";
    }
    return printable(text + problem.text);
}

std::string checkText(const InputCheck& check, std::optional<double> age)
{
    std::string text =
        verdictLine(check) + "  " + printable(check.name) + "\n" + problemsText(check);
    if (age) {
        text += "  the last message came " + withDecimals(*age, 0) + " s before the end\n";
    }
    if (!check.rates.empty()) {
        text += ratesText(check);
    }
    for (const auto& [id, station] : check.stations) {
        text += stationText(check, id, station);
    }
    return text + damageText(check);
}
