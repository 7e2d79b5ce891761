#include "commands/Commands.h"

#include "commands/Completion.h"
#include "commands/Manual.h"
#include "commands/OutputFile.h"

namespace {

// Prints the completion script for a shell.
class CompletionCommand : public Command {
public:
    void declare(CLI::App& parent) override;
    ExitStatus run(Host& host) override;

private:
    const CLI::App* program = nullptr;
    std::string shell;
};

// Prints the manual page; used by the installation.
class ManualCommand : public Command {
public:
    void declare(CLI::App& parent) override;
    ExitStatus run(Host& host) override;

private:
    const CLI::App* program = nullptr;
};

}    // namespace

void CompletionCommand::declare(CLI::App& parent)
{
    program = &parent;
    app = parent.add_subcommand("completion", "Completion with the Tab key, for bash and zsh");
    app->add_option("shell", shell, "bash or zsh")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh"}));
    app->footer(
        "With it, the Tab key completes commands, options and their values, types, fields and\n"
        "files. The first example works in the shell that is open, and in every new one when it\n"
        "stands in ~/.bashrc or, for zsh, behind compinit in ~/.zshrc.\n\n"
        "Examples:\n"
        "  source <(rtcm2 completion bash)\n"
        "  rtcm2 completion zsh > ~/.zsh/completions/_rtcm2");
}

ExitStatus CompletionCommand::run(Host& host)
{
    const CompletionWords words = completionWords(host.model);
    return print(shell == "zsh" ? zshCompletion(*program, words) : bashCompletion(*program, words));
}

void ManualCommand::declare(CLI::App& parent)
{
    program = &parent;
    app = parent.add_subcommand("manual", "The manual page, for man -l -");
    app->group("");
}

ExitStatus ManualCommand::run(Host&)
{
    return print(manualPage(*program, RTCM2_VERSION));
}

std::unique_ptr<Command> completionCommand()
{
    return std::make_unique<CompletionCommand>();
}

std::unique_ptr<Command> manualCommand()
{
    return std::make_unique<ManualCommand>();
}
