#include "commands/HelpFormatter.h"

#include "commands/Choices.h"

#include <sstream>

namespace {

constexpr std::size_t textWidth = 100;
constexpr std::size_t optionWidth = 32;

}    // namespace

HelpFormatter::HelpFormatter()
{
    column_width(optionWidth);
    label("Positionals", "Arguments");
}

std::string HelpFormatter::make_usage(const CLI::App* app, std::string name) const
{
    if (app->get_parent() == nullptr) {
        return "Usage: " + name + " COMMAND [OPTION]... [FILE]...\n       " + name +
               " [OPTION]... [FILE]...    means " + name + " list\n";
    }
    std::string usage = "Usage: " + name + " [OPTION]...";
    for (const CLI::Option* option : positionalsOf(*app)) {
        const bool isMany = option->get_items_expected_max() > 1;
        const std::string value = valueOf(*option) + (isMany ? "..." : "");
        usage += option->get_required() ? " " + value : " [" + value + "]";
    }
    return usage + "\n";
}

// The library leaves two lines free between groups.
std::string HelpFormatter::make_help(const CLI::App* app, std::string name,
                                     CLI::AppFormatMode mode) const
{
    return CLI::detail::find_and_replace(Formatter::make_help(app, std::move(name), mode), "\n\n\n",
                                         "\n\n");
}

std::string HelpFormatter::make_option_name(const CLI::Option* option, bool isPositional) const
{
    return isPositional ? valueOf(*option) : joined(namesOf(*option), ", ");
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const
{
    return option->nonpositional() && takesValue(*option) ? " " + valueOf(*option) : "";
}

std::string HelpFormatter::make_option_desc(const CLI::Option* option) const
{
    return wrapped(aboutOption(*option), textWidth - optionWidth);
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
