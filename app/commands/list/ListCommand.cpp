#include "commands/Commands.h"

#include "base/Interrupt.h"
#include "base/Terminal.h"
#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "commands/ReadingOptions.h"
#include "commands/list/BriefView.h"
#include "commands/list/ListView.h"
#include "commands/list/StreamsTable.h"
#include "sources/Sources.h"

#include <algorithm>

namespace {

class ListCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    bool wantsColumns() const { return line || !list.fields.empty(); }
    std::size_t inputWidth() const;
    ExitStatus listStreams() const;

    ReadingOptions reading;
    ListOptions list;
    bool line = false;    // as the decoder writes it
    bool all = false;
};

}    // namespace

void ListCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("list", "One line a message");
    reading.declare(*app);
    app->add_flag("--all", all, "Also fields that mean nothing with the system of the message");
    app->add_flag("-l,--line", line, "The lines of the decoder: all fields as raw values");
    app->add_option("--fields", list.fields,
                    "Columns of one's own: fields and quantities by name; those of sub-messages "
                    "after a dot, as in Corrections.PRC_m")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("FIELD");
    app->add_flag("-i,--interpreted", list.interpreted,
                  "With --line or --fields: show what coded values mean");
    app->add_option("-s,--separator", list.separator,
                    "With --line or --fields: text between two fields")
        ->capture_default_str();
    app->add_flag("-p,--position", list.position,
                  "Also the byte position; with --line or --fields number and position first");
    declareTimes(*app, list.times);
    app->footer(
        "A line is cut where a terminal ends; into a file or a pipe it is written whole.\n\n"
        "Examples:\n"
        "  rtcm2 list capture.rtcm2\n"
        "  rtcm2 list --fields Modified_Z_Count_s,Corrections.Satellite,Corrections.PRC_m "
        "capture.rtcm2\n"
        "  rtcm2 list --line -i capture.rtcm2\n"
        "  rtcm2 list --type 1,31 tcp://receiver:2101\n"
        "  rtcm2 list ntrip://caster               the streams that a caster has\n"
        "  rtcm2 list ntrip://caster/MOUNTPOINT");
}

// Names lead where there are several.
std::size_t ListCommand::inputWidth() const
{
    std::size_t width = std::string_view("Input").size();
    for (const std::string& name : reading.inputs) {
        width = std::max(width, printable(shownInput(name)).size());
    }
    return reading.inputs.size() > 1 ? width : 0;
}

// Of a caster.
ExitStatus ListCommand::listStreams() const
{
    const CasterAnswer answer = askCaster(reading.inputs.front());
    if (interrupt::requested()) {
        return ExitStatus::interrupted;
    }
    if (!answer.problem.empty()) {
        tell("cannot list the streams: " + answer.problem);
    }
    const ExitStatus status = answer.problem.empty() || !answer.streams.empty()
                                  ? print(streamsTable(answer.streams), reading.output)
                                  : ExitStatus::unreadable;
    return status == ExitStatus::success && !answer.problem.empty() ? ExitStatus::unreadable
                                                                    : status;
}

ExitStatus ListCommand::run(Host& host)
{
    if (reading.inputs.size() == 1 && isCaster(reading.inputs.front())) {
        return listStreams();
    }
    if (!wantsColumns() && (list.interpreted || app->count("--separator") > 0)) {
        throw UsageError{"--interpreted and --separator are for --line and --fields"};
    }
    list.withInput = !list.fields.empty() && reading.inputs.size() > 1;
    return runSession(host, reading,
                      [this](Output& output, const MessageFilter& filter) -> std::unique_ptr<Sink> {
                          checkNames(filter.kinds(), list.fields);
                          if (wantsColumns()) {
                              return std::make_unique<ListView>(output, list, filter.kinds());
                          }
                          const BriefOptions brief{.inputWidth = inputWidth(),
                                                   .position = list.position,
                                                   .times = list.times,
                                                   .all = all,
                                                   .colour = output.wantsColour(),
                                                   .columns = output.columns()};
                          return std::make_unique<BriefView>(output, brief, filter.kinds());
                      });
}

std::unique_ptr<Command> listCommand()
{
    return std::make_unique<ListCommand>();
}
