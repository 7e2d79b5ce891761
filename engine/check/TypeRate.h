// How often messages of one type come.
#pragma once

#include "check/Finding.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

class TypeRate {
public:
    struct Change {
        double before = 0;    // units from one message to the next
        double after = 0;
        Place place{};
    };
    struct Longest {
        std::int64_t units = 0;
        Place from{};
        Place to{};
    };

    // Messages with the time of the one before belong to it. A change of rate is given where it is
    // seen.
    std::optional<Change> add(std::int64_t time, const Place& place);
    // What comes next does not go on from what was.
    void restart() { last.reset(); }

    std::uint64_t messages() const { return count; }
    std::int64_t lastTime() const { return latest; }
    const Place& lastPlace() const { return latestPlace; }
    // From a message to the next one, mostly: the middle step, made exact by those that differ from
    // it by less than half or a unit of time. Unset where there are no steps.
    std::optional<double> period() const;
    // Below and above which 5 of 100 steps are.
    std::pair<std::int64_t, std::int64_t> usualSteps() const;
    // Enough steps are known, and most are near the period.
    bool isRegular() const;
    // So many messages had to come in a time without any; 0 where that is not regular.
    double expectedIn(std::int64_t units) const;
    // So many would have come in one of the longest gaps, if that is around these numbers of the
    // input and mostly the time between them; else 0.
    double missingAround(std::uint64_t from, std::uint64_t to, std::int64_t units) const;
    const std::vector<Longest>& longestGaps() const { return longest; }

private:
    static constexpr std::size_t mostSteps = 256;    // different ones
    static constexpr std::size_t mostGaps = 16;
    static constexpr std::size_t block = 16;

    std::int64_t step(double share) const;
    bool isNear(std::int64_t units, std::int64_t middle) const;
    std::optional<Change> compareBlock(const Place& place);
    void keepGap(const Longest& gap);

    std::uint64_t count = 0;
    std::optional<std::int64_t> last;
    std::int64_t latest = 0;
    Place latestPlace{};
    std::map<std::int64_t, std::uint64_t> steps;    // how often each was seen
    std::uint64_t stepCount = 0;
    std::array<std::int64_t, block> recent{};    // the latest steps, until they fill a block
    std::size_t recentCount = 0;
    double regime = 0;    // middle step of the blocks before; 0: none yet
    std::vector<Longest> longest;
};
