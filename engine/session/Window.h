// The messages of an input from one to another.
#pragma once

#include "session/HourClock.h"

#include <cstdint>
#include <optional>
#include <string>

// Where the messages begin or end that are wanted.
struct WindowBound {
    enum class By : std::uint8_t {
        nothing,
        number,      // of the message
        sent,        // the time that messages carry, in microseconds
        received,    // the time of their receipt
    };

    By by = By::nothing;
    std::int64_t value = 0;
    // Times are meant that are as far behind the beginning of an hour or a day, which has so many
    // microseconds; 0 for a point in time.
    std::int64_t period = 0;
};

struct WindowOptions {
    WindowBound from{};     // the message itself belongs to it
    WindowBound until{};    // a message of this number does, one of this time does not
    std::optional<std::int64_t> date{};    // near which the input begins, see HourClock

    bool isOpen() const
    {
        return from.by == WindowBound::By::nothing && until.by == WindowBound::By::nothing;
    }
};

// A time of the hour or the day is the first such time behind the beginning of the input or, at the
// end, behind that of the window. That it begins up to ten minutes before the input is no mistake.
// What carries no time goes with what came before.
class Window {
public:
    // `isLive`: what is received later, is received later than what came before.
    Window(const FormatModel& model, const WindowOptions& windowOptions, bool isLive);

    // Whether the next message, or what else was found, lies inside. `header` is that of a message;
    // null for what else was found.
    bool takes(std::uint64_t number, const framing::Header* header, const Envelope& envelope);

    // Nothing that is still to come lies inside.
    bool isPast() const { return past; }

    // Why it cannot be told what lies inside, for people; empty where it can.
    const std::string& problem() const { return problemText; }

private:
    using By = WindowBound::By;

    bool uses(By by) const { return options.from.by == by || options.until.by == by; }
    void readTimes(const framing::Header& header, const Envelope& envelope);
    void resolve(By by, std::int64_t first);
    std::optional<std::int64_t> now(By by) const { return by == By::sent ? sent : received; }
    bool hasBegun(std::uint64_t number) const;
    bool hasEnded(std::uint64_t number) const;
    bool isOver(std::uint64_t number) const;

    WindowOptions options;    // with times as points in time, once a message has told one
    bool live;
    HourClock clock;
    std::optional<std::int64_t> sent;
    std::optional<std::int64_t> received;
    bool past = false;
    std::string problemText;
};
