// How far a recording has come, as its messages tell it.
#pragma once

#include "session/Found.h"
#include "session/HourClock.h"

#include <optional>

// Goes by the times at which messages were received, where the first message that tells a time has
// that one, else by the times of the hour that messages carry.
class MessageClock {
public:
    struct Reading {
        double seconds = 0;    // never less than before
        double back = 0;       // seconds that the time stepped back by, to go on from there
    };

    // The model must outlive the clock.
    explicit MessageClock(const FormatModel& model) : sent(model) {}

    // Of a message, known or not. One that tells no time belongs to the message before it.
    Reading read(const Found& found);

private:
    Reading readReceived(std::int64_t time);

    HourClock sent;
    bool goesBySent = false;
    std::optional<std::int64_t> lastReceived;
    std::int64_t received = 0;    // microseconds
};
