// One counter of messages: which of them it says are missing.
#pragma once

#include "check/Finding.h"

#include <cstdint>
#include <optional>
#include <vector>

// A message as its counter sees it.
struct Heard {
    unsigned sequence = 0;
    std::int64_t time = 0;        // in units of the input's clock
    std::uint64_t damaged = 0;    // messages before it in the input
    Place place{};
};

// Two messages one after the other between which some may be missing.
struct Gap {
    Heard from;
    Heard to;
    unsigned missing = 0;    // modulo the numbers there are
};

// A number that does not follow is judged when the next one is known: where that goes on from the
// number before, the one between was out of place, and nothing is missing.
class CounterTrack {
public:
    void add(const Heard& heard);
    // What comes next does not go on from what was.
    void restart();
    // Nothing more comes, or not yet.
    void settle();

    // Messages with the number that had to follow.
    std::uint64_t fits() const { return fitting; }
    std::uint64_t misplaced() const { return outOfPlace; }
    // Whether the numbers count messages: some stations send always the same, or any.
    bool counts() const;

    // Those that were settled. Beyond the first ones only how many messages were missing at least.
    const std::vector<Gap>& gaps() const { return found; }
    std::uint64_t missingInOthers() const { return beyond; }
    // Gives up gaps for which `isNone` is true, if it is time to make room.
    template <class Function>
    void makeRoom(Function isNone)
    {
        if (found.size() > room / 2 && found.size() % 16 == 0) {
            std::erase_if(found, isNone);
        }
    }

private:
    static constexpr std::size_t room = 256;

    double stepsIn(std::int64_t time) const;
    void accept(const Heard& heard);
    void keep(const Gap& gap);
    bool wasOutOfPlace(const Heard& next) const;

    std::optional<Heard> last;
    std::optional<Heard> doubtful;    // came after it and does not follow
    std::optional<unsigned> late;     // number of the last one that was out of place
    std::uint64_t fitting = 0;
    std::uint64_t same = 0;    // messages with the number of the one before
    std::uint64_t outOfPlace = 0;
    bool hasChanged = false;
    std::uint64_t timedSteps = 0;    // of those that fit, with the time that they took
    std::int64_t timedUnits = 0;
    std::vector<Gap> found;
    std::uint64_t beyond = 0;
};
