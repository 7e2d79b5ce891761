#include "commands/Manual.h"

#include "commands/Choices.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <vector>

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

// In bold.
std::string namesIn(const CLI::Option& option)
{
    std::string names;
    for (const std::string& name : namesOf(option)) {
        names += (names.empty() ? "" : ", ") + ("\\fB" + roff(name) + "\\fR");
    }
    return names;
}

std::string optionEntry(const CLI::Option& option)
{
    const std::string value = takesValue(option) ? " \\fI" + roff(valueOf(option)) + "\\fR" : "";
    return ".TP\n" + namesIn(option) + value + "\n" + roff(aboutOption(option)) + "\n";
}

// The entries of all options that several commands have, in the order of the groups.
using SharedOptions = std::map<std::string, std::vector<std::string>>;

SharedOptions sharedOptions(const CLI::App& program)
{
    std::map<std::string, int> times;
    SharedOptions shared;
    for (const CLI::App* command : commandsOf(program)) {
        for (const CLI::Option* option : namedOptionsOf(*command)) {
            const std::string entry = optionEntry(*option);
            if (++times[entry] == 2) {
                shared[option->get_group()].push_back(entry);
            }
        }
    }
    return shared;
}

bool isShared(const SharedOptions& shared, const CLI::Option& option)
{
    const std::string entry = optionEntry(option);
    return std::any_of(shared.begin(), shared.end(), [&](const auto& group) {
        const std::vector<std::string>& entries = group.second;
        return std::find(entries.begin(), entries.end(), entry) != entries.end();
    });
}

std::string usageOf(const CLI::App& command)
{
    std::string usage = ".B " + roff(command.get_parent()->get_name() + " " + command.get_name()) +
                        "\n.RI [ option .\\|.\\|.]\n";
    for (const CLI::Option* option : positionalsOf(command)) {
        usage += ".RI [ " + roff(valueOf(*option)) + " .\\|.\\|.]\n";
    }
    return usage;
}

std::string commandSection(const CLI::App& command, const SharedOptions& shared)
{
    std::string text = ".SS " + roff(command.get_name()) + "\n" + usageOf(command) + ".PP\n" +
                       roff(command.get_description()) + ".\n";
    std::string others;
    for (const CLI::Option* option : namedOptionsOf(command)) {
        if (!isShared(shared, *option)) {
            text += optionEntry(*option);
        } else if (option != command.get_help_ptr()) {
            others += (others.empty() ? "" : ",\n") + namesIn(*option);
        }
    }
    if (!others.empty()) {
        text += ".PP\nShared options, see below:\n" + others + "\n";
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
                       "\n.I command\n.RI [ option .\\|.\\|.]\n.RI [ file .\\|.\\|.]\n.br\n.B " +
                       name +
                       "\n.RI [ option .\\|.\\|.]\n.RI [ file .\\|.\\|.]\n.PP\nWithout a command, "
                       "files are listed.\n.SH COMMANDS\n";
    const SharedOptions shared = sharedOptions(program);
    for (const CLI::App* command : commandsOf(program)) {
        page += commandSection(*command, shared);
    }
    page += ".SH SHARED OPTIONS\n";
    for (const auto& [group, entries] : shared) {
        page += ".SS " + roff(group) + "\n" + joined(entries, "");
    }
    return page + ".SH NOTES\n.nf\n" + roff(program.get_footer()) + "\n.fi\n";
}
