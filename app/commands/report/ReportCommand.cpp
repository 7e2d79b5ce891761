#include "commands/Commands.h"

#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "commands/ReadingOptions.h"
#include "commands/check/WantedOptions.h"
#include "commands/report/ReportSink.h"

namespace {

constexpr const char* reportHelp =
    "One file for a browser, with nothing from outside: the verdict of 'check' first, then what\n"
    "came when, rates and gaps, health, positions, corrections by satellite with their accuracy,\n"
    "special messages, damage, and everything counted. Tables sort by a click on a heading. Each\n"
    "input has a chapter. The numbers are those of 'check' and 'stats'; curves keep the least and\n"
    "the greatest value of each pixel, however long the input is. What is read live is told of at\n"
    "its end: Ctrl-C ends it. docs/report.md tells what each part shows.\n\n"
    "With --type, --except or --where, the verdict and the rates are about all messages all the\n"
    "same, since their numbers follow each other; the rest is about those that are chosen.\n\n"
    "Examples:\n"
    "    rtcm2 report -o report.html capture.rtcm2\n"
    "    rtcm2 report -o report.html --expect 1:1s --position 3705294.33,513572.04,5148765.99 "
    "a.rtcm2\n"
    "    rtcm2 report -o now.html ntrip://caster.example/MOUNT    until Ctrl-C";

class ReportCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    void declareChoice();

    ReadingOptions reading;
    WantedOptions wantedOptions;
};

}    // namespace

void ReportCommand::declareChoice()
{
    const auto add = [this](const char* name, std::vector<std::string>& values, const char* about) {
        app->add_option(name, values, about)
            ->delimiter(',')
            ->allow_extra_args(false)
            ->type_name("TYPE")
            ->group(optionGroup::choice);
    };
    add("-t,--type", reading.filter.kinds, "Count and draw only messages of these types");
    add("--except", reading.filter.excludedKinds, "Count and draw no messages of these types");
    app->add_option("-w,--where", reading.filter.where,
                    "Count and draw only messages for which the condition holds; 'rtcm2 --help' "
                    "tells how to write one")
        ->type_name("EXPRESSION")
        ->group(optionGroup::choice);
}

void ReportCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("report", "What inputs hold, in pictures: a page for a browser");
    reading.declareInput(*app);
    wantedOptions.declare(*app, reading.filter);
    declareChoice();
    declareOutput(*app, reading.output);
    app->add_flag("-q,--quiet", reading.session.quiet,
                  "Nothing on standard error but what ends the program");
    app->footer(reportHelp);
}

ExitStatus ReportCommand::run(Host& host)
{
    if (goesToTerminal(reading.output)) {
        throw UsageError{"a report is for a browser and not for a terminal; name a file with "
                         "--output, as in --output report.html"};
    }
    const Wanted wanted = wantedOptions.wanted(host.model, reading.filter, false);
    ReportSubject subject(host.model, wanted, reading.filter);
    subject.date = reading.part.window().date;
    // Numbers of messages follow each other: all messages are looked at.
    ReadingOptions options = reading;
    options.filter = {};
    options.session.onError = OnError::skip;
    return runSession(host, options, [&](Output& output, const MessageFilter&) {
        return std::make_unique<ReportSink>(output, subject, reading.isLive());
    });
}

std::unique_ptr<Command> reportCommand()
{
    return std::make_unique<ReportCommand>();
}
