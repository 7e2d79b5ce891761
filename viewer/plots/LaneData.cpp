#include "viewer/plots/LaneData.h"

#include <cmath>
#include <limits>

std::optional<Traffic::Key> laneOf(const IndexEntry& entry)
{
    if (entry.station == IndexEntry::none || entry.type == IndexEntry::none) {
        return std::nullopt;
    }
    Traffic::Key key{.type = entry.type};
    key.station.station = entry.station;
    key.station.mmsi = entry.mmsi;
    return key;
}

void LaneData::add(const MessageIndex& index, const IndexTimes& times,
                   const std::function<bool()>& isAskedToStop)
{
    constexpr std::size_t lookEvery = 1 << 14;
    std::size_t taken = 0;
    bool isStopped = false;
    times.each(range, next, [&](std::size_t place, double seconds) {
        take(index[place], place + 1, seconds);
        next = place + 1;
        isStopped = ++taken % lookEvery == 0 && isAskedToStop();
        return !isStopped;
    });
    next = isStopped ? next : std::max(next, times.size());
}

void LaneData::take(const IndexEntry& entry, std::uint64_t number, double seconds)
{
    const std::optional<Traffic::Key> key = laneOf(entry);
    if (!key) {
        counted.addDamage(seconds);
        return;
    }
    const bool isFaulty = entry.kindOfFind() == Found::What::misfit || entry.isShort != 0;
    counted.add(*key, {.seconds = seconds, .isFaulty = isFaulty});
    if (rates.size() < Traffic::mostLanes || rates.count(*key) != 0) {
        rates[*key].add(std::llround(seconds * unitsPerSecond), {.number = number});
    }
}

double LaneData::shortestGap(const Traffic::Key& lane) const
{
    constexpr double periods = 1.7;    // as rates have it, see TypeRate::expectedIn
    const auto rate = rates.find(lane);
    return rate != rates.end() && rate->second.isRegular()
               ? periods * *rate->second.period() / unitsPerSecond
               : std::numeric_limits<double>::infinity();
}
