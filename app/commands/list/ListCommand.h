#pragma once

#include "commands/Command.h"
#include "commands/ReadingOptions.h"
#include "commands/list/ListView.h"

class ListCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    ListOptions list;
};
