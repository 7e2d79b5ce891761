// What came when, lane by lane, of a part of an index.
#pragma once

#include "viewer/plots/IndexTimes.h"

#include "check/TypeRate.h"
#include "curves/Traffic.h"

#include <functional>
#include <limits>
#include <map>
#include <memory>

// A lane for each type of each station; what has neither came damaged and has a lane of its own.
std::optional<Traffic::Key> laneOf(const IndexEntry& entry);

class LaneData {
public:
    explicit LaneData(const Range& wanted) : range(wanted) {}

    // Goes on with what is in the index by now. Ends early where it is asked to.
    void add(const MessageIndex& index, const IndexTimes& times,
             const std::function<bool()>& isAskedToStop);

    // So many places of the index were looked at.
    std::size_t seen() const { return next; }
    const Traffic& traffic() const { return counted; }
    // The seconds without a message of the lane in which one had to come; of a lane whose messages
    // come irregularly more than there are.
    double shortestGap(const Traffic::Key& lane) const;
    // Where times without messages ended that are longer than this, also those that are too many to
    // be kept one by one; null where there are none.
    const Density* gapEnds(const Traffic::Key& lane) const;

private:
    static constexpr double unitsPerSecond = 1000;

    struct Rate {
        TypeRate steps{};
        double shortestGap = std::numeric_limits<double>::infinity();
        std::optional<double> last{};
        Density gapEnds{};
    };
    static double shortestGapOf(const TypeRate& steps);
    static void addTo(Rate& rate, std::uint64_t number, double seconds);
    void take(const IndexEntry& entry, std::uint64_t number, double seconds);

    Range range;
    std::size_t next = 0;
    Traffic counted;
    std::map<Traffic::Key, Rate> rates;
};
