#include "commands/Choices.h"

#include <cctype>
#include <sstream>

// The library writes choices into the name of the type: "TEXT:{auto,stream}".
std::vector<std::string> choicesOf(const CLI::Option& option)
{
    const std::string type = option.get_type_name();
    const std::size_t begin = type.find('{');
    const std::size_t end = type.find('}', begin);
    std::vector<std::string> choices;
    if (begin == std::string::npos || end == std::string::npos) {
        return choices;
    }
    std::istringstream list(type.substr(begin + 1, end - begin - 1));
    for (std::string choice; std::getline(list, choice, ',');) {
        if (choice.empty()) {    // before and behind a comma that is a choice itself
            choice = ",";
            std::string behind;
            std::getline(list, behind, ',');
        }
        choices.push_back(choice.substr(0, choice.find("->")));
    }
    return choices;
}

bool takesValue(const CLI::Option& option)
{
    return option.get_items_expected_max() > 0;
}

bool takesFile(const CLI::Option& option)
{
    return option.get_type_name() == "FILE";
}

std::string valueOf(const CLI::Option& option)
{
    std::vector<std::string> choices = choicesOf(option);
    for (std::string& choice : choices) {
        const bool isSign = std::ispunct(static_cast<unsigned char>(choice.front())) != 0;
        choice = isSign ? "'" + choice + "'" : choice;
    }
    const std::string type = option.get_type_name();
    return choices.empty() ? type.substr(0, type.find(':')) : joined(choices, "|");
}

std::string aboutOption(const CLI::Option& option)
{
    const std::string usual = option.get_default_str();
    return option.get_description() + (usual.empty() ? "" : " (default: " + usual + ")") +
           (option.get_required() && option.nonpositional() ? " (required)" : "");
}

std::vector<const CLI::Option*> namedOptionsOf(const CLI::App& command)
{
    return command.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

std::vector<const CLI::Option*> positionalsOf(const CLI::App& command)
{
    return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<const CLI::App*> commandsOf(const CLI::App& program)
{
    return program.get_subcommands(
        [](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<std::string> namesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) {
        names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        names.push_back("--" + name);
    }
    return names;
}

std::string joined(const std::vector<std::string>& parts, const char* separator)
{
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : separator) + part;
    }
    return text;
}
