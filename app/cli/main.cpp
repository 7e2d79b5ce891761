#include "ConvertCommand.h"
#include "DescribeCommand.h"
#include "ExportCommand.h"
#include "Interrupt.h"
#include "ListCommand.h"
#include "ShowCommand.h"
#include "StatsCommand.h"

#include <QLocale>

#include <cstdio>

namespace {

ExitStatus runChosen(const std::vector<std::unique_ptr<Command>>& commands)
{
    try {
        Host host;
        for (const auto& command : commands) {
            if (command->isChosen()) {
                return command->run(host);
            }
        }
    } catch (const UsageError& error) {
        std::fprintf(stderr, "rtcm2: %s\n", error.text.c_str());
    }
    return ExitStatus::usage;
}

}    // namespace

int main(int argc, char** argv)
{
    // Numbers look the same everywhere.
    QLocale::setDefault(QLocale::c());
    interrupt::install();

    CLI::App app{"Decodes, filters, exports and converts RTCM 2.x differential GNSS messages.",
                 "rtcm2"};
    app.require_subcommand(1);
    app.set_version_flag("--version", "rtcm2 " RTCM2_VERSION);
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<ListCommand>());
    commands.push_back(std::make_unique<ShowCommand>());
    commands.push_back(std::make_unique<DescribeCommand>());
    commands.push_back(std::make_unique<StatsCommand>());
    commands.push_back(std::make_unique<ExportCommand>());
    commands.push_back(std::make_unique<ConvertCommand>());
    for (const auto& command : commands) {
        command->declare(app);
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(ExitStatus::usage);
    }
    return static_cast<int>(runChosen(commands));
}
