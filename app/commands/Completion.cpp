#include "commands/Completion.h"

#include "base/Names.h"
#include "commands/Choices.h"
#include "format/FieldPath.h"

#include <algorithm>
#include <cctype>

namespace {

// The words for the value of an option; empty when it admits any.
std::vector<std::string> wordsFor(const CLI::Option& option, const CompletionWords& words)
{
    const auto known = words.find(valueOf(option));
    return known != words.end() ? known->second : choicesOf(option);
}

std::vector<std::string> namesOfCommands(const CLI::App& program)
{
    std::vector<std::string> names;
    for (const CLI::App* command : commandsOf(program)) {
        names.push_back(command->get_name());
    }
    return names;
}

std::vector<std::string> namesOfOptions(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : namedOptionsOf(command)) {
        const std::vector<std::string> own = namesOf(*option);
        names.insert(names.end(), own.begin(), own.end());
    }
    return names;
}

std::string quotedWords(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words) {
        text += " '" + word + "'";
    }
    return text;
}

// Lists of words stand in functions of their own, which several options use: rtcm2_TYPE.
bool hasFunction(const CLI::Option& option, const CompletionWords& words)
{
    return words.count(valueOf(option)) != 0;
}

std::string bashAction(const CLI::Option& option, const CompletionWords& words)
{
    const std::vector<std::string> choices = wordsFor(option, words);
    return hasFunction(option, words) ? "_rtcm2_" + valueOf(option)
           : !choices.empty()         ? "_rtcm2_words" + quotedWords(choices)
           : takesFile(option)        ? "_rtcm2_files"
                                      : "return";
}

// The case of a command: the values of its options, the options, and what stands without one.
std::string bashCase(const CLI::App& command, const CompletionWords& words)
{
    std::string values;
    for (const CLI::Option* option : namedOptionsOf(command)) {
        if (takesValue(*option)) {
            values += "        " + joined(namesOf(*option), "|") + ") " +
                      bashAction(*option, words) + "; return ;;\n";
        }
    }
    std::string arguments;
    for (const CLI::Option* option : positionalsOf(command)) {
        arguments = bashAction(*option, words);
    }
    return "    " + command.get_name() + ")\n        case $previous in\n" + values +
           "        esac\n        case $current in\n        -*) _rtcm2_words" +
           quotedWords(namesOfOptions(command)) + " ;;\n        *) " + arguments +
           " ;;\n        esac ;;\n";
}

constexpr const char* bashHelpers = R"(
# In a list with commas the last part is what is completed.
_rtcm2_words()
{
    local before="" last=$current IFS=$'\n'
    case $current in *,*) before=${current%,*}, last=${current##*,} ;; esac
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -P "$before" -W "$*" -- "$last")
}
_rtcm2_files()
{
    compopt -o filenames 2> /dev/null
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$current")
}
)";

// In single quotes and inside the brackets of what zsh is told of an option.
std::string zshText(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '\'') {
            escaped += "'\\''";
        } else {
            if (c == '[' || c == ']' || c == ':') {
                escaped += '\\';
            }
            escaped += c;
        }
    }
    return escaped;
}

// As the shell reads it once more, in single quotes.
std::string zshWord(const std::string& word)
{
    std::string escaped;
    for (const char c : word) {
        const bool isPlain = std::isalnum(static_cast<unsigned char>(c)) != 0;
        escaped += isPlain ? std::string(1, c) : std::string("\\") + c;
    }
    return escaped;
}

std::string zshAction(const CLI::Option& option, const CompletionWords& words)
{
    std::vector<std::string> choices = choicesOf(option);
    std::transform(choices.begin(), choices.end(), choices.begin(), zshWord);
    return hasFunction(option, words) ? "_rtcm2_" + valueOf(option)
           : !choices.empty()         ? "(" + joined(choices, " ") + ")"
           : takesFile(option)        ? "_files"
                                      : " ";
}

