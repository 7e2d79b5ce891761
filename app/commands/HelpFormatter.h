// Help texts that fit a terminal.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

// As the library's own, but in the words of the manual page, and the descriptions of options are
// broken into lines.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_help(const CLI::App* app, std::string name,
                          CLI::AppFormatMode mode) const override;
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
};

// The text with line breaks at blanks, so that no line is longer than `width` where that is
// possible.
std::string wrapped(const std::string& text, std::size_t width);
