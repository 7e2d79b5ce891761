// Help texts that fit a terminal.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

// As the library's own, but the descriptions of options are broken into lines.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

    std::string make_option_desc(const CLI::Option* option) const override;
};

// The text with line breaks at blanks, so that no line is longer than `width` where that is
// possible.
std::string wrapped(const std::string& text, std::size_t width);
