#include "commands/check/Watch.h"

namespace {

constexpr double silenceFactor = 3;
constexpr double usualFactor = 10;
constexpr double shortestSilence = 5;    // seconds

}    // namespace

Watch::Watch(InputCheck& watched, double shortestExpected)
    : check(watched), expected(shortestExpected)
{
}

double Watch::silence() const
{
    return std::chrono::duration<double>(Clock::now() - last).count();
}

double Watch::longestUsual() const
{
    return expected > 0 ? silenceFactor * expected
                        : std::max(shortestSilence, usualFactor * check.secondsPerMessage());
}

void Watch::look()
{
    const double seconds = silence();
    if (seconds > (tellAt > 0 ? tellAt : longestUsual())) {
        check.addSilence(seconds, false);
        tellAt = 2 * seconds;
    }
}

void Watch::noteMessage()
{
    if (tellAt > 0) {
        check.addSilence(silence(), true);
    }
    tellAt = 0;
    hasMessage = true;
    last = Clock::now();
}

std::optional<double> Watch::age() const
{
    return hasMessage ? std::optional(silence()) : std::nullopt;
}

double shortestExpected(const Wanted& wanted)
{
    double shortest = 0;
    for (const ExpectedType& type : wanted.types) {
        shortest = shortest == 0 ? type.seconds : std::min(shortest, type.seconds);
    }
    return shortest;
}
