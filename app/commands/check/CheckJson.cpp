#include "commands/check/CheckJson.h"

#include "base/Characters.h"
#include "commands/StationJson.h"
#include "commands/check/CheckText.h"
#include "forms/TimeStamp.h"

namespace {

void writePlace(JsonWriter& json, const Place& place)
{
    if (place.number > 0) {
        json.member("number", place.number);
        json.member("byte", place.byte);
    }
    if (place.time) {
        json.member("time", *place.time);
    }
    if (place.received) {
        json.member("received", timeText(*place.received));
    }
}

// Null where it is unknown.
void writeSystem(JsonWriter& json, std::uint32_t index)
{
    const RTCM2_system_s* const system = systemAt(index);
    json.member("system",
                system != nullptr ? std::optional<std::string>(system->name) : std::nullopt);
}

void writeProblems(JsonWriter& json, const InputCheck& check)
{
    json.objects("problems", check.findings.kept(), [&](const Finding& problem) {
        json.member("severity", nameOf(problem.severity));
        json.member("text", validUtf8(problem.text));
        writePlace(json, problem.place);
    });
    json.member("other_problems", check.findings.notKept());
}

void writeLosses(JsonWriter& json, const Losses& losses)
{
    json.member("lost", losses.lost);
    json.member("lost_is_exact", losses.isExact && losses.areCounted);
    json.member("numbers_count", losses.areCounted);
    json.objects("gaps", losses.all, [&](const Loss& loss) {
        writeStationId(json, loss.station);
        json.member("missing", loss.least);
        json.member("is_exact", loss.isExact);
        json.member("damaged", loss.damaged);
        json.member("seconds", loss.seconds);
        writePlace(json, loss.place);
    });
}

void writeRates(JsonWriter& json, const InputCheck& check)
{
    json.objects("types", check.rates, [&](const auto& entry) {
        const auto& [key, rate] = entry;
        json.member("type", key.type);
        writeStationId(json, key.station);
        writeSystem(json, key.system);
        json.member("count", rate.messages());
        if (const auto period = rate.period()) {
            const auto [least, most] = rate.usualSteps();
            json.member("period", *period * check.secondsOf(1));
            json.member("usual_least", check.secondsOf(least));
            json.member("usual_most", check.secondsOf(most));
            json.member("longest", check.secondsOf(rate.longestGaps().front().units));
        }
        if (const ExpectedType* expected = check.expectation(key.type)) {
            json.member("expected", expected->seconds);
        }
    });
}

void writeSatellite(JsonWriter& json, const InputCheck& check, const StationState& station,
                    std::uint32_t system, const SatelliteState& satellite)
{
    writeSystem(json, system);
    json.member("name", satellite.name);
    json.member("count", satellite.times);
    json.member("first", satellite.firstPlace.time);
    json.member("last", satellite.lastPlace.time);
    json.member("returns", satellite.returns);
    json.member("is_gone", station.isAway(satellite, check.now()));
    json.member("issue_changes", satellite.issueChanges);
    json.member("last_issue_change", satellite.lastChange.time);
}

void writeAccuracies(JsonWriter& json, const StationState& station)
{
    json.objects("accuracies", station.accuracies(), [&](const auto& entry) {
        json.member("kind", entry.first->name);
        json.member("field", entry.second.field->name);
        json.objects("classes", entry.second.classes, [&](const auto& counted) {
            json.member("value", counted.first);
            const char* const text = RTCM2_text_of(entry.second.field->row, counted.first);
            json.member("text", text != nullptr ? std::optional<std::string>(text) : std::nullopt);
            json.member("count", counted.second);
        });
    });
}

void writeStation(JsonWriter& json, const InputCheck& check, const StationId& id,
                  const StationState& station)
{
    writeStationId(json, id);
    json.member("count", station.messages);
    json.objects("health", station.health(), [&](const HealthState& state) {
        json.member("value", state.value);
        writePlace(json, state.since);
    });
    json.member("health_changes", station.healthChanges());
    json.objects("points", station.points(), [&](const auto& entry) {
        json.member("point", entry.second.point->name);
        writeSystem(json, static_cast<std::uint32_t>(entry.first[1]));
        json.member("x", entry.second.metres[0]);
        json.member("y", entry.second.metres[1]);
        json.member("z", entry.second.metres[2]);
        json.member("moves", entry.second.moves);
        writePlace(json, entry.second.since);
    });
    json.objects("satellites", station.satellites(), [&](const auto& entry) {
        writeSatellite(json, check, station, entry.first.first, entry.second);
    });
    writeAccuracies(json, station);
}

void writeDamage(JsonWriter& json, const InputCheck& check)
{
    json.member("seconds_of_stretch", check.secondsOf(check.damage.unitsEach()));
    json.objects("stretches", check.damage.stretches(), [&](const DamageCurve::Stretch& stretch) {
        json.member("count", stretch.all);
        json.member("bad", stretch.bad);
    });
}

}    // namespace

void writeJson(JsonWriter& json, const InputCheck& check, std::optional<double> age)
{
    json.beginObject();
    json.member("input", validUtf8(check.name));
    json.member("verdict", verdictText(check.findings.worst(), check.messages));
    struct {
        const char* key;
        std::uint64_t number;
    } const counts[] = {{"messages", check.messages},         {"damaged", check.damaged},
                        {"truncated", check.truncated},       {"misfit", check.misfit},
                        {"misplaced", check.misplaced},       {"repeated", check.repeated},
                        {"unknown_type", check.unknown},      {"short", check.shortened},
                        {"of_other_stations", check.ofOthers}};
    for (const auto& [key, number] : counts) {
        json.member(key, number);
    }
    json.member("seconds", check.seconds());
    if (age) {
        json.member("age", *age);
    }
    writeLosses(json, check.losses);
    writeProblems(json, check);
    writeRates(json, check);
    json.objects("stations", check.stations,
                 [&](const auto& entry) { writeStation(json, check, entry.first, entry.second); });
    writeDamage(json, check);
    json.endObject();
}
