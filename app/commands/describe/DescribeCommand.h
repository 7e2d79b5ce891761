#pragma once

#include "commands/Command.h"
#include "commands/describe/DescribeFacts.h"

#include <string>
#include <vector>

// Needs no input: what it tells comes from the format's descriptors.
class DescribeCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    describe::Kinds chosenKinds(const FormatModel& format) const;
    std::string description(const FormatModel& format) const;

    std::vector<std::string> names;
    bool json = false;
    bool markdown = false;
    std::string outputPath;    // empty for standard output
};
