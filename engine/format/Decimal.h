// Exact decimal numbers.
#pragma once

#include "RTCM2_format.h"

#include <string>

inline std::int64_t powerOfTen(unsigned exponent)
{
    std::int64_t power = 1;
    for (; exponent > 0; --exponent) {
        power *= 10;
    }
    return power;
}

inline double realOf(const RTCM2_decimal_s& value)
{
    return static_cast<double>(value.digits) / static_cast<double>(powerOfTen(value.decimals));
}

// Of coordinates and distances, whose rows say that they can be added.
inline RTCM2_decimal_s sumOf(const RTCM2_decimal_s& a, const RTCM2_decimal_s& b)
{
    if (a.decimals < b.decimals) {
        return sumOf(b, a);
    }
    return {a.digits + b.digits * powerOfTen(a.decimals - b.decimals), a.decimals};
}

inline bool isSame(const RTCM2_decimal_s& a, const RTCM2_decimal_s& b)
{
    return sumOf(a, {-b.digits, b.decimals}).digits == 0;
}

// With as few decimals as are exact.
inline std::string textOf(const RTCM2_decimal_s& value)
{
    static constexpr RTCM2_quantity_s number{};
    char text[RTCM2_QUANTITY_ROOM];
    return {text, RTCM2_quantity_text(&number, nullptr, &value, text)};
}
