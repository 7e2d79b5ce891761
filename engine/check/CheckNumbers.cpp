#include "check/CheckNumbers.h"

#include <cmath>
#include <cstdint>
#include <cstdio>

std::string minutesText(double seconds)
{
    const auto tenths = static_cast<std::int64_t>(std::llround(seconds * 10));
    const std::int64_t hours = tenths / 36000;
    char text[64];
    if (hours > 0) {
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld.%lld", static_cast<long long>(hours),
                      static_cast<long long>(tenths / 600 % 60),
                      static_cast<long long>(tenths / 10 % 60),
                      static_cast<long long>(tenths % 10));
    } else {
        std::snprintf(text, sizeof text, "%lld:%02lld.%lld", static_cast<long long>(tenths / 600),
                      static_cast<long long>(tenths / 10 % 60),
                      static_cast<long long>(tenths % 10));
    }
    return text;
}
