#include "commands/Commands.h"

#include "commands/ReadingOptions.h"
#include "commands/show/ShowView.h"

namespace {

class ShowCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    bool all = false;
};

}    // namespace

void ShowCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("show", "Every field of every message with its meaning");
    reading.declare(*app);
    app->add_flag("--all", all, "Also fields that mean nothing with the system of the message");
    app->footer("Examples:\n"
                "  rtcm2 show --max 1 capture.rtcm2\n"
                "  rtcm2 show --type 16 --station 268 capture.rtcm2\n"
                "  rtcm2 show --where 'Corrections.Satellite_Id == 12' capture.rtcm2");
}

ExitStatus ShowCommand::run(Host& host)
{
    return runSession(host, reading, [this](Output& output, const MessageFilter&) {
        return std::make_unique<ShowView>(output, output.wantsColour(), all);
    });
}

std::unique_ptr<Command> showCommand()
{
    return std::make_unique<ShowCommand>();
}
