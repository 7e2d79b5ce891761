// How far a recording has come, as its messages tell it.
#pragma once

#include "format/MessageTime.h"
#include "session/Found.h"
#include "session/InputClock.h"

#include <optional>
#include <vector>

// Goes by the times at which messages were received, where the first message that tells a time has
// that one, else by the times of the hour that messages carry.
class MessageClock {
public:
    struct Reading {
        double seconds = 0;    // since the first message of the input; never less than before
        double back = 0;       // seconds that the time stepped back by, to go on from there
    };

    // The model must outlive the clock.
    explicit MessageClock(const FormatModel& model);

    // Of a message, known or not. One that tells no time belongs to the message before it.
    Reading read(const Found& found);

private:
    Reading readReceived(std::int64_t microseconds);
    Reading readHour(const Found& found, std::uint64_t shown);

    struct Kind {
        MessageTime time;
        MessageSystem system;
    };

    std::vector<std::optional<Kind>> kinds;    // by their number
    double secondsPerUnit = 1;
    std::optional<InputClock> hour;    // unset where the format tells no time
    bool goesByHour = false;
    std::optional<std::int64_t> lastReceived;
    double received = 0;    // seconds
};
