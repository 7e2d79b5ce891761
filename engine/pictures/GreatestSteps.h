// The greatest steps of a line from one value to the next.
#pragma once

#include "pictures/Canvas.h"

#include <algorithm>
#include <cmath>
#include <vector>

struct Step {
    Point from;    // x: time, y: value
    Point to;
    double slope = 0;    // of the line before it

    // By how much it leaves the way on which the line was, or the value before.
    double height() const
    {
        const double rise = to.y - from.y;
        return std::min(std::abs(rise), std::abs(rise - slope * (to.x - from.x)));
    }
};

// So many of them as are worth a look, however many there are.
class GreatestSteps {
public:
    void add(const Step& step)
    {
        if (step.height() == 0 || (all.size() == most && !isHigher(step, all.front()))) {
            return;
        }
        if (all.size() == most) {
            std::pop_heap(all.begin(), all.end(), isHigher);
            all.pop_back();
        }
        all.push_back(step);
        std::push_heap(all.begin(), all.end(), isHigher);
    }

    // In no order.
    const std::vector<Step>& steps() const { return all; }

private:
    static constexpr std::size_t most = 32;

    static bool isHigher(const Step& a, const Step& b) { return a.height() > b.height(); }

    std::vector<Step> all;    // a heap with the lowest one on top
};
