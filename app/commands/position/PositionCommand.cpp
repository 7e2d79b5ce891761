#include "commands/Commands.h"

#include "base/Terminal.h"
#include "commands/ReadingOptions.h"
#include "commands/position/PositionSink.h"

namespace {

// The frames of the systems that have one of their own.
std::string framesHelp()
{
    std::string text;
    for (std::int32_t i = 0; i < RTCM2_system_count(); ++i) {
        const RTCM2_system_s& system = *RTCM2_system(i);
        if (system.frame != std::string(ellipsoidName)) {
            text += std::string("Points of ") + system.name + " are given in its own frame, " +
                    system.frame + "; they are not converted.\n";
        }
    }
    return text;
}

// "3, 22, 24, 32"
std::string typesWithPoints(const FormatModel& model)
{
    std::string types;
    for (const auto& kind : model.kinds()) {
        if (kind->isMain && kind->row->point_count > 0) {
            types += (types.empty() ? "" : ", ") + std::to_string(kind->typeNumber);
        }
    }
    return types;
}

class PositionCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    bool asJson = false;
};

}    // namespace

void PositionCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("position", "Where the reference stations and antennas are");
    reading.declare(*app);
    app->add_flag("-j,--json", asJson, "For programs: as JSON");
    app->footer(
        "Latitude, longitude and height of every point of every station, when it was first told\n"
        "and how it changed. A point that is told as a distance is shown at that distance from\n"
        "the last position of the point that it belongs to. Degrees and metres are on the\n"
        "ellipsoid of " +
        std::string(ellipsoidName) + ", X, Y and Z exactly as in the message.\n" + framesHelp() +
        "docs/json.md describes the JSON.\n\n"
        "Exit status 1: no message tells a position.\n\n"
        "Examples:\n"
        "    rtcm2 position capture.rtcm2\n"
        "    rtcm2 position --station 5 --json *.rtcm2");
}

ExitStatus PositionCommand::run(Host& host)
{
    Positions positions;
    const ExitStatus status = runSession(host, reading, [&](Output& output, const MessageFilter&) {
        return std::make_unique<PositionSink>(output, positions,
                                              asJson ? positionJson : positionTable);
    });
    if (status != ExitStatus::success || !positions.points().empty()) {
        return status;
    }
    tell("no position in the input; messages of these types tell one: " +
         typesWithPoints(host.model));
    return ExitStatus::nothingFound;
}

std::unique_ptr<Command> positionCommand()
{
    return std::make_unique<PositionCommand>();
}
