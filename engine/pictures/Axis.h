// Where axes have ticks, and what is written there.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct Range {
    double low = 0;
    double high = 0;

    double length() const { return high - low; }
    // Where a value stands from 0 to 1.
    double share(double value) const { return (value - low) / length(); }
};

struct Tick {
    double value = 0;
    std::string label;
};

// At steps of 1, 2 or 5 times a power of ten; not more than `most` of them, which is 2 or more.
std::vector<Tick> numberTicks(const Range& range, std::size_t most);

// The values and some room around them, also where they are all the same.
Range withRoom(const Range& values);

// "-8.24 to 7.5 m", or "always 7.5 m": with the decimals that the numbers have, up to four.
std::string rangeText(const Range& range, const std::string& unit);

// What the seconds of an input's clock, which begins with its first message, are shown as.
class TimeScale {
public:
    // `begin`: what second 0 is, in seconds of its hour or, with a date, since 1970. What is shown
    // lies in the range.
    TimeScale(double begin, bool isDated, const Range& shown);

    // In seconds of the input's clock, at steps of whole seconds, minutes, hours or days.
    std::vector<Tick> ticks(std::size_t most) const;
    // One time in full.
    std::string text(double seconds) const;
    // What stands at the axis.
    std::string title() const;

    Range range;

private:
    bool isWithinHour() const { return !hasDate && begin + range.high < 3600; }
    std::string label(double time, double step) const;

    double begin;
    bool hasDate;
};
