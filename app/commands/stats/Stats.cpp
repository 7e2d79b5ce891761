#include "commands/stats/Stats.h"

#include <tuple>

void StationStats::addTime(std::uint64_t time, std::uint64_t wrap)
{
    if (time >= wrap) {
        return;
    }
    if (first) {
        const auto whole = static_cast<std::int64_t>(wrap);
        auto step = static_cast<std::int64_t>(time) - static_cast<std::int64_t>(last);
        if (step < -whole / 2) {
            step += whole;
        } else if (step > whole / 2) {
            step -= whole;
        }
        elapsed += step;
        ++steps;
    } else {
        first = time;
    }
    last = time;
}

StationStats& StationStats::operator+=(const StationStats& later)
{
    messages += later.messages;
    if (later.first) {
        first = first ? first : later.first;
        last = later.last;
    }
    elapsed += later.elapsed;
    steps += later.steps;
    return *this;
}

// Of a system that has no room yet, or beyond what there is room for.
void SatelliteCounts::addNew(const Seen& seen)
{
    if (seen.system >= maxSystems || seen.satellite >= maxSatellites) {
        beyond += seen.times;
        return;
    }
    counts.resize((seen.system + 1) * maxSatellites);
    counts[seen.system * maxSatellites + seen.satellite] += seen.times;
}

SatelliteCounts& SatelliteCounts::operator+=(const SatelliteCounts& more)
{
    for (const Seen& seen : more.sorted()) {
        add(seen);
    }
    beyond += more.beyond;
    return *this;
}

std::vector<SatelliteCounts::Seen> SatelliteCounts::sorted() const
{
    std::vector<Seen> all;
    for (std::uint64_t i = 0; i < counts.size(); ++i) {
        if (counts[i] != 0) {
            all.push_back({i / maxSatellites, i % maxSatellites, counts[i]});
        }
    }
    return all;
}

KindStats& KindStats::operator+=(const KindStats& later)
{
    messages += later.messages;
    stations += later.stations;
    satellites += later.satellites;
    return *this;
}

std::vector<std::pair<std::optional<Sender>, StationStats>> KindStats::allStations() const
{
    std::vector<std::pair<std::optional<Sender>, StationStats>> all(stations.values.begin(),
                                                                    stations.values.end());
    if (stations.others.messages != 0) {
        all.emplace_back(std::nullopt, stations.others);
    }
    return all;
}

bool KindOrder::operator()(const KindModel* a, const KindModel* b) const
{
    return std::tie(a->typeNumber, a->name) < std::tie(b->typeNumber, b->name);
}

bool Stats::haveSenders() const
{
    return std::any_of(kinds.begin(), kinds.end(), [](const auto& kind) {
        const auto& stations = kind.second.stations.values;
        return std::any_of(stations.begin(), stations.end(),
                           [](const auto& entry) { return entry.first.station.mmsi != 0; });
    });
}

Stats& Stats::operator+=(const Stats& later)
{
    for (const NamedNumber& named : namedNumbers) {
        this->*named.number += later.*named.number;
    }
    for (const auto& [kind, stats] : later.kinds) {
        kinds[kind] += stats;
    }
    texts += later.texts;
    unreportedTypes += later.unreportedTypes;
    unknownTypes += later.unknownTypes;
    events += later.events;
    return *this;
}
