#include "check/CounterTrack.h"

#include "framing/Header.h"

#include <algorithm>

namespace {

using framing::sequenceNumbers;

constexpr std::uint64_t stepsToKnow = 4;    // before time says how many messages to expect
constexpr double fewSteps = 4;
constexpr double pauseSteps = 32;    // that say nothing of how often messages come

unsigned stepOf(const Heard& from, const Heard& to)
{
    return (to.sequence - from.sequence) % sequenceNumbers;
}

}    // namespace

double CounterTrack::stepsIn(std::int64_t time) const
{
    return timedSteps < stepsToKnow || timedUnits <= 0
               ? 0
               : static_cast<double>(time) * static_cast<double>(timedSteps) /
                     static_cast<double>(timedUnits);
}

void CounterTrack::add(const Heard& heard)
{
    if (!last) {
        last = heard;
        return;
    }
    hasChanged = hasChanged || heard.sequence != last->sequence;
    if (doubtful) {
        if (wasOutOfPlace(heard)) {
            ++outOfPlace;
            late = doubtful->sequence;
            doubtful.reset();
        } else {
            settle();
        }
    }
    if (stepOf(*last, heard) == 1) {
        accept(heard);
    } else {
        doubtful = heard;
    }
}

// Where the number after it follows both, time decides.
bool CounterTrack::wasOutOfPlace(const Heard& next) const
{
    const double steps = stepsIn(next.time - last->time);
    const bool isPause =
        steps >= fewSteps ||
        doubtful->time - last->time >= 4 * std::max<std::int64_t>(1, next.time - doubtful->time);
    return stepOf(*last, next) == 1 && (!isPause || stepOf(*doubtful, next) != 1) &&
           (steps < 2 * fewSteps || doubtful->time < last->time);
}

void CounterTrack::accept(const Heard& heard)
{
    const std::int64_t time = heard.time - last->time;
    const double steps = stepsIn(time);
    ++fitting;
    if (late == heard.sequence) {
        late.reset();
    }
    if (timedSteps < stepsToKnow || steps >= sequenceNumbers) {
        keep({*last, heard, 0});
    }
    if (steps < pauseSteps) {
        ++timedSteps;
        timedUnits += time;
    }
    last = heard;
}

void CounterTrack::settle()
{
    if (!doubtful) {
        return;
    }
    const unsigned step = stepOf(*last, *doubtful);
    unsigned missing = (step + sequenceNumbers - 1) % sequenceNumbers;
    const bool isLate = late && (*late - last->sequence) % sequenceNumbers < step;
    same += step == 0 ? 1 : 0;
    missing -= isLate && missing > 0 ? 1 : 0;
    if (missing > 0 || step == 0) {
        keep({*last, *doubtful, missing});
    }
    late.reset();
    last = doubtful;
    doubtful.reset();
}

void CounterTrack::keep(const Gap& gap)
{
    if (found.size() < room) {
        found.push_back(gap);
    } else {
        beyond += gap.missing;
    }
}

void CounterTrack::restart()
{
    settle();
    last.reset();
}

bool CounterTrack::counts() const
{
    const std::uint64_t all = fitting + found.size() + outOfPlace;
    const bool isAny = 16 * same >= all && 2 * fitting < all;
    return hasChanged && (same == 0 || (2 * same < fitting && !isAny));
}
