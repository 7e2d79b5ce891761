#include "filter/ExpressionError.h"

#include <algorithm>

namespace where {

namespace {

constexpr std::size_t shownBefore = 50;    // bytes; of long expressions, only the surroundings
constexpr std::size_t shownBehind = 40;

bool continuesCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The nearest boundary between two characters at or before the place.
std::size_t boundary(std::string_view text, std::size_t place)
{
    while (place > 0 && place < text.size() && continuesCharacter(text[place])) {
        --place;
    }
    return place;
}

// One line, whatever the text holds.
std::string printable(std::string_view text)
{
    std::string result(text);
    std::replace_if(
        result.begin(), result.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    return result;
}

}    // namespace

FilterError errorAt(std::string_view expression, const Problem& problem)
{
    const std::size_t place = std::min(problem.place, expression.size());
    const std::size_t begin = boundary(expression, place - std::min(place, shownBefore));
    const std::size_t end = boundary(expression, std::min(place + shownBehind, expression.size()));
    const std::string before =
        (begin > 0 ? "..." : "") + printable(expression.substr(begin, place - begin));
    const std::string behind =
        printable(expression.substr(place, end - place)) + (end < expression.size() ? "..." : "");
    const auto column =
        std::count_if(before.begin(), before.end(), [](char c) { return !continuesCharacter(c); });
    std::string text = printable(problem.text) + "\n  " + before + behind + "\n  " +
                       std::string(static_cast<std::size_t>(column), ' ') + "^";
    if (!problem.help.empty()) {
        text += "\n  " + problem.help;
    }
    return FilterError{text, place,
                       printable(problem.text + (problem.help.empty() ? "" : "; ") + problem.help)};
}

}    // namespace where
