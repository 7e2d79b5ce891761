// Tells that nothing comes while nothing comes.
#pragma once

#include "check/InputCheck.h"

#include <chrono>

// By the clock on the wall. A silence is told when it has become too long, again whenever it has
// doubled, and when it is over.
class Watch {
public:
    explicit Watch(InputCheck& watched, double shortestExpected);

    void noteMessage();
    // To be called now and then.
    void look();
    // Seconds since the last message; unset when there was none.
    std::optional<double> age() const;

private:
    using Clock = std::chrono::steady_clock;

    double silence() const;
    double longestUsual() const;

    InputCheck& check;
    double expected;    // seconds; 0: nothing
    bool hasMessage = false;
    Clock::time_point last = Clock::now();
    double tellAt = 0;    // seconds of silence; 0: nothing was told of this one
};

// How often the type is expected that has to come most often; 0 where none is.
double shortestExpected(const Wanted& wanted);
