#include "filter/Number.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

namespace where {

namespace {

std::size_t digitsAt(std::string_view text, std::size_t begin)
{
    const auto first = text.begin() + static_cast<std::ptrdiff_t>(std::min(begin, text.size()));
    return static_cast<std::size_t>(std::find_if_not(first, text.end(), isDigit) - first);
}

// The exponent, which stands in the whole text; what is out of reach is cut.
std::optional<std::int64_t> exponentOf(std::string_view text)
{
    constexpr std::int64_t limit = 1'000'000;
    const bool hasSign = !text.empty() && (text[0] == '-' || text[0] == '+');
    const std::size_t digits = digitsAt(text, hasSign ? 1 : 0);
    if (digits == 0 || digits + (hasSign ? 1 : 0) != text.size()) {
        return std::nullopt;
    }
    std::int64_t value = 0;
    for (const char digit : text.substr(hasSign ? 1 : 0)) {
        value = std::min(limit, value * 10 + (digit - '0'));
    }
    return text[0] == '-' ? -value : value;
}

}    // namespace

std::optional<Number> Number::parse(std::string_view text)
{
    Number number;
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        number.negative = text[0] == '-';
        text.remove_prefix(1);
    }
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (!(isHexadecimal ? number.parseHexadecimal(text.substr(2)) : number.parseDecimal(text))) {
        return std::nullopt;
    }
    if (number.negative) {
        number.real = -number.real;
        number.negative = number.whole != 0 || number.hasFraction || number.tooLarge;
    }
    return number;
}

bool Number::parseHexadecimal(std::string_view digits)
{
    const char* end = digits.data() + digits.size();
    if (digits.empty() || digits.find_first_not_of("0123456789abcdefABCDEF") != digits.npos) {
        return false;
    }
    tooLarge = std::from_chars(digits.data(), end, whole, 16).ec != std::errc();
    real = std::numeric_limits<double>::infinity();    // unless the next line finds better
    std::from_chars(digits.data(), end, real, std::chars_format::hex);
    return true;
}

bool Number::parseDecimal(std::string_view text)
{
    const std::size_t wholeDigits = digitsAt(text, 0);
    std::string digits(text.substr(0, wholeDigits));
    std::size_t end = wholeDigits;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fraction = digitsAt(text, end + 1);
        digits += text.substr(end + 1, fraction);
        end += 1 + fraction;
        if (fraction == 0) {
            return false;
        }
    }
    std::int64_t exponent = 0;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        const auto written = exponentOf(text.substr(end + 1));
        if (!written) {
            return false;
        }
        exponent = *written;
        end = text.size();
    }
    if (wholeDigits == 0 || end != text.size()) {
        return false;
    }
    setDigits(digits, static_cast<std::int64_t>(wholeDigits) + exponent);
    if (std::from_chars(text.data(), text.data() + text.size(), real).ec != std::errc()) {
        real = tooLarge ? std::numeric_limits<double>::infinity() : 0;
    }
    return true;
}

void Number::setDigits(std::string_view digits, std::int64_t pointPosition)
{
    const std::size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
    digits.remove_prefix(zeros);
    pointPosition -= static_cast<std::int64_t>(zeros);
    constexpr std::int64_t mostDigits = std::numeric_limits<std::uint64_t>::digits10 + 1;
    if (digits.empty() || pointPosition > mostDigits) {
        tooLarge = !digits.empty();
        return;
    }
    const std::size_t wholeDigits =
        static_cast<std::size_t>(std::max<std::int64_t>(pointPosition, 0));
    std::string wholeText(digits.substr(0, wholeDigits));
    wholeText.resize(wholeDigits, '0');
    hasFraction =
        wholeDigits < digits.size() && digits.find_first_not_of('0', wholeDigits) != digits.npos;
    tooLarge = std::from_chars(wholeText.data(), wholeText.data() + wholeText.size(), whole).ec ==
               std::errc::result_out_of_range;
}

std::strong_ordering Number::orderOfMagnitude(std::uint64_t value) const
{
    if (tooLarge) {
        return std::strong_ordering::less;
    }
    const auto order = value <=> whole;
    return order == 0 && hasFraction ? std::strong_ordering::less : order;
}

std::partial_ordering Number::orderOf(std::uint64_t value) const
{
    return negative ? std::partial_ordering::greater : orderOfMagnitude(value);
}

std::partial_ordering Number::orderOf(std::int64_t value) const
{
    const std::uint64_t bits = static_cast<std::uint64_t>(value);
    if (value >= 0) {
        return orderOf(bits);
    }
    return negative ? 0 <=> orderOfMagnitude(0 - bits) : std::partial_ordering::less;
}

std::partial_ordering Number::orderOf(double value) const
{
    return value <=> real;
}

}    // namespace where
