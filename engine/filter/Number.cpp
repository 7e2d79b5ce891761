#include "filter/Number.h"

#include <algorithm>
#include <limits>
#include <string>

namespace where {

namespace {

bool beginsWithDigit(std::string_view text)
{
    return !text.empty() && isDigit(text[0]);
}

// Digits, with a sign or without; what is out of reach is cut.
std::int64_t exponentOf(std::string_view text)
{
    constexpr std::int64_t outOfReach = 1'000'000;
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    // Stays when it has too many digits.
    std::int64_t exponent = text.starts_with('-') ? -outOfReach : outOfReach;
    std::from_chars(text.data(), text.data() + text.size(), exponent);
    return std::clamp(exponent, -outOfReach, outOfReach);
}

}    // namespace

std::optional<Number> Number::parse(std::string_view text, unsigned decimals)
{
    Number number;
    number.isNegative = text.starts_with('-');
    if (number.isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (!(isHexadecimal ? number.parseHexadecimal(text.substr(2), decimals)
                        : number.parseDecimal(text, decimals))) {
        return std::nullopt;
    }
    if (number.isNegative) {
        number.real = -number.real;
        number.isNegative = number.whole != 0 || number.hasFraction;
    }
    return number;
}

bool Number::parseHexadecimal(std::string_view digits, unsigned decimals)
{
    if (digits.find_first_not_of("0123456789abcdefABCDEF") != digits.npos) {
        return false;
    }
    setWhole(digits, 16);
    // What is larger than 64 bits stays so.
    if (!hasFraction && decimals > 0) {
        setDigits(std::to_string(whole), decimals);
    }
    return setReal(digits, std::chars_format::hex);
}

bool Number::parseDecimal(std::string_view text, unsigned decimals)
{
    // What follows would also take "inf", and a point without digits on both sides.
    const std::size_t point = text.find('.');
    if (!beginsWithDigit(text) ||
        (point != text.npos && !beginsWithDigit(text.substr(point + 1)))) {
        return false;
    }
    setDigits(text, decimals);
    return setReal(text, std::chars_format::general);
}

// The exponent and the decimals move the point.
void Number::setDigits(std::string_view text, unsigned decimals)
{
    const std::size_t exponentPlace = std::min(text.find_first_of("eE"), text.size());
    std::string digits(text.substr(0, exponentPlace));
    const std::size_t point = std::min(digits.find('.'), digits.size());
    digits.erase(point, 1);
    const std::int64_t exponent =
        decimals + (exponentPlace < text.size() ? exponentOf(text.substr(exponentPlace + 1)) : 0);
    // More zeros than these behind the digits change nothing: the number is 0 or too large.
    constexpr std::size_t mostZeros = std::numeric_limits<std::uint64_t>::digits10 + 1;
    const auto wholeDigits = static_cast<std::size_t>(
        std::clamp<std::int64_t>(static_cast<std::int64_t>(point) + exponent, 0,
                                 static_cast<std::int64_t>(digits.size() + mostZeros)));
    hasFraction = digits.find_first_not_of('0', wholeDigits) != digits.npos;
    digits.resize(wholeDigits, '0');
    setWhole(digits, 10);
}

// What is too large for 64 bits is told from all of their values by its fraction.
void Number::setWhole(std::string_view digits, int base)
{
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), whole, base);
    if (result.ec == std::errc::result_out_of_range) {
        whole = std::numeric_limits<std::uint64_t>::max();
        hasFraction = true;
    }
}

// The whole part is known already. False when the text is no number of this format.
bool Number::setReal(std::string_view text, std::chars_format format)
{
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, real, format);
    if (result.ec == std::errc::result_out_of_range) {
        real = whole == 0 ? 0 : std::numeric_limits<double>::infinity();
    }
    return result.ec != std::errc::invalid_argument && result.ptr == end;
}

std::strong_ordering Number::orderOfMagnitude(std::uint64_t value) const
{
    const auto order = value <=> whole;
    return order == 0 && hasFraction ? std::strong_ordering::less : order;
}

std::partial_ordering Number::orderOf(std::uint64_t value) const
{
    return isNegative ? std::partial_ordering::greater : orderOfMagnitude(value);
}

std::partial_ordering Number::orderOf(std::int64_t value) const
{
    const std::uint64_t bits = static_cast<std::uint64_t>(value);
    if (value >= 0) {
        return orderOf(bits);
    }
    return isNegative ? 0 <=> orderOfMagnitude(0 - bits) : std::partial_ordering::less;
}

std::partial_ordering Number::orderOf(double value) const
{
    return value <=> real;
}

}    // namespace where
