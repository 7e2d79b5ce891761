// One command of the program.
#pragma once

#include "base/ExitStatus.h"
#include "commands/Host.h"

#include <CLI/CLI.hpp>

// Declares its options, keeps what was given, and runs.
class Command {
public:
    virtual ~Command() = default;

    // Adds the command to the program. Called once, before the arguments are parsed.
    virtual void declare(CLI::App& program) = 0;

    // Whether the arguments name this command.
    bool isChosen() const { return app != nullptr && app->parsed(); }

    // Throws UsageError for arguments that are wrong together or in the light of the format.
    virtual ExitStatus run(Host& host) = 0;

    // The exit status for an end like this; some commands have numbers of their own. Not asked
    // where a signal ended the program.
    virtual int exitStatus(ExitStatus end) const { return static_cast<int>(end); }

protected:
    CLI::App* app = nullptr;    // set by declare(); owned by the program
};

// Wrong arguments; the text is for people.
struct UsageError {
    std::string text;
};
