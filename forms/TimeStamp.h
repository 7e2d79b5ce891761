// Points in time as texts: UTC, as ISO 8601 writes it, or seconds since 1970.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Whether a time is of the years 1970 to 9999, so that its text can be read again.
constexpr bool isTimeOfText(std::int64_t microseconds)
{
    return microseconds >= 0 && microseconds < 253'402'300'800'000'000;
}

// "2026-11-23T20:03:06.125Z": with three decimals, or six where these are not enough.
// `microseconds` are counted from 1970 and may be any number of the years 0 to 9999.
std::string timeText(std::int64_t microseconds);

// The time of such a text, of the years 1970 to 9999: with any number of decimals or none, a blank
// in the place of T, and Z or nothing at its end; or of a decimal number of seconds since 1970 with
// at least nine digits before its point. Nothing for everything else.
std::optional<std::int64_t> timeOfText(std::string_view text);
