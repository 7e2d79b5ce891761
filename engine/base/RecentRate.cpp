#include "base/RecentRate.h"

#include <algorithm>

std::int64_t RecentRate::numberOf(Clock::time_point time)
{
    return std::chrono::floor<std::chrono::seconds>(time.time_since_epoch()).count();
}

void RecentRate::add(Clock::time_point now, std::uint64_t bytes)
{
    const std::int64_t number = numberOf(now);
    first = first < 0 ? number : first;
    Second& second = last[static_cast<std::size_t>(number) % seconds];
    if (second.number != number) {
        second = {number, 0};
    }
    second.bytes += bytes;
}

double RecentRate::perSecond(Clock::time_point now) const
{
    const std::int64_t number = numberOf(now);
    const auto most = static_cast<std::int64_t>(seconds);
    std::uint64_t bytes = 0;
    for (const Second& second : last) {
        bytes += second.number > number - most ? second.bytes : 0;
    }
    const std::int64_t length = std::clamp<std::int64_t>(number - first + 1, 1, most);
    return first < 0 ? 0 : static_cast<double>(bytes) / static_cast<double>(length);
}
