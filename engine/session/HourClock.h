// When messages were sent that carry no more than the time of the hour.
#pragma once

#include "format/FormatModel.h"
#include "framing/Header.h"
#include "session/InputClock.h"

#include <cstdint>
#include <optional>

// Follows the time from message to message through the ends of hours. Each message has the time
// that it carries itself, also where the times of different systems of satellites differ by some
// seconds; one that is out of its place has that of the messages around it.
class HourClock {
public:
    static constexpr std::int64_t hour = 3'600'000'000;    // in microseconds, as all times here

    // `near`: the time since 1970 to which the first message is the nearest with its time of the
    // hour. Without it, times count from the beginning of the first message's hour.
    explicit HourClock(const FormatModel& model, std::optional<std::int64_t> near = {});

    // Time of a message; that of the one before where it carries none, and nothing as long as no
    // message has carried one.
    std::optional<std::int64_t> read(const framing::Header& header, const Envelope& envelope);

    // The latest time of all messages so far; 0 as long as none has carried one.
    std::int64_t now() const;
    // How far the clock went back before the last message, to go on from there.
    std::int64_t wentBack() const { return back; }

    // Messages to come have been sent at this time or later, if the times of their systems differ
    // by less than a minute.
    std::int64_t earliestNext() const;

private:
    struct Unit {
        double seconds = 1;
        std::uint64_t perHour = 0;    // 0: messages carry no time
    };
    static Unit unitOf(const FormatModel& model);
    std::int64_t allowed() const;
    std::int64_t sentAt(std::int64_t ofHour, const InputClock::Reading& reading) const;
    void start(std::int64_t first);

    Unit unit;
    std::optional<std::int64_t> near;
    InputClock clock;
    std::optional<std::int64_t> begin;    // of the first message
    std::optional<std::int64_t> last;
    std::int64_t back = 0;
};
