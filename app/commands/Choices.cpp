#include "commands/Choices.h"

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

std::vector<const CLI::Option*> namedOptionsOf(const CLI::App& command)
{
    return command.get_options([](const CLI::Option* option) { return option->nonpositional(); });
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
