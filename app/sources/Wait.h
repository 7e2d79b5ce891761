// Waiting that goes on living: Ctrl-C is seen at once and idle work is done a few times a second.
#pragma once

#include <chrono>
#include <functional>

class Wait {
public:
    using Clock = std::chrono::steady_clock;
    enum class End { ready, late, interrupted };

    explicit Wait(std::function<void()> idleWork) : idle(std::move(idleWork)) {}

    // Until the descriptor is ready for these events of poll(), or has failed, which its next use
    // tells.
    End forDescriptor(int descriptor, short events, Clock::time_point deadline) const;

    // False when the program was asked to end meanwhile.
    bool pause(Clock::duration time) const;

    // Idle work, when a slice of waiting that is done elsewhere is over. False when the program is
    // asked to end.
    bool goesOn() const;

    // How long one slice is.
    static constexpr std::chrono::milliseconds slice{100};

private:
    std::function<void()> idle;
};

// The deadline in so many seconds; 0 stands for never.
Wait::Clock::time_point deadlineIn(double seconds);
