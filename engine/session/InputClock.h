// One time for all messages of an input.
#pragma once

#include "session/StationId.h"

#include <cstdint>
#include <map>
#include <set>
#include <utility>

// Every message carries the time of the hour, and those of each system of satellites count in
// another one. Each sender's own clock is followed from message to message, through the end of the
// hour, and read as time since the first message of the input. A clock that is heard for the first
// time shows what that of another station shows for the same system, or else the time of the
// message heard last. What comes by AIS is longer on its way from one sender than from another, and
// comes seldom: each of these clocks is compared with itself alone. Steps of half an hour or more
// cannot be told from shorter ones or from steps back.
class InputClock {
public:
    enum class Kind : std::uint8_t {
        normal,
        misplaced,    // so far behind the others that it is not of its place, or the first of many
        jumped,       // the second so far behind: time goes on from here
    };
    struct Reading {
        std::int64_t time = 0;    // units since the first message
        Kind kind = Kind::normal;
        std::int64_t behind = 0;    // units, of a message that is not normal
    };

    // `unitsAllowed`: so far back a message may be. `noSystem` is the index of an unknown system.
    InputClock(std::uint64_t unitsPerHour, std::int64_t unitsAllowed, std::uint32_t noSystem)
        : wrap(static_cast<std::int64_t>(unitsPerHour)), allowed(unitsAllowed), unknown(noSystem)
    {
    }

    Reading read(const StationId& station, std::uint32_t system, std::uint64_t shown);

    std::int64_t now() const { return latest; }

private:
    struct Hand {
        std::int64_t shown = 0;
        std::int64_t time = 0;
    };

    std::int64_t firstTime(std::uint32_t system, std::int64_t shown) const;
    std::int64_t stepOf(const Hand& hand, std::int64_t shown) const;
    Hand& handFor(const StationId& station, std::uint32_t system, std::int64_t shown);

    static constexpr std::size_t mostHands = 256;

    std::int64_t wrap;
    std::int64_t allowed;
    std::uint32_t unknown;
    std::map<std::pair<StationId, std::uint32_t>, Hand> hands;
    Hand others;
    std::set<StationId> doubted;    // stations the last message of which was misplaced
    std::int64_t latest = 0;
};
