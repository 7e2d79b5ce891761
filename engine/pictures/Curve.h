// A quantity over time, thinned while its values come.
#pragma once

#include "pictures/Axis.h"
#include "pictures/Bins.h"
#include "pictures/Canvas.h"

#include <cstdint>
#include <vector>

// Its memory has a bound, however many values come and however long that takes. Of the values that
// fall into one bin the first, the last, the least and the greatest stay as they were.
class Curve {
public:
    struct Bin {
        std::uint64_t count = 0;
        Point first;    // x: time, y: value
        Point last;
        Point least;
        Point greatest;
        bool isApart = false;        // the first one is not joined to what came before
        std::uint32_t breaks = 0;    // in it
        double brokenAt = 0;         // the last of them

        void merge(const Bin& later);
    };

    explicit Curve(std::size_t mostBins = 512) : bins(mostBins, narrowest) {}

    void add(double x, double y);
    // What comes next is not joined to what came before.
    void breakAt(double x);

    bool isEmpty() const { return count == 0; }
    std::uint64_t values() const { return count; }
    // Of all values.
    Range valueRange() const;
    // Values further apart in time belong to different lines.
    double longestJoin() const;
    // Mostly several values at the same time, so that no line leads from one to the next.
    bool isScattered() const { return together * 4 > count; }

    // The bins as so many columns through the range, without those that are empty.
    std::vector<Bin> columns(const Range& range, std::size_t wanted) const;

private:
    static constexpr double narrowest = 1.0 / 64;    // seconds

    Bins<Bin> bins;
    std::uint64_t count = 0;
    std::uint64_t together = 0;    // values at the time of the one before
    double firstX = 0;
    double lastX = 0;
    bool isBroken = true;
};
