#include "commands/Commands.h"

#include "check/Finding.h"
#include "commands/CommonOptions.h"
#include "commands/ReadingOptions.h"
#include "commands/check/CheckSink.h"
#include "commands/check/WantedOptions.h"

namespace {

constexpr const char* checkHelp =
    "A verdict comes first, then problems with their place, then tables. Lost messages are found\n"
    "by the sequence numbers and the time; where a gap is longer than a round of the numbers, "
    "what\n"
    "is told is the least that the time allows. While an input is waited for, each problem is a\n"
    "line as soon as it is seen, and so is a silence of 3 times the shortest time expected, or, "
    "if\n"
    "no type is, of 10 times the mean and at least 5 s. docs/json.md describes the JSON.\n\n"
    "Exit status:\n"
    "    0  good\n"
    "    1  warning: messages lost, damaged, out of place or with content that does not fit; a "
    "type\n"
    "       that comes at another rate than before, no more, or more than 1.5 times as seldom as\n"
    "       expected; a position that moved; a station that says to use it with care\n"
    "    2  critical: 5 % or more of the messages lost or damaged; an expected type that is "
    "missing\n"
    "       or comes more than 3 times as seldom; a point away from --position; a station that\n"
    "       says that it does not work\n"
    "    3  not checked: a wrong option, an input that cannot be read, no message\n\n"
    "Examples:\n"
    "    rtcm2 check capture.rtcm2\n"
    "    rtcm2 check --expect 1:1s,3:1min --position 3705294.33,513572.04,5148765.99 a.rtcm2\n"
    "    rtcm2 check --expect 9:5s 'serial:/dev/ttyS0?baud=4800'";

class CheckCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;
    // As programs that watch others understand it.
    int exitStatus(ExitStatus end) const override;

private:
    ReadingOptions reading;
    WantedOptions wantedOptions;
    bool asJson = false;
    bool withTimes = false;
    Severity verdict = Severity::good;
};

}    // namespace

void CheckCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("check", "Whether streams are what they should be");
    reading.declareInput(*app);
    wantedOptions.declare(*app, reading.filter);
    declareOutput(*app, reading.output);
    declareTimes(*app, withTimes);
    app->add_flag("-j,--json", asJson, "For programs: as JSON");
    app->add_flag("-q,--quiet", reading.session.quiet,
                  "Nothing on standard error but what ends the program");
    app->footer(checkHelp);
}

ExitStatus CheckCommand::run(Host& host)
{
    const Wanted wanted = wantedOptions.wanted(host.model, reading.filter, withTimes);
    // Numbers of messages follow each other: all messages are looked at.
    ReadingOptions options = reading;
    options.filter = {};
    options.session.onError = OnError::skip;
    const bool isWatch = reading.isLive();
    CheckReport report{.isJson = asJson, .isWatch = isWatch};
    const ExitStatus end = runSession(host, options, [&](Output& output, const MessageFilter&) {
        return std::make_unique<CheckSink>(output, host.model, wanted, report);
    });
    verdict = report.verdict;
    // Somebody ended the watch: that is how it ends.
    const bool isEnded = end == ExitStatus::interrupted && isWatch && report.messages > 0;
    const bool isChecked = end == ExitStatus::success && report.messages > 0;
    return isEnded || isChecked         ? ExitStatus::success
           : end == ExitStatus::success ? ExitStatus::nothingFound
                                        : end;
}

int CheckCommand::exitStatus(ExitStatus end) const
{
    constexpr int notChecked = 3;
    return end == ExitStatus::success ? static_cast<int>(verdict) : notChecked;
}

std::unique_ptr<Command> checkCommand()
{
    return std::make_unique<CheckCommand>();
}
