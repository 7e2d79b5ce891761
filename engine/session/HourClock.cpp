#include "session/HourClock.h"

#include "format/MessageTime.h"

#include <cmath>

namespace {

constexpr std::int64_t oneMinute = 60'000'000;
constexpr double secondsOutOfOrder = 5;    // that a message may be behind others

std::uint32_t systemOf(unsigned type)
{
    const RTCM2_kind_s* const kind = RTCM2_kind_of_type(static_cast<std::int32_t>(type));
    return kind != nullptr && kind->system != nullptr
               ? static_cast<std::uint32_t>(kind->system - RTCM2_system(0))
               : static_cast<std::uint32_t>(RTCM2_system_count());
}

std::int64_t microseconds(double units, double secondsPerUnit)
{
    return std::llround(units * secondsPerUnit * 1e6);
}

}    // namespace

HourClock::Unit HourClock::unitOf(const FormatModel& model)
{
    for (const auto& kind : model.kinds()) {
        const MessageTime time = timeOf(*kind);
        if (time.field != nullptr) {
            return {.seconds = time.secondsPerUnit, .perHour = time.wrap};
        }
    }
    return {};
}

HourClock::HourClock(const FormatModel& model, std::optional<std::int64_t> nearestTo)
    : unit(unitOf(model)), near(nearestTo),
      clock(unit.perHour, allowed(), static_cast<std::uint32_t>(RTCM2_system_count()))
{
}

std::int64_t HourClock::allowed() const
{
    return static_cast<std::int64_t>(secondsOutOfOrder / unit.seconds);
}

std::optional<std::int64_t> HourClock::read(const framing::Header& header, const Envelope& envelope)
{
    back = 0;
    if (header.zCount >= unit.perHour) {
        return last;
    }
    const std::int64_t ofHour = microseconds(header.zCount, unit.seconds);
    if (!begin) {
        start(ofHour);
    }
    const InputClock::Reading reading =
        clock.read({header.station, envelope}, systemOf(header.type), header.zCount);
    if (reading.kind == InputClock::Kind::jumped) {
        back = microseconds(static_cast<double>(reading.behind), unit.seconds);
    }
    last = sentAt(ofHour, reading);
    return last;
}

// The clock follows each system by itself, from where the first message of the system stands.
std::int64_t HourClock::sentAt(std::int64_t ofHour, const InputClock::Reading& reading) const
{
    const std::int64_t followed =
        *begin + microseconds(static_cast<double>(reading.time), unit.seconds);
    if (reading.kind != InputClock::Kind::normal) {
        return followed;
    }
    const std::int64_t step = (ofHour - followed) % hour;
    return followed + (step < -hour / 2 ? step + hour : step > hour / 2 ? step - hour : step);
}

// `first`: of the hour.
void HourClock::start(std::int64_t first)
{
    const double hours = near ? static_cast<double>(*near - first) / hour : 0;
    begin = first + std::llround(hours) * hour;
}

std::int64_t HourClock::now() const
{
    return begin.value_or(0) + microseconds(static_cast<double>(clock.now()), unit.seconds);
}

std::int64_t HourClock::earliestNext() const
{
    return now() - oneMinute;
}
