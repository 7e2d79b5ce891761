#include "commands/serve/MessageClock.h"

#include "framing/Header.h"
#include "session/StationId.h"

#include <algorithm>

namespace {

constexpr double playedBack =
    5;    // seconds; a message that is later than others by less is normal

}    // namespace

MessageClock::MessageClock(const FormatModel& model)
    : kinds(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    const auto add = [this](const KindModel& kind) {
        const MessageTime time = timeOf(kind);
        kinds[kind.number()].emplace(Kind{time, MessageSystem(kind)});
        if (time.field != nullptr) {
            secondsPerUnit = time.secondsPerUnit;
            hour.emplace(time.wrap, static_cast<std::int64_t>(playedBack / secondsPerUnit),
                         static_cast<std::uint32_t>(RTCM2_system_count()));
        }
    };
    add(model.unknownKind());
    for (const auto& kind : model.kinds()) {
        add(*kind);
    }
}

MessageClock::Reading MessageClock::read(const Found& found)
{
    if (found.envelope->received && !goesByHour) {
        return readReceived(*found.envelope->received);
    }
    const MessageTime& time = kinds[found.kind->number()]->time;
    const bool hasTime = time.field != nullptr && !lastReceived &&
                         found.bytes.size() >= framing::headerBytes &&
                         time.of(found.record) < time.wrap;
    return hasTime
               ? readHour(found, time.of(found.record))
               : Reading{goesByHour ? static_cast<double>(hour->now()) * secondsPerUnit : received,
                         0};
}

MessageClock::Reading MessageClock::readReceived(std::int64_t microseconds)
{
    const double step =
        static_cast<double>(microseconds - lastReceived.value_or(microseconds)) / 1e6;
    lastReceived = microseconds;
    received += std::max(step, 0.0);
    return {received, step < -playedBack ? -step : 0};
}

MessageClock::Reading MessageClock::readHour(const Found& found, std::uint64_t shown)
{
    goesByHour = true;
    const StationId station(framing::headerOf(found.bytes).station, *found.envelope);
    const std::uint32_t system = found.kind->isUnknown
                                     ? static_cast<std::uint32_t>(RTCM2_system_count())
                                     : kinds[found.kind->number()]->system.of(found.record);
    const InputClock::Reading reading = hour->read(station, system, shown);
    const bool jumped = reading.kind == InputClock::Kind::jumped;
    return {static_cast<double>(hour->now()) * secondsPerUnit,
            jumped ? static_cast<double>(reading.behind) * secondsPerUnit : 0};
}
