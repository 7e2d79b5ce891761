#include "commands/Manual.h"

#include "commands/Choices.h"

#include <algorithm>
#include <cctype>

namespace {

// Backslashes, hyphens, and dots and quotes at the start of a line mean something to roff.
std::string roff(const std::string& text)
{
    std::string escaped;
    bool lineStart = true;
    for (const char c : text) {
        if (lineStart && (c == '.' || c == '\'')) {
            escaped += "\\&";
        }
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
        lineStart = c == '\n';
    }
    return escaped;
}

std::string upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

std::string valueOf(const CLI::Option& option)
{
    std::string choices;
    for (const std::string& choice : choicesOf(option)) {
        choices += (choices.empty() ? "" : "|") + choice;
    }
    if (!choices.empty()) {
        return choices;
    }
    const std::string type = option.get_type_name();
    return type.substr(0, type.find(':'));
}

std::string optionEntry(const CLI::Option& option)
{
    std::string names;
    for (const std::string& name : namesOf(option)) {
        names += (names.empty() ? "" : ", ") + ("\\fB" + roff(name) + "\\fR");
    }
    if (takesValue(option)) {
        names += " \\fI" + roff(valueOf(option)) + "\\fR";
    }
    std::string about = option.get_description();
    if (!option.get_default_str().empty()) {
        about += " (default: " + option.get_default_str() + ")";
    }
    return ".TP\n" + names + "\n" + roff(about) + "\n";
}

std::string commandSection(const CLI::App& command)
{
    std::string text =
        ".SS " + roff(command.get_name()) + "\n" + roff(command.get_description()) + ".\n";
    for (const CLI::Option* option : namedOptionsOf(command)) {
        text += optionEntry(*option);
    }
    const std::string footer = command.get_footer();
    return footer.empty() ? text : text + ".PP\n.nf\n" + roff(footer) + "\n.fi\n";
}

}    // namespace

std::string manualPage(const CLI::App& program, const std::string& version)
{
    const std::string name = program.get_name();
    std::string page = ".TH " + upper(name) + " 1 \"\" \"" + name + " " + version +
                       "\" \"User Commands\"\n.SH NAME\n" + name + " \\- " +
                       roff(program.get_description()) + "\n.SH SYNOPSIS\n.B " + name +
                       "\n.I command\n.RI [ options ]\n.RI [ input .\\|.\\|.]\n.SH COMMANDS\n";
    for (const CLI::App* command : commandsOf(program)) {
        page += commandSection(*command);
    }
    return page + ".SH NOTES\n.nf\n" + roff(program.get_footer()) + "\n.fi\n";
}