std::string zshCase(const CLI::App& command, const CompletionWords& words)
{
    std::string text = "    " + command.get_name() + ")\n        _arguments \\\n";
    for (const CLI::Option* option : namedOptionsOf(command)) {
        const std::string about = zshText(option->get_description());
        const std::string value =
            takesValue(*option) ? ":value:" + zshAction(*option, words) : std::string();
        for (const std::string& name : namesOf(*option)) {
            text += "            '*" + name + "[" + about + "]" + value + "' \\\n";
        }
    }
    for (const CLI::Option* option : positionalsOf(command)) {
        text += "            '*:" + valueOf(*option) + ":" + zshAction(*option, words) + "' \\\n";
    }
    return text.substr(0, text.size() - 3) + " ;;\n";
}

}    // namespace

CompletionWords completionWords(const FormatModel& model)
{
    CompletionWords words;
    std::vector<std::string>& types = words["TYPE"];
    std::vector<std::string>& described = words["KIND"];
    std::vector<std::string>& arrays = words["SUBMESSAGES"];
    std::vector<const KindModel*> mainKinds;
    described.push_back("all");
    for (const auto& kind : model.kinds()) {
        const std::string name =
            kind->typeNumber >= 0 ? std::to_string(kind->typeNumber) : identifierOf(kind->name);
        described.push_back(name);
        if (!kind->isMain) {
            continue;
        }
        types.push_back(name);
        mainKinds.push_back(kind.get());
        for (const FieldModel& field : kind->fields) {
            const bool isNew =
                std::find(arrays.begin(), arrays.end(), field.identifier) == arrays.end();
            if (field.element != nullptr && isNew) {
                arrays.push_back(field.identifier);
            }
        }
    }
    words["FIELD"] = pathNames(mainKinds);
    return words;
}

std::string bashCompletion(const CLI::App& program, const CompletionWords& words)
{
    const std::string name = program.get_name();
    std::string text = "# bash completion of " + name + "\n" + bashHelpers;
    for (const auto& [value, list] : words) {
        text += "_rtcm2_" + value + "()\n{\n    _rtcm2_words" + quotedWords(list) + "\n}\n";
    }
    text += R"(_rtcm2()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=list word
    # What follows "=" comes as words of their own.
    [ "$current" = "=" ] && current=""
    [ "$previous" = "=" ] && previous=${COMP_WORDS[COMP_CWORD - 2]}
    COMPREPLY=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
        case $word in )" +
            joined(namesOfCommands(program), "|") + R"() command=$word; break ;; esac
    done
    if [ "$COMP_CWORD" -eq 1 ]; then
        _rtcm2_words)" +
            quotedWords(namesOfCommands(program)) + quotedWords({"--version"}) + R"(
    fi
    case $command in
)";
    for (const CLI::App* command : commandsOf(program)) {
        text += bashCase(*command, words);
    }
    return text + "    esac\n}\ncomplete -F _rtcm2 " + name + "\n";
}

std::string zshCompletion(const CLI::App& program, const CompletionWords& words)
{
    const std::string name = program.get_name();
    std::string text =
        "#compdef " + name + "\n\n# In a list with commas the last part is what is completed.\n";
    for (const auto& [value, list] : words) {
        text += "_rtcm2_" + value + "()\n{\n    compset -P '*,'\n    compadd -S '' --" +
                quotedWords(list) + "\n}\n";
    }
    text += "_rtcm2()\n{\n    local command=list\n    local -a commands=(\n";
    for (const CLI::App* command : commandsOf(program)) {
        text +=
            "        '" + command->get_name() + ":" + zshText(command->get_description()) + "'\n";
    }
    text += R"(    )
    if (( CURRENT == 2 )); then
        _describe command commands
    elif (( ${commands[(I)$words[2]:*]} )); then
        command=$words[2]
        shift words
        (( CURRENT-- ))
    fi
    case $command in
)";
    for (const CLI::App* command : commandsOf(program)) {
        text += zshCase(*command, words);
    }
    return text +
           "    esac\n}\n\n# Sourced, it is to be registered; found by its name, it is to "
           "complete.\n"
           "if [ \"$funcstack[1]\" = _rtcm2 ]; then\n    _rtcm2 \"$@\"\nelse\n    compdef _rtcm2 " +
           name + "\nfi\n";
}
