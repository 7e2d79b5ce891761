#include "commands/Mistakes.h"

#include "base/NearestName.h"
#include "commands/Choices.h"

#include <algorithm>

namespace {

std::string withSuggestion(const std::string& text, const std::string& name,
                           const std::vector<std::string>& candidates)
{
    const std::string meant = suggestion(nearestNames(name, candidates));
    return meant.empty() ? text : text + "; " + meant;
}

// An option that the command does not have; empty when that is not what is wrong.
std::string unknownOption(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : namedOptionsOf(command)) {
        const std::vector<std::string> own = namesOf(*option);
        names.insert(names.end(), own.begin(), own.end());
    }
    for (const std::string& argument : command.remaining()) {
        if (argument.size() > 1 && argument.front() == '-') {
            const std::string name = argument.substr(0, argument.find('='));
            return withSuggestion("there is no option " + name, name, names);
        }
    }
    return {};
}

// A value that an option does not admit; empty when that is not what is wrong.
std::string unknownValue(const CLI::App& command)
{
    for (const CLI::Option* option : command.get_options()) {
        const std::vector<std::string> choices = choicesOf(*option);
        for (const std::string& value : option->results()) {
            const bool isKnown = choices.empty() ||
                                 std::find(choices.begin(), choices.end(), value) != choices.end();
            if (!isKnown) {
                return option->get_name() + ": " +
                       withSuggestion("'" + value + "' is none of " + joined(choices, ", "), value,
                                      choices);
            }
        }
    }
    return {};
}

// An option without the value that it needs, of which the library tells "--max: ..."; empty when
// that is not what is wrong.
std::string missingValue(const CLI::App& command, const std::string& told)
{
    const std::string name = told.substr(0, told.find(':'));
    const CLI::Option* const option = command.get_option_no_throw(name);
    const bool isMissing = option != nullptr && option->results().empty() && takesValue(*option);
    return isMissing ? name + " needs a value: " + valueOf(*option) : std::string();
}

}    // namespace

std::string mistakeOf(const CLI::App& program, const CLI::ParseError& reason)
{
    const std::vector<CLI::App*> chosen = program.get_subcommands();
    const CLI::App& command = chosen.empty() ? program : *chosen.front();
    const std::string name = program.get_name() + (chosen.empty() ? "" : " " + command.get_name());
    std::string text;
    if (dynamic_cast<const CLI::ExtrasError*>(&reason) != nullptr) {
        text = unknownOption(command);
    } else if (dynamic_cast<const CLI::ValidationError*>(&reason) != nullptr) {
        text = unknownValue(command);
    } else if (dynamic_cast<const CLI::ArgumentMismatch*>(&reason) != nullptr) {
        text = missingValue(command, reason.what());
    }
    return name + ": " + (text.empty() ? reason.what() : text) + "\n'" + name +
           " --help' tells more";
}
