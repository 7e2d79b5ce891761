#include "commands/Arguments.h"

#include "base/NearestName.h"
#include "commands/Choices.h"
#include "commands/Command.h"

#include <algorithm>
#include <filesystem>

#include <unistd.h>

namespace {

const CLI::App* findCommand(const CLI::App& program, const std::string& name)
{
    const auto found = program.get_subcommands(
        [&](const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

// Whether the value of the option, or of the last of several letters behind a "-", is the next
// argument.
bool takesNext(const CLI::App& command, const std::string& argument)
{
    if (argument.substr(0, 2) == "--") {
        const CLI::Option* const option = command.get_option_no_throw(argument);
        return option != nullptr && takesValue(*option);
    }
    for (std::size_t i = 1; i < argument.size(); ++i) {
        const CLI::Option* const option =
            command.get_option_no_throw(std::string("-") + argument[i]);
        if (option == nullptr || takesValue(*option)) {
            return option != nullptr && i + 1 == argument.size();
        }
    }
    return false;
}

// The first argument that is neither an option of the command nor the value of one.
std::vector<std::string>::iterator firstWord(const CLI::App& command,
                                             std::vector<std::string>& arguments)
{
    auto word = arguments.begin();
    while (word != arguments.end() && *word != "--" && *word != "-" && word->substr(0, 1) == "-") {
        const bool isPair = takesNext(command, *word) && word + 1 != arguments.end();
        word += isPair ? 2 : 1;
    }
    return word;
}

// What has a sign that no name of a command has is a file, whether it is there or not.
void requireFile(const CLI::App& program, const std::string& name)
{
    std::error_code unknown;
    if (name.find_first_of("-./:") != std::string::npos || std::filesystem::exists(name, unknown)) {
        return;
    }
    std::vector<std::string> names;
    for (const CLI::App* command : commandsOf(program)) {
        names.push_back("'" + command->get_name() + "'");
    }
    const std::string meant = suggestion(nearestNames(name, names));
    throw UsageError{"there is no command and no file '" + name + "'" +
                     (meant.empty() ? " ('" + program.get_name() + " --help' lists the commands)"
                                    : "; " + meant)};
}

}    // namespace

std::vector<std::string> withCommand(const CLI::App& program, const std::string& usual,
                                     std::vector<std::string> arguments)
{
    if (arguments.empty() && ::isatty(STDIN_FILENO) == 1) {
        return {"--help"};
    }
    if (!arguments.empty() && program.get_option_no_throw(arguments.front()) != nullptr) {
        return arguments;    // --help or --version
    }
    const auto word = firstWord(*findCommand(program, usual), arguments);
    if (word != arguments.end() && findCommand(program, *word) != nullptr) {
        std::rotate(arguments.begin(), word, word + 1);
        return arguments;
    }
    if (word != arguments.end()) {
        requireFile(program, *word);
    }
    arguments.insert(arguments.begin(), usual);
    return arguments;
}
