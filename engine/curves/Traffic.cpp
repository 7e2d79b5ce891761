#include "curves/Traffic.h"

#include <algorithm>

void TrafficLane::add(double seconds, bool isFaulty)
{
    (isFaulty ? bad : good).add(seconds);
    if (last && seconds > *last) {
        stepCurve.add(seconds, seconds - *last);
        keepGap({*last, seconds});
    }
    last = seconds;
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

void Traffic::add(const Key& key, double seconds, bool isFaulty)
{
    const auto known = all.find(key);
    if (known != all.end()) {
        known->second.add(seconds, isFaulty);
    } else if (all.size() < mostLanes) {
        all[key].add(seconds, isFaulty);
    } else {
        ++beyond;
    }
}
