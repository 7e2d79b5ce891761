#pragma once

#include "Command.h"
#include "ListView.h"
#include "ReadingOptions.h"

class ListCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    ListOptions list;
};
