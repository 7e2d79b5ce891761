#pragma once

#include "commands/Command.h"
#include "session/Session.h"

#include <string>
#include <vector>

class EncodeCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    std::vector<std::string> inputs{"-"};
    std::string form = "stream";
    std::string outputName;    // empty for standard output
    SessionOptions options;
};
