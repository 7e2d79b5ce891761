#include "pictures/Curve.h"

#include <algorithm>
#include <optional>

void Curve::Bin::merge(const Bin& later)
{
    if (later.breaks > 0) {
        brokenAt = later.brokenAt;
        breaks += later.breaks;
    }
    if (later.count == 0) {
        return;
    }
    if (count == 0) {
        const std::uint32_t allBreaks = breaks;
        const double at = brokenAt;
        *this = later;
        breaks = allBreaks;
        brokenAt = at;
        return;
    }
    count += later.count;
    last = later.last;
    least = later.least.y < least.y ? later.least : least;
    greatest = later.greatest.y > greatest.y ? later.greatest : greatest;
}

void Curve::add(double x, double y)
{
    if (count++ == 0) {
        firstX = x;
    } else if (x == lastX) {
        ++together;
    }
    lastX = x;
    Bin& bin = bins.at(x);
    const Point point{x, y};
    if (bin.count++ == 0) {
        bin.first = bin.least = bin.greatest = point;
        bin.isApart = isBroken;
    } else if (y < bin.least.y) {
        bin.least = point;
    } else if (y > bin.greatest.y) {
        bin.greatest = point;
    }
    bin.last = point;
    isBroken = false;
}

Range Curve::valueRange() const
{
    std::optional<Range> range;
    for (const Bin& bin : bins.all()) {
        if (bin.count > 0) {
            range = {std::min(bin.least.y, range ? range->low : bin.least.y),
                     std::max(bin.greatest.y, range ? range->high : bin.greatest.y)};
        }
    }
    return range.value_or(Range{});
}

void Curve::breakAt(double x)
{
    isBroken = true;
    Bin& bin = bins.at(x);
    ++bin.breaks;
    bin.brokenAt = x;
}

double Curve::longestJoin() const
{
    constexpr double usualSteps = 5;
    constexpr double shortest = 10;    // seconds
    const double step = count > 1 ? (lastX - firstX) / static_cast<double>(count - 1) : 0;
    return std::max(shortest, usualSteps * step);
}

std::vector<Curve::Bin> Curve::columns(const Range& range, std::size_t wanted) const
{
    std::vector<Bin> result;
    double column = -1;
    for (std::size_t i = 0; i < bins.all().size(); ++i) {
        const Bin& bin = bins.all()[i];
        if (bin.count == 0 && bin.breaks == 0) {
            continue;
        }
        const double middle = bins.beginOf(i) + bins.binWidth() / 2;
        const double place = std::floor(range.share(middle) * static_cast<double>(wanted));
        if (place == column && !result.empty()) {
            result.back().merge(bin);
        } else {
            result.push_back(bin);
        }
        column = place;
    }
    return result;
}
