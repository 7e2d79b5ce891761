// Waiting that goes on living: Ctrl-C is seen at once and idle work is done a few times a second.
#pragma once

#include <chrono>
#include <functional>

class Wait {
public:
    using Clock = std::chrono::steady_clock;
    enum class End { done, late, interrupted };

    // Called a few times a second.
    void setIdle(std::function<void()> work) { idle = std::move(work); }
    // Asked as often whether what waits is to end, though the program goes on.
    void setStop(std::function<bool()> question) { stop = std::move(question); }

    // Whether the program, or what waits, is asked to end.
    bool isAskedToEnd() const;

    // Until the attempt, which waits for a slice of time itself, is successful.
    End until(const std::function<bool()>& attempt,
              Clock::time_point deadline = Clock::time_point::max()) const;

    // False when it was asked to end meanwhile.
    bool pause(double seconds) const;

    // A signal may come right before an attempt, which then does not hear of it: so they are short.
    static constexpr std::chrono::milliseconds slice{100};

private:
    std::function<void()> idle = [] {};
    std::function<bool()> stop = [] { return false; };
};

// The deadline in so many seconds; 0 stands for never.
Wait::Clock::time_point deadlineIn(double seconds);
