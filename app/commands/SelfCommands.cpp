#include "commands/SelfCommands.h"

#include "commands/Completion.h"
#include "commands/Manual.h"
#include "commands/OutputFile.h"

void CompletionCommand::declare(CLI::App& parent)
{
    program = &parent;
    app = parent.add_subcommand("completion", "The completion script for a shell");
    app->add_option("shell", shell, "bash or zsh")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh"}));
    app->footer("Examples:\n"
                "  source <(rtcm2 completion bash)\n"
                "  rtcm2 completion zsh > ~/.zsh/completions/_rtcm2");
}

ExitStatus CompletionCommand::run(Host&)
{
    return print(shell == "zsh" ? zshCompletion(*program) : bashCompletion(*program));
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
