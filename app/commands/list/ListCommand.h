#pragma once

#include "commands/Command.h"
#include "commands/ReadingOptions.h"
#include "commands/list/BriefView.h"
#include "commands/list/ListView.h"

class ListCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    bool wantsColumns() const { return line || !list.fields.empty(); }
    std::size_t inputWidth() const;

    ReadingOptions reading;
    ListOptions list;
    bool line = false;    // as the decoder writes it
    bool all = false;
};
