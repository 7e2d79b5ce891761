#include "sources/Wait.h"

#include "base/Interrupt.h"

#include <algorithm>
#include <thread>

bool Wait::isAskedToEnd() const
{
    return interrupt::requested() || stop();
}

Wait::End Wait::until(const std::function<bool()>& attempt, Clock::time_point deadline) const
{
    while (!isAskedToEnd()) {
        if (attempt()) {
            return End::done;
        }
        if (Clock::now() >= deadline) {
            return End::late;
        }
        idle();
    }
    return End::interrupted;
}

bool Wait::pause(double seconds) const
{
    const Clock::time_point end = deadlineIn(seconds);
    const auto sleep = [end] {
        std::this_thread::sleep_until(std::min(end, Clock::now() + slice));
        return Clock::now() >= end;
    };
    return until(sleep) == End::done;
}

Wait::Clock::time_point deadlineIn(double seconds)
{
    return seconds > 0 ? Wait::Clock::now() + std::chrono::duration_cast<Wait::Clock::duration>(
                                                  std::chrono::duration<double>(seconds))
                       : Wait::Clock::time_point::max();
}
