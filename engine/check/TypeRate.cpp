#include "check/TypeRate.h"

#include <cmath>
#include <cstdlib>
#include <numeric>

namespace {

constexpr std::uint64_t regularSteps = 4;
constexpr double mostChange = 1.5;    // of the period, before it is told

}    // namespace

std::optional<TypeRate::Change> TypeRate::add(std::int64_t time, const Place& place)
{
    ++count;
    std::optional<Change> change;
    const std::int64_t units = last ? time - *last : 0;
    if (units > 0) {
        if (steps.size() < mostSteps || steps.count(units) != 0) {
            ++steps[units];
            ++stepCount;
        }
        keepGap({units, latestPlace, place});
        recent[recentCount++] = units;
        change = recentCount == block ? compareBlock(place) : std::nullopt;
    }
    if (!last || units >= 0) {
        last = time;
        latest = time;
        latestPlace = place;
    }
    return change;
}

// Times are rounded to units, so a block is the mean of the steps near its middle one.
std::optional<TypeRate::Change> TypeRate::compareBlock(const Place& place)
{
    recentCount = 0;
    std::sort(recent.begin(), recent.end());
    const std::int64_t middleStep = recent[block / 2];
    const auto end = std::remove_if(recent.begin(), recent.end(),
                                    [&](std::int64_t units) { return !isNear(units, middleStep); });
    const double middle =
        std::accumulate(recent.begin(), end, 0.0) / static_cast<double>(end - recent.begin());
    const double before = regime == 0 ? middle : regime;
    const bool isOther = std::abs(middle - before) > 1 &&
                         (middle > before * mostChange || before > middle * mostChange);
    regime = isOther || regime == 0 ? middle : regime;
    return isOther ? std::optional(Change{before, middle, place}) : std::nullopt;
}

void TypeRate::keepGap(const Longest& gap)
{
    if (longest.size() == mostGaps && longest.back().units >= gap.units) {
        return;
    }
    const auto place = std::find_if(longest.begin(), longest.end(),
                                    [&](const Longest& other) { return other.units < gap.units; });
    longest.insert(place, gap);
    longest.resize(std::min(longest.size(), mostGaps));
}

// The step that this share of all steps does not exceed.
std::int64_t TypeRate::step(double share) const
{
    const double wanted = share * static_cast<double>(stepCount);
    double seen = 0;
    for (const auto& [units, times] : steps) {
        seen += static_cast<double>(times);
        if (seen >= wanted) {
            return units;
        }
    }
    return 0;
}

bool TypeRate::isNear(std::int64_t units, std::int64_t middle) const
{
    return std::abs(units - middle) <= std::max<std::int64_t>(1, middle / 2);
}

std::optional<double> TypeRate::period() const
{
    if (stepCount == 0) {
        return std::nullopt;
    }
    const std::int64_t middle = step(0.5);
    double sum = 0;
    double times = 0;
    for (const auto& [units, seen] : steps) {
        if (isNear(units, middle)) {
            sum += static_cast<double>(units) * static_cast<double>(seen);
            times += static_cast<double>(seen);
        }
    }
    return sum / times;
}

std::pair<std::int64_t, std::int64_t> TypeRate::usualSteps() const
{
    return {step(0.05), step(0.95)};
}

bool TypeRate::isRegular() const
{
    std::uint64_t near = 0;
    for (const auto& [units, times] : steps) {
        near += isNear(units, step(0.5)) ? times : 0;
    }
    return stepCount >= regularSteps && near * 10 >= stepCount * 7;
}

double TypeRate::expectedIn(std::int64_t units) const
{
    constexpr double rounding = 0.3;
    return isRegular()
               ? std::max(0.0, std::floor(static_cast<double>(units) / *period() + rounding) - 1)
               : 0;
}

double TypeRate::missingAround(std::uint64_t from, std::uint64_t to, std::int64_t units) const
{
    const auto gap = std::find_if(longest.begin(), longest.end(), [&](const Longest& candidate) {
        return candidate.from.number <= from && candidate.to.number >= to &&
               candidate.units <= 2 * units;
    });
    return gap != longest.end() && isRegular()
               ? std::max(0.0, std::round(static_cast<double>(gap->units) / *period()) - 1)
               : 0;
}
