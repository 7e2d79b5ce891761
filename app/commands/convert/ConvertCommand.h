#pragma once

#include "commands/Command.h"
#include "commands/ReadingOptions.h"

#include <string>

class ConvertCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    std::string form;
    bool knownOnly = false;
    bool keepsUndecodable = false;
};
