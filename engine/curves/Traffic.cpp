#include "curves/Traffic.h"

#include <algorithm>

void TrafficLane::add(const Arrival& arrival)
{
    const double now = arrival.seconds;
    (arrival.isFaulty ? bad : good).add(now);
    if (!arrival.isPlaced) {
        return;
    }
    if (last && now > *last) {
        stepCurve.add(now, now - *last);
        keepGap({*last, now});
    }
    last = now;
}

// A heap with the shortest one on top.
void TrafficLane::keepGap(const Stretch& gap)
{
    const auto isLonger = [](const Stretch& a, const Stretch& b) {
        return a.to - a.from > b.to - b.from;
    };
    if (longest.size() == mostGaps) {
        if (!isLonger(gap, longest.front())) {
            return;
        }
        std::pop_heap(longest.begin(), longest.end(), isLonger);
        longest.pop_back();
    }
    longest.push_back(gap);
    std::push_heap(longest.begin(), longest.end(), isLonger);
}

std::vector<Stretch> TrafficLane::gapsAbove(double shortest) const
{
    std::vector<Stretch> gaps;
    std::copy_if(longest.begin(), longest.end(), std::back_inserter(gaps),
                 [&](const Stretch& gap) { return gap.to - gap.from > shortest; });
    std::sort(gaps.begin(), gaps.end(),
              [](const Stretch& a, const Stretch& b) { return a.from < b.from; });
    return gaps;
}

void Traffic::add(const Key& key, const TrafficLane::Arrival& arrival)
{
    const auto known = all.find(key);
    if (known != all.end()) {
        known->second.add(arrival);
    } else if (all.size() < mostLanes) {
        all[key].add(arrival);
    } else {
        ++beyond;
    }
}
