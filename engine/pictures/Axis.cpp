#include "pictures/Axis.h"

#include "base/Columns.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace {

constexpr double oneHour = 3600;
constexpr double oneDay = 24 * oneHour;

double niceStep(double least)
{
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double times : {1.0, 2.0, 5.0}) {
        if (times * power >= least * (1 - 1e-9)) {
            return times * power;
        }
    }
    return 10 * power;
}

int decimalsOf(double step)
{
    return std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
}

double timeStep(double least)
{
    constexpr std::array steps{1.0,     2.0,     5.0,     10.0,    15.0,   30.0,    60.0,
                               120.0,   300.0,   600.0,   900.0,   1800.0, oneHour, 7200.0,
                               10800.0, 14400.0, 21600.0, 43200.0, oneDay};
    const auto step = std::lower_bound(steps.begin(), steps.end(), least);
    return least < 1             ? niceStep(least)
           : step != steps.end() ? *step
                                 : oneDay * niceStep(least / oneDay);
}

template <class Label>
std::vector<Tick> ticksAt(const Range& range, double step, double shift, Label label)
{
    std::vector<Tick> ticks;
    const double slack = step * 1e-6;
    for (double n = std::ceil((range.low + shift - slack) / step);
         n * step <= range.high + shift + slack; ++n) {
        const double value = n * step;
        ticks.push_back({value - shift, label(value)});
    }
    return ticks;
}

std::string formatted(const char* format, int a, int b)
{
    char text[40];
    std::snprintf(text, sizeof text, format, a, b);
    return text;
}

std::string dateText(double time)
{
    const std::chrono::year_month_day date{std::chrono::sys_days{
        std::chrono::days{static_cast<std::int64_t>(std::floor(time / oneDay))}}};
    return std::to_string(static_cast<int>(date.year())) +
           formatted("-%02d-%02d", static_cast<int>(static_cast<unsigned>(date.month())),
                     static_cast<int>(static_cast<unsigned>(date.day())));
}

// The seconds of a minute, with decimals where the step has some.
std::string secondsText(double time, double step)
{
    const int decimals = decimalsOf(step);
    const double seconds = std::fmod(time, 60);
    return (seconds < 10 ? ":0" : ":") + withDecimals(seconds, decimals);
}

}    // namespace

std::vector<Tick> numberTicks(const Range& range, std::size_t most)
{
    const double step = niceStep(range.length() / static_cast<double>(most));
    return ticksAt(range, step, 0, [step](double value) {
        return withDecimals(std::abs(value) < step / 2 ? 0 : value, decimalsOf(step));
    });
}

Range withRoom(const Range& values)
{
    const double size = std::max(std::abs(values.low), std::abs(values.high));
    const double least = size > 0 ? size * 1e-3 : 1;
    const double room = std::max(values.length() * 0.06, least);
    return {values.low - room, values.high + room};
}

std::string rangeText(const Range& range, const std::string& unit)
{
    constexpr int mostDecimals = 4;
    const auto isExact = [](double value, int decimals) {
        const double scaled = value * std::pow(10, decimals);
        return std::abs(scaled - std::round(scaled)) < 1e-6 * std::max(1.0, std::abs(scaled));
    };
    int decimals = 0;
    while (decimals < mostDecimals &&
           !(isExact(range.low, decimals) && isExact(range.high, decimals))) {
        ++decimals;
    }
    const std::string high = withDecimals(range.high, decimals) + " " + unit;
    return range.length() > 0 ? withDecimals(range.low, decimals) + " to " + high
                              : "always " + high;
}

TimeScale::TimeScale(double beginOfClock, bool isDated, const Range& shown)
    : range(shown), begin(beginOfClock), hasDate(isDated)
{
    range.high = std::max(range.high, range.low + 1);
}

std::string TimeScale::label(double time, double step) const
{
    const double ofHour = std::fmod(time, oneHour);
    const int minutes = static_cast<int>(ofHour / 60);
    const std::string tail = step < 60 || isWithinHour() ? secondsText(time, step) : "";
    if (isWithinHour()) {
        return formatted("%02d", minutes, 0) + tail;
    }
    if (step >= oneDay) {
        return hasDate ? dateText(time) : "day " + std::to_string(std::llround(time / oneDay));
    }
    const double hours = hasDate ? std::fmod(time, oneDay) : time;
    const std::string clock = formatted("%d:%02d", static_cast<int>(hours / oneHour), minutes);
    return hasDate && hours < step / 2 ? dateText(time) : clock + tail;
}

std::vector<Tick> TimeScale::ticks(std::size_t most) const
{
    const double step = timeStep(range.length() / static_cast<double>(most));
    return ticksAt(range, step, begin, [&](double time) { return label(time, step); });
}

std::string TimeScale::text(double seconds) const
{
    const double time = std::round((begin + seconds) * 1000) / 1000;
    const std::string clock = label(time, 0.1);
    return hasDate ? dateText(time) + " " + clock : clock;
}

std::string TimeScale::title() const
{
    if (hasDate) {
        return "Hours:minutes from " + dateText(begin + range.low) + " on, as messages tell them";
    }
    return isWithinHour() ? "Time of the hour, minutes:seconds"
                          : "Hours:minutes since the full hour before the first message";
}
