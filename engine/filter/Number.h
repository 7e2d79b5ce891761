// Numbers as people write them, compared with the values of fields without loss.
#pragma once

#include <charconv>
#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

namespace where {

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// An integer in decimal or, after 0x, in hexadecimal digits, or a decimal fraction, with an
// exponent or without; a sign may stand first. Integers are compared exactly, whatever their size
// and whatever stands behind the number's point. A Float64 value is compared with the number that
// is nearest to the one written.
class Number {
public:
    // The number times 10^decimals, which integers are compared with that stand for decimal numbers
    // with so many decimals; real numbers are compared with the number itself. Nothing when the
    // text is no number.
    static std::optional<Number> parse(std::string_view text, unsigned decimals = 0);

    // How a value of a field stands to the number.
    std::partial_ordering orderOf(std::uint64_t value) const;
    std::partial_ordering orderOf(std::int64_t value) const;
    std::partial_ordering orderOf(double value) const;

private:
    bool parseHexadecimal(std::string_view digits, unsigned decimals);
    bool parseDecimal(std::string_view text, unsigned decimals);
    void setDigits(std::string_view text, unsigned decimals);
    void setWhole(std::string_view digits, int base);
    bool setReal(std::string_view text, std::chars_format format);
    std::strong_ordering orderOfMagnitude(std::uint64_t value) const;

    bool isNegative = false;
    std::uint64_t whole = 0;     // without sign and fraction; the largest for all that is larger
    bool hasFraction = false;    // something other than zeros behind the point, or larger
    double real = 0;
};

}    // namespace where
