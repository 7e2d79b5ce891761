#pragma once

#include "commands/Command.h"
#include "commands/ReadingOptions.h"
#include "commands/check/Finding.h"

class CheckCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;
    // As programs that watch others understand it.
    int exitStatus(ExitStatus end) const override;

private:
    ReadingOptions reading;
    std::vector<std::string> expected;
    std::string position;
    double tolerance = 1;
    bool asJson = false;
    Severity verdict = Severity::good;
};
