#include "sources/Wait.h"

#include "base/Interrupt.h"

#include <algorithm>

#include <poll.h>

// A signal may come right before poll(), which then does not hear of it: so its slices are short.
Wait::End Wait::forDescriptor(int descriptor, short events, Clock::time_point deadline) const
{
    pollfd waited = {.fd = descriptor, .events = events, .revents = 0};
    while (!interrupt::requested()) {
        const Clock::time_point now = Clock::now();
        if (now >= deadline && ::poll(&waited, 1, 0) <= 0) {
            return End::late;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(
            std::clamp<Clock::duration>(deadline - now, Clock::duration::zero(), slice));
        if (::poll(&waited, 1, static_cast<int>(left.count())) > 0) {
            return interrupt::requested() ? End::interrupted : End::ready;
        }
        idle();
    }
    return End::interrupted;
}

bool Wait::pause(Clock::duration time) const
{
    return forDescriptor(-1, 0, Clock::now() + time) != End::interrupted;
}

bool Wait::goesOn() const
{
    idle();
    return !interrupt::requested();
}

Wait::Clock::time_point deadlineIn(double seconds)
{
    return seconds > 0 ? Wait::Clock::now() + std::chrono::duration_cast<Wait::Clock::duration>(
                                                  std::chrono::duration<double>(seconds))
                       : Wait::Clock::time_point::max();
}
