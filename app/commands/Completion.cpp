#include "commands/Completion.h"

#include "commands/Choices.h"

namespace {

std::string namesOfCommands(const CLI::App& program)
{
    std::vector<std::string> names;
    for (const CLI::App* command : commandsOf(program)) {
        names.push_back(command->get_name());
    }
    return joined(names, " ");
}

// The case of a command: what may follow an option, else its options, else files.
std::string bashCase(const CLI::App& command)
{
    std::string values;
    std::vector<std::string> names;
    for (const CLI::Option* option : namedOptionsOf(command)) {
        const std::vector<std::string> own = namesOf(*option);
        names.insert(names.end(), own.begin(), own.end());
        const std::vector<std::string> choices = choicesOf(*option);
        if (!choices.empty()) {
            values += "        " + joined(own, "|") + ") COMPREPLY=($(compgen -W \"" +
                      joined(choices, " ") + "\" -- \"$current\")); return ;;\n";
        } else if (takesValue(*option) && !takesFile(*option)) {
            values += "        " + joined(own, "|") + ") return ;;\n";
        }
    }
    return "    " + command.get_name() + ")\n        case $previous in\n" + values +
           "        esac\n        options=\"" + joined(names, " ") + "\" ;;\n";
}

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

std::string zshValue(const CLI::Option& option)
{
    const std::vector<std::string> choices = choicesOf(option);
    if (!choices.empty()) {
        return ":value:(" + joined(choices, " ") + ")";
    }
    return !takesValue(option) ? "" : takesFile(option) ? ":file:_files" : ":value: ";
}

std::string zshCase(const CLI::App& command)
{
    std::string text = "        " + command.get_name() + ")\n            _arguments \\\n";
    for (const CLI::Option* option : namedOptionsOf(command)) {
        const std::string about = zshText(option->get_description());
        for (const std::string& name : namesOf(*option)) {
            text += "                '*" + name + "[" + about + "]" + zshValue(*option) + "' \\\n";
        }
    }
    return text + "                '*:file:_files' ;;\n";
}

}    // namespace

std::string bashCompletion(const CLI::App& program)
{
    const std::string name = program.get_name();
    std::string cases;
    for (const CLI::App* command : commandsOf(program)) {
        cases += bashCase(*command);
    }
    return "# bash completion of " + name + "\n_" + name +
           "()\n{\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "    local options=\"\"\n"
           "    COMPREPLY=()\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W \"" +
           namesOfCommands(program) + " --help --version\" -- \"$current\"))\n" +
           "        return\n"
           "    fi\n"
           "    case ${COMP_WORDS[1]} in\n" +
           cases +
           "    esac\n"
           "    if [[ $current == -* ]]; then\n"
           "        COMPREPLY=($(compgen -W \"$options\" -- \"$current\"))\n"
           "    else\n"
           "        COMPREPLY=($(compgen -f -- \"$current\"))\n"
           "    fi\n"
           "}\n"
           "complete -o filenames -F _" +
           name + " " + name + "\n";
}

std::string zshCompletion(const CLI::App& program)
{
    const std::string name = program.get_name();
    std::string commands;
    std::string cases;
    for (const CLI::App* command : commandsOf(program)) {
        commands += "            '" + command->get_name() + ":" +
                    zshText(command->get_description()) + "'\n";
        cases += zshCase(*command);
    }
    return "#compdef " + name + "\n_" + name +
           "()\n{\n"
           "    local -a commands\n"
           "    if (( CURRENT == 2 )); then\n"
           "        commands=(\n" +
           commands +
           "        )\n"
           "        _describe command commands\n"
           "        return\n"
           "    fi\n"
           "    local command=$words[2]\n"
           "    shift words\n"
           "    (( CURRENT-- ))\n"
           "    case $command in\n" +
           cases + "    esac\n}\n_" + name + " \"$@\"\n";
}
