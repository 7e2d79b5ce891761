#include "commands/Commands.h"

#include "commands/ReadingOptions.h"
#include "commands/stats/StatsJson.h"
#include "commands/stats/StatsTable.h"

namespace {

class StatsCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    bool asJson = false;
};

}    // namespace

void StatsCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("stats", "What the inputs hold, counted");
    reading.declare(*app);
    app->add_flag("-j,--json", asJson, "For programs: as JSON");
    app->footer("Messages by kind and station with their times and rates, satellites, texts, and\n"
                "what could not be decoded. docs/json.md describes the JSON.\n\n"
                "Examples:\n"
                "    rtcm2 stats capture.rtcm2\n"
                "    rtcm2 stats --station 5 --json *.rtcm2");
}

ExitStatus StatsCommand::run(Host& host)
{
    return runSession(host, reading,
                      [&](Output& output, const MessageFilter& filter) -> std::unique_ptr<Sink> {
                          if (asJson) {
                              return std::make_unique<StatsJson>(output, filter.kinds());
                          }
                          return std::make_unique<StatsTable>(output, filter.kinds());
                      });
}

std::unique_ptr<Command> statsCommand()
{
    return std::make_unique<StatsCommand>();
}
