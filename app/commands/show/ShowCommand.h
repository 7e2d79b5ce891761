#pragma once

#include "commands/Command.h"
#include "commands/ReadingOptions.h"

class ShowCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    bool all = false;
};
