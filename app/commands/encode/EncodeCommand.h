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
    ExitStatus printTemplates() const;

    std::vector<std::string> inputs{"-"};
    std::string form = "stream";
    std::string outputName;                // empty for standard output
    std::vector<std::string> templates;    // kinds of which a message is wanted to start from
    SessionOptions options;
};
