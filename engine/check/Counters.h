// Which messages share a counter.
#pragma once

#include "check/CounterTrack.h"

#include "session/StationId.h"

#include <functional>
#include <map>

// Most stations count all that they send; some count the messages of each system of satellites by
// themselves, and some senders count through the messages of several stations. All three are
// followed, and that one is right by which most messages have the number that had to follow.
class Counters {
public:
    // `noSystem` is the index of an unknown system.
    explicit Counters(std::uint32_t noSystem) : unknown(noSystem) {}

    void add(const StationId& id, std::uint32_t system, const Heard& heard);
    // The station's messages do not go on from what was.
    void restart(const StationId& id);
    void settle();

    // A counter, and whose messages it counts: unset for all stations or systems.
    struct Counted {
        CounterTrack* track;
        std::optional<StationId> station{};
        std::optional<std::uint32_t> system{};
    };
    std::vector<Counted> chosen();

private:
    struct Station {
        CounterTrack whole;
        std::map<std::uint32_t, CounterTrack> systems;    // unknown ones go where they fit
        std::map<std::uint32_t, unsigned> next;           // number that each of these expects

        std::uint64_t fitsOfSystems() const;
        bool countsSystems() const { return fitsOfSystems() > whole.fits(); }
    };

    std::uint32_t systemFor(const Station& station, std::uint32_t system, const Heard& heard) const;

    std::uint32_t unknown;
    CounterTrack all;
    std::map<StationId, Station> stations;
};
