#include "commands/stats/StatsJson.h"

#include "base/Characters.h"
#include "commands/stats/StatsSystems.h"

StatsJson::StatsJson(Output& out, const FieldParts& fieldParts) : output(out), parts(fieldParts)
{
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writer.Key("inputs");
    writer.StartArray();
}

void StatsJson::input(const Stats& stats)
{
    writer.StartObject();
    text("input", validUtf8(stats.input));
    text("form", stats.form);
    writeStats(stats);
    writer.EndObject();
    writeOut();
}

void StatsJson::total(const Stats& stats, std::size_t)
{
    writer.EndArray();
    writer.Key("total");
    writer.StartObject();
    writeStats(stats);
    writer.EndObject();
    writer.EndObject();
    buffer.Put('\n');
    writeOut();
}

void StatsJson::writeStats(const Stats& stats)
{
    number("messages", stats.messages);
    number("unreported", stats.unreported);
    number("unknown_type", stats.unknown);
    number("misfit", stats.misfit);
    number("damaged", stats.damaged);
    number("truncated", stats.truncated);
    number("bytes_read", stats.read.bytesRead);
    number("bytes_skipped", stats.read.bytesSkipped);
    writeKinds(stats);
    writeTexts(stats);
    writeTypes("unreported_types", stats.unreportedTypes);
    writeTypes("unknown_types", stats.unknownTypes);
    writeEvents(stats);
}

void StatsJson::writeKinds(const Stats& stats)
{
    writer.Key("kinds");
    writer.StartArray();
    for (const auto* kind : stats.sortedKinds()) {
        const KindStats& counted = stats.kinds.at(kind);
        writer.StartObject();
        text("kind", kind->name);
        if (kind->typeNumber >= 0) {
            number("type", static_cast<std::uint64_t>(kind->typeNumber));
        }
        text("text", kind->text);
        number("count", counted.messages);
        writer.Key("stations");
        writer.StartArray();
        for (const auto& [station, numbers] : counted.stations) {
            writer.StartObject();
            number("station", station);
            writeStation(numbers);
        }
        if (counted.otherStations.messages != 0) {
            writer.StartObject();
            writer.Key("station");
            writer.Null();
            writeStation(counted.otherStations);
        }
        writer.EndArray();
        writeSatellites(*kind, counted.satellites);
        writer.EndObject();
    }
    writer.EndArray();
}

// The rest of an object that has been begun.
void StatsJson::writeStation(const StationStats& station)
{
    number("count", station.messages);
    if (station.time.first()) {
        const double seconds =
            static_cast<double>(station.time.elapsed()) * parts.secondsPerTimeUnit;
        number("first", *station.time.first());
        number("last", *station.time.last());
        writer.Key("seconds");
        writer.Double(seconds);
        if (seconds > 0) {
            writer.Key("per_second");
            writer.Double(static_cast<double>(station.time.steps()) / seconds);
        }
    }
    writer.EndObject();
}

void StatsJson::writeSatellites(const KindModel& kind, const SatelliteCounts& satellites)
{
    writer.Key("satellites");
    writer.StartArray();
    satellites.forEach([&](std::size_t system, std::size_t satellite, std::uint64_t times) {
        writer.StartObject();
        text("system", systemName(kind, system, parts));
        number("satellite", satellite);
        number("count", times);
        writer.EndObject();
    });
    writer.EndArray();
    number("other_satellites", satellites.others());
}

void StatsJson::writeTexts(const Stats& stats)
{
    writer.Key("texts");
    writer.StartArray();
    for (const auto& [characters, times] : stats.texts.sorted()) {
        std::string utf8;
        appendUtf8(utf8, characters);
        writer.StartObject();
        text("text", utf8);
        number("count", times);
        writer.EndObject();
    }
    writer.EndArray();
    number("other_texts", stats.texts.others());
}

void StatsJson::writeTypes(const char* key, const BoundedCounts<int>& types)
{
    writer.Key(key);
    writer.StartArray();
    for (const auto& [type, times] : types.sorted()) {
        writer.StartObject();
        writer.Key("type");
        writer.Int(type);
        number("count", times);
        writer.EndObject();
    }
    writer.EndArray();
}

void StatsJson::writeEvents(const Stats& stats)
{
    writer.Key("events");
    writer.StartArray();
    for (const auto& [name, times] : stats.events.sorted()) {
        writer.StartObject();
        text("event", name);
        number("count", times);
        writer.EndObject();
    }
    writer.EndArray();
    number("other_events", stats.events.others());
}

void StatsJson::number(const char* key, std::uint64_t value)
{
    writer.Key(key);
    writer.Uint64(value);
}

void StatsJson::text(const char* key, const std::string& value)
{
    writer.Key(key);
    writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
}

void StatsJson::writeOut()
{
    output.write({buffer.GetString(), buffer.GetSize()});
    buffer.Clear();
}
