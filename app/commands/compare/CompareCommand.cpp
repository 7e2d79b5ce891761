#include "commands/Commands.h"

#include "base/Terminal.h"
#include "commands/ReadingOptions.h"
#include "commands/compare/CompareSink.h"
#include "sources/Sources.h"

#include <algorithm>

namespace {

class CompareCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    bool asJson = false;
};

}    // namespace

void CompareCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("compare", "How the messages of two inputs differ");
    reading.declare(*app);
    app->get_option("input")->required()->expected(2)->description(
        "A and B, the files to compare; one of them may be -, standard input");
    app->get_option("--max")->description("Only so many messages of each input");
    app->remove_option(app->get_option("--follow"));    // both are read to their end
    app->add_flag("-j,--json", asJson, "For programs: as JSON");
    app->footer(
        "Messages of the same station, system, type, time and sequence are compared field by "
        "field;\n"
        "times of an hour and numbers that come again are told apart by what is equal around "
        "them.\n"
        "What one input has more often than the other counts as missing there. Options that "
        "choose\n"
        "messages hold for both inputs.\n"
        "\n"
        "Corrections and their rates are compared satellite by satellite, B - A, where type, time "
        "and\n"
        "issue of data are the same. The median of the differences of all satellites of a system "
        "and\n"
        "type at that time is taken off first, because clocks of two stations differ; it is shown "
        "as\n"
        "'common'. docs/json.md describes the JSON.\n"
        "\n"
        "Both inputs are read to their end and kept in memory: two of 100 MB take up to 500 MB.\n"
        "\n"
        "Exit status, as of diff and cmp:\n"
        "    0  the messages are the same\n"
        "    1  they differ\n"
        "    2  and more: trouble, as 'rtcm2 --help' lists it; 3 also where neither has a message\n"
        "\n"
        "Examples:\n"
        "    rtcm2 compare before.rtcm2 after.rtcm2\n"
        "    rtcm2 compare --type 1 --max 1000 tcp://receiver:2101 recorded.rtcm2");
}

ExitStatus CompareCommand::run(Host& host)
{
    if (reading.inputs[0] == "-" && reading.inputs[1] == "-") {
        throw UsageError{"standard input can only be one of the two inputs"};
    }
    std::for_each(reading.inputs.begin(), reading.inputs.end(), checkInput);
    ReadingOptions each = reading;
    each.session.max = 0;
    each.endsEach = true;
    if (reading.session.max == 0 &&
        std::any_of(reading.inputs.begin(), reading.inputs.end(), isEndless)) {
        throw UsageError{"inputs are compared when they have ended: --max says after how many "
                         "messages of each, ?retries=0 that one ends with its connection"};
    }
    CompareSink::Result result = CompareSink::Result::none;
    const ExitStatus status = runSession(host, each, [&](Output& output, const MessageFilter&) {
        return std::make_unique<CompareSink>(host.model, output,
                                             asJson ? writeCompareJson : writeCompareText,
                                             reading.session, result);
    });
    if (status == ExitStatus::nothingFound) {
        return ExitStatus::unreadable;
    }
    if (status != ExitStatus::success) {
        return status;
    }
    if (result == CompareSink::Result::none) {
        tell("there is nothing to compare: neither input has a message that is asked for");
        return ExitStatus::unreadable;
    }
    return result == CompareSink::Result::same ? ExitStatus::success : ExitStatus::different;
}

std::unique_ptr<Command> compareCommand()
{
    return std::make_unique<CompareCommand>();
}
