#include "session/InputClock.h"

#include <algorithm>
#include <cstdlib>

// To the nearest time that the hour allows.
std::int64_t InputClock::stepOf(const Hand& hand, std::int64_t shown) const
{
    const std::int64_t step = shown - hand.shown;
    return step < -wrap / 2 ? step + wrap : step > wrap / 2 ? step - wrap : step;
}

// As other stations' clocks of the system say it, if that can be.
std::int64_t InputClock::firstTime(std::uint32_t system, std::int64_t shown) const
{
    const std::int64_t mostAhead = 12 * allowed;
    for (const auto& [key, hand] : hands) {
        const std::int64_t ahead = hand.time + stepOf(hand, shown) - latest;
        if (key.second == system && ahead >= -allowed && ahead <= mostAhead) {
            return latest + ahead;
        }
    }
    return latest;
}

// A message of unknown system goes by the clock of its station that comes nearest.
InputClock::Hand& InputClock::handFor(const StationId& station, std::uint32_t system,
                                      std::int64_t shown)
{
    if (system == unknown) {
        Hand* nearest = nullptr;
        const auto distance = [&](const Hand& hand) {
            return std::abs(hand.time + stepOf(hand, shown) - latest);
        };
        for (auto hand = hands.lower_bound({station, 0});
             hand != hands.end() && hand->first.first == station; ++hand) {
            if (nearest == nullptr || distance(hand->second) < distance(*nearest)) {
                nearest = &hand->second;
            }
        }
        if (nearest != nullptr) {
            return *nearest;
        }
    }
    const auto known = hands.find({station, system});
    if (known != hands.end()) {
        return known->second;
    }
    const Hand fresh{shown, firstTime(system, shown)};
    return hands.size() < mostHands ? hands.emplace(std::pair(station, system), fresh).first->second
                                    : others = fresh;
}

InputClock::Reading InputClock::read(const StationId& station, std::uint32_t system,
                                     std::uint64_t shown)
{
    const auto number = static_cast<std::int64_t>(shown);
    Hand& hand = handFor(station, system, number);
    const std::int64_t time = hand.time + stepOf(hand, number);
    const std::int64_t behind = (station.mmsi != 0 ? hand.time : latest) - time;
    if (behind <= allowed) {
        hand = {number, time};
        doubted.erase(station);
        latest = std::max(latest, time);
        return {time, Kind::normal, 0};
    }
    if (doubted.insert(station).second) {
        return {latest, Kind::misplaced, behind};
    }
    doubted.erase(station);
    std::erase_if(hands, [&](const auto& entry) { return entry.first.first == station; });
    handFor(station, system, number) = {number, latest};
    return {latest, Kind::jumped, behind};
}
