#include "base/Columns.h"

#include <charconv>

std::string left(std::string text, std::size_t columns)
{
    if (text.size() > columns) {
        text.replace(columns - 3, text.npos, "...");
    }
    text.resize(columns, ' ');
    return text;
}

std::string right(const std::string& text, std::size_t columns)
{
    return std::string(text.size() < columns ? columns - text.size() : 0, ' ') + text;
}

std::string right(std::uint64_t number, std::size_t columns)
{
    return right(std::to_string(number), columns);
}

std::string withDecimals(double number, int decimals)
{
    char text[400];    // enough for the largest number
    const std::string shown(
        text, std::to_chars(text, std::end(text), number, std::chars_format::fixed, decimals).ptr);
    const bool isZero = shown.find_first_not_of("-0.") == std::string::npos;
    return isZero && number < 0 ? shown.substr(1) : shown;
}
