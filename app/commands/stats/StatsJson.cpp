#include "commands/stats/StatsJson.h"

#include "base/Characters.h"
#include "commands/StationJson.h"

StatsJson::StatsJson(Output& out, const std::vector<const KindModel*>& kinds)
    : StatsCollector(out, kinds)
{
    json.beginObject();
    json.beginArray("inputs");
}

void StatsJson::writeInput(const Stats& stats, const std::string& name,
                           const ReaderCounters& counters)
{
    json.beginObject();
    json.member("input", validUtf8(name));
    json.member("form", std::string(counters.form));
    json.member("form_is_certain", counters.certainty != Certainty::likely);
    writeStats(stats);
    json.endObject();
    output << json.take();
}

void StatsJson::writeTotal(const Stats& stats, std::size_t)
{
    json.endArray();
    json.key("total");
    json.beginObject();
    writeStats(stats);
    json.endObject();
    json.endObject();
    output << json.take();
}

void StatsJson::writeStats(const Stats& stats)
{
    for (const NamedNumber& named : namedNumbers) {
        json.member(named.key, stats.*named.number);
    }
    json.objects("kinds", stats.kinds,
                 [&](const auto& counted) { writeKind(*counted.first, counted.second); });
    const auto writeCounts = [&](const char* key, const char* nameKey, const auto& counts) {
        json.objects(key, counts.sorted(), [&](const auto& counted) {
            json.member(nameKey, counted.first);
            json.member("count", counted.second);
        });
    };
    json.objects("texts", stats.texts.sorted(), [&](const auto& counted) {
        std::string utf8;
        appendUtf8(utf8, counted.first);
        json.member("text", utf8);
        json.member("count", counted.second);
    });
    json.member("other_texts", stats.texts.others);
    writeCounts("unreported_types", "type", stats.unreportedTypes);
    writeCounts("unknown_types", "type", stats.unknownTypes);
    writeCounts("events", "event", stats.events);
    json.member("other_events", stats.events.others);
}

void StatsJson::writeKind(const KindModel& kind, const KindStats& stats)
{
    json.member("kind", kind.name);
    if (kind.typeNumber >= 0) {
        json.member("type", kind.typeNumber);
    }
    json.member("text", kind.text);
    json.member("count", stats.messages);
    json.objects("stations", stats.allStations(), [&](const auto& counted) {
        writeSender(counted.first);
        json.member("count", counted.second.messages);
        writeTime(kind, counted.second);
    });
    json.objects("satellites", counter.satellitesOf(kind, stats),
                 [&](const StatsCounter::NamedSatellite& satellite) {
                     json.member("system", satellite.system);
                     json.member("satellite", satellite.seen.satellite);
                     json.member("name", satellite.name);
                     json.member("count", satellite.seen.times);
                 });
    json.member("other_satellites", stats.satellites.others());
}

void StatsJson::writeSender(const std::optional<Sender>& sender)
{
    std::optional<std::string> system;
    if (sender) {
        if (const RTCM2_system_s* known = systemAt(sender->system)) {
            system = known->name;
        }
    }
    writeStationId(json, sender ? std::optional(sender->station) : std::nullopt);
    json.member("system", system);
}

void StatsJson::writeTime(const KindModel& kind, const StationStats& station)
{
    if (!station.first) {
        return;
    }
    json.member("first", *station.first);
    json.member("last", station.last);
    json.member("first_seconds",
                counter.secondsOf(kind, static_cast<std::int64_t>(*station.first)));
    json.member("last_seconds", counter.secondsOf(kind, static_cast<std::int64_t>(station.last)));
    json.member("seconds", counter.secondsOf(kind, station.elapsed));
    if (station.elapsed > 0) {
        json.member("per_second", counter.messagesPerSecond(kind, station));
    }
}
