// When what was recorded is to be sent.
#pragma once

#include <algorithm>
#include <chrono>

// By the clock on the wall. What is a little late makes up for that, so that errors do not add up;
// after a long delay, as when the program was stopped for a while, time goes on from there.
class Schedule {
public:
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;

    // A recording runs `factor` times as fast as it was made.
    explicit Schedule(double factor) : speed(factor) {}

    // When something is due that came so many seconds of the recording after what was due before.
    Clock::time_point dueAfter(double pause, Clock::time_point now = Clock::now())
    {
        if (now > due + std::chrono::duration_cast<Clock::duration>(Seconds(mostBehind))) {
            due = now - std::chrono::duration_cast<Clock::duration>(Seconds(pause / speed));
        }
        due += std::chrono::duration_cast<Clock::duration>(Seconds(pause / speed));
        return due;
    }

private:
    static constexpr double mostBehind = 2;    // seconds

    double speed;
    Clock::time_point due{};
};
