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
    constexpr std::size_t askEvery = 1 << 14;
    std::size_t taken = 0;
    bool isStopped = false;
    times.each(range, next, [&](std::size_t place, double seconds) {
        take(index[place], place + 1, seconds);
        next = place + 1;
        isStopped = ++taken % askEvery == 0 && isAskedToStop();
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
        addTo(rates[*key], number, seconds);
    }
}

// The rate is known better and better, and looked at now and then.
void LaneData::addTo(Rate& rate, std::uint64_t number, double seconds)
{
    constexpr std::uint64_t judgeEvery = 256;
    rate.steps.add(std::llround(seconds * unitsPerSecond), {.number = number});
    const std::uint64_t count = rate.steps.messages();
    if (count % judgeEvery == 0 || count == judgeEvery / 8) {
        rate.shortestGap = shortestGapOf(rate.steps);
    }
    if (rate.last && seconds - *rate.last > rate.shortestGap) {
        rate.gapEnds.add(seconds);
    }
    rate.last = seconds;
}

double LaneData::shortestGapOf(const TypeRate& steps)
{
    constexpr double periods = 1.7;    // as rates have it, see TypeRate::expectedIn
    return steps.isRegular() ? periods * *steps.period() / unitsPerSecond
                             : std::numeric_limits<double>::infinity();
}

double LaneData::shortestGap(const Traffic::Key& lane) const
{
    const auto rate = rates.find(lane);
    return rate != rates.end() ? shortestGapOf(rate->second.steps)
                               : std::numeric_limits<double>::infinity();
}

const Density* LaneData::gapEnds(const Traffic::Key& lane) const
{
    const auto rate = rates.find(lane);
    return rate != rates.end() && rate->second.gapEnds.count() > 0 ? &rate->second.gapEnds
                                                                   : nullptr;
}
