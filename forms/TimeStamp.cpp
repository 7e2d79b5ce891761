#include "forms/TimeStamp.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>

namespace {

using Microseconds = std::chrono::microseconds;

// Takes so many digits off the front; -1 where there are fewer.
int takeNumber(std::string_view& text, std::size_t digits)
{
    int number = 0;
    for (std::size_t i = 0; i < digits; ++i) {
        if (i >= text.size() || text[i] < '0' || text[i] > '9') {
            return -1;
        }
        number = number * 10 + (text[i] - '0');
    }
    text.remove_prefix(digits);
    return number;
}

bool takeOneOf(std::string_view& text, std::string_view characters)
{
    if (text.empty() || characters.find(text.front()) == characters.npos) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

// A point or comma and digits, of which six count, if there are any.
std::int64_t takeDecimals(std::string_view& text)
{
    std::int64_t value = 0;
    if (!takeOneOf(text, ".,")) {
        return 0;
    }
    int unit = 100'000;
    for (int digit = takeNumber(text, 1); digit >= 0; digit = takeNumber(text, 1)) {
        value += std::int64_t{digit} * unit;
        unit /= 10;
    }
    return value;
}

std::optional<std::int64_t> secondsOf(std::string_view text)
{
    constexpr std::size_t fewest = 9;
    constexpr std::int64_t most = 253'402'300'799;    // the last one of the year 9999
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    const auto digits = static_cast<std::size_t>(end - text.data());
    if (error != std::errc() || digits < fewest || seconds < 0 || seconds > most) {
        return std::nullopt;
    }
    text.remove_prefix(digits);
    const std::int64_t decimals = takeDecimals(text);
    return text.empty() ? std::optional(seconds * 1'000'000 + decimals) : std::nullopt;
}

}    // namespace

std::string timeText(std::int64_t microseconds)
{
    const std::chrono::sys_time<Microseconds> time{Microseconds(microseconds)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    const auto decimals = static_cast<int>(clock.subseconds().count());
    const bool isWhole = decimals % 1000 == 0;
    std::array<char, 64> text{};
    const int size = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%0*dZ", int{date.year()},
        unsigned{date.month()}, unsigned{date.day()}, static_cast<int>(clock.hours().count()),
        static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()),
        isWhole ? 3 : 6, isWhole ? decimals / 1000 : decimals);
    return {text.data(), static_cast<std::size_t>(size)};
}

std::optional<std::int64_t> timeOfText(std::string_view text)
{
    std::string_view rest = text;
    const int year = takeNumber(rest, 4);
    const bool isDate = year >= 1970 && takeOneOf(rest, "-");
    if (!isDate) {
        return secondsOf(text);
    }
    const int month = takeNumber(rest, 2);
    const bool hasDay = takeOneOf(rest, "-");
    const int day = takeNumber(rest, 2);
    const bool hasTime = takeOneOf(rest, "Tt ");
    const int hour = takeNumber(rest, 2);
    const bool hasMinute = takeOneOf(rest, ":");
    const int minute = takeNumber(rest, 2);
    const bool hasSecond = takeOneOf(rest, ":");
    const int second = takeNumber(rest, 2);
    const std::int64_t decimals = takeDecimals(rest);
    takeOneOf(rest, "Zz");
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    const bool isWhole = hasDay && hasTime && hasMinute && hasSecond && rest.empty();
    const bool isInRange = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 &&
                           second <= 60 && month >= 0 && day >= 0 && date.ok();
    if (!isWhole || !isInRange) {
        return std::nullopt;
    }
    const auto seconds = std::chrono::sys_days(date).time_since_epoch() + std::chrono::hours(hour) +
                         std::chrono::minutes(minute) + std::chrono::seconds(second);
    return std::chrono::duration_cast<Microseconds>(seconds).count() + decimals;
}
