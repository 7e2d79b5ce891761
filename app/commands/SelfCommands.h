// Commands about the program itself.
#pragma once

#include "commands/Command.h"

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
