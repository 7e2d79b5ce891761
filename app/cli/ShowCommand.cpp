#include "ShowCommand.h"

#include "ShowView.h"

void ShowCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("show", "Every field of every message with its meaning");
    reading.declare(*app);
}

ExitStatus ShowCommand::run(Host& host)
{
    return runSession(host, reading, [](Output& output, const MessageFilter&) {
        return std::make_unique<ShowView>(output, output.wantsColour());
    });
}
