#include "commands/HelpFormatter.h"

#include <sstream>

namespace {

constexpr std::size_t textWidth = 100;
constexpr std::size_t optionWidth = 32;

}    // namespace

HelpFormatter::HelpFormatter()
{
    column_width(optionWidth);
}

std::string HelpFormatter::make_option_desc(const CLI::Option* option) const
{
    return wrapped(option->get_description(), textWidth - optionWidth);
}

std::string wrapped(const std::string& text, std::size_t width)
{
    std::istringstream words(text);
    std::string result;
    std::string word;
    std::size_t column = 0;
    while (words >> word) {
        if (column > 0 && column + 1 + word.size() > width) {
            result += '\n';
            column = 0;
        } else if (column > 0) {
            result += ' ';
            ++column;
        }
        result += word;
        column += word.size();
    }
    return result;
}
