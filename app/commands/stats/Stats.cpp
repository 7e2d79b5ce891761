#include "commands/stats/Stats.h"

#include <tuple>

void TimeSpan::add(std::uint64_t time, std::uint64_t wrap)
{
    if (wrap != 0 && time >= wrap) {
        return;
    }
    if (lastTime) {
        auto step = static_cast<std::int64_t>(time) - static_cast<std::int64_t>(*lastTime);
        const auto half = static_cast<std::int64_t>(wrap / 2);
        if (wrap != 0 && step < -half) {
            step += static_cast<std::int64_t>(wrap);
        } else if (wrap != 0 && step > half) {
            step -= static_cast<std::int64_t>(wrap);
        }
        units += step;
        ++stepCount;
    } else {
        firstTime = time;
    }
    lastTime = time;
}

void TimeSpan::add(const TimeSpan& later)
{
    if (!firstTime) {
        firstTime = later.firstTime;
    }
    if (later.lastTime) {
        lastTime = later.lastTime;
    }
    units += later.units;
    stepCount += later.stepCount;
}

void StationStats::add(const StationStats& later)
{
    messages += later.messages;
    time.add(later.time);
}

void SatelliteCounts::add(std::uint64_t system, std::uint64_t satellite, std::uint64_t times)
{
    if (system >= maxSystems || satellite >= maxSatellites) {
        beyond += times;
        return;
    }
    if (system >= counts.size()) {
        counts.resize(system + 1);
    }
    counts[system][satellite] += times;
}

void SatelliteCounts::add(const SatelliteCounts& more)
{
    more.forEach([this](std::size_t system, std::size_t satellite, std::uint64_t times) {
        add(system, satellite, times);
    });
    beyond += more.beyond;
}

StationStats& KindStats::of(std::uint64_t station)
{
    if (stations.size() < maxStations) {
        return stations[station];
    }
    const auto known = stations.find(station);
    return known != stations.end() ? known->second : otherStations;
}

void KindStats::add(const KindStats& later)
{
    messages += later.messages;
    for (const auto& [station, stats] : later.stations) {
        of(station).add(stats);
    }
    otherStations.add(later.otherStations);
    satellites.add(later.satellites);
}

void Stats::add(const Stats& later)
{
    read.bytesRead += later.read.bytesRead;
    read.bytesSkipped += later.read.bytesSkipped;
    messages += later.messages;
    unreported += later.unreported;
    damaged += later.damaged;
    truncated += later.truncated;
    unknown += later.unknown;
    misfit += later.misfit;
    for (const auto& [kind, stats] : later.kinds) {
        kinds[kind].add(stats);
    }
    texts.add(later.texts);
    events.add(later.events);
    unreportedTypes.add(later.unreportedTypes);
    unknownTypes.add(later.unknownTypes);
}

std::vector<const KindModel*> Stats::sortedKinds() const
{
    std::vector<const KindModel*> sorted;
    for (const auto& entry : kinds) {
        sorted.push_back(entry.first);
    }
    std::sort(sorted.begin(), sorted.end(), [](const KindModel* a, const KindModel* b) {
        return std::tie(a->typeNumber, a->name) < std::tie(b->typeNumber, b->name);
    });
    return sorted;
}
