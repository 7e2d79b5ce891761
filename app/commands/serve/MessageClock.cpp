#include "commands/serve/MessageClock.h"

#include <algorithm>

namespace {

constexpr double perSecond = 1e6;
constexpr std::int64_t playedBack = 5'000'000;    // so much later than others a message may come

}    // namespace

MessageClock::Reading MessageClock::read(const Found& found)
{
    if (found.envelope->received && !goesBySent) {
        return readReceived(*found.envelope->received);
    }
    if (lastReceived) {
        return {static_cast<double>(received) / perSecond, 0};
    }
    goesBySent = sent.read(framing::headerOf(found.bytes), *found.envelope).has_value();
    return {static_cast<double>(sent.now()) / perSecond,
            static_cast<double>(sent.wentBack()) / perSecond};
}

MessageClock::Reading MessageClock::readReceived(std::int64_t time)
{
    const std::int64_t step = time - lastReceived.value_or(time);
    lastReceived = time;
    received += std::max<std::int64_t>(step, 0);
    return {static_cast<double>(received) / perSecond,
            step < -playedBack ? static_cast<double>(-step) / perSecond : 0};
}
