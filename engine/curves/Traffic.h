// What came when: a lane for each type of each station.
#pragma once

#include "pictures/Curve.h"
#include "pictures/Density.h"
#include "pictures/Lanes.h"
#include "session/StationId.h"

#include <compare>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

class TrafficLane {
public:
    struct Arrival {
        double seconds = 0;
        bool isFaulty = false;
        bool isPlaced = true;    // else the time to the one before says nothing
    };
    void add(const Arrival& arrival);

    const Density& messages() const { return good; }
    const Density& faulty() const { return bad; }
    // The time from each message to the next one.
    const Curve& steps() const { return stepCurve; }
    // The longest times without a message that are longer than so many seconds, in their order.
    std::vector<Stretch> gapsAbove(double shortest) const;

private:
    static constexpr std::size_t mostGaps = 64;

    void keepGap(const Stretch& gap);

    Density good;
    Density bad;
    Curve stepCurve;
    std::optional<double> last;
    std::vector<Stretch> longest;
};

class Traffic {
public:
    struct Key {
        StationId station{};
        unsigned type = 0;
        std::uint32_t system = 0;

        auto operator<=>(const Key&) const = default;
    };

    static constexpr std::size_t mostLanes = 256;

    void add(const Key& key, const TrafficLane::Arrival& arrival);
    // Something that came damaged, of whom nobody knows.
    void addDamage(double seconds) { broken.add(seconds); }

    const std::map<Key, TrafficLane>& lanes() const { return all; }
    const Density& damage() const { return broken; }
    // Messages for which there was no lane.
    std::uint64_t others() const { return beyond; }

private:
    std::map<Key, TrafficLane> all;
    Density broken;
    std::uint64_t beyond = 0;
};
