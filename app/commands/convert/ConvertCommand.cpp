#include "commands/Commands.h"

#include "base/Terminal.h"
#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "commands/ReadingOptions.h"
#include "commands/WritingOptions.h"
#include "commands/convert/Split.h"
#include "export/CopySink.h"

#include <string>

namespace {

class ConvertCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    ExitStatus copy(Host& host, CopyOptions options);

    WritingOptions writing;
    bool keepsTimes = false;
    bool knownOnly = false;
    bool keepsUndecodable = false;
    std::string split;
};

}    // namespace

void ConvertCommand::declare(CLI::App& program)
{
    app = program.add_subcommand(
        "convert", "The messages as they are, cut and cleaned, in any of the input forms");
    writing.declareForm(*app);
    reading.declare(*app);
    writing.declareSender(*app);
    app->add_flag("--times", keepsTimes,
                  "Also write when the messages were received, where that is known; with --to hex "
                  "and --to aivdm")
        ->group(optionGroup::output);
    app->add_flag("--known-only", knownOnly,
                  "Leave out messages of unknown types and of types that the decoder reports to "
                  "nobody");
    app->add_flag("--keep-undecodable", keepsUndecodable,
                  "Also copy messages of known types whose content does not fit. Not together "
                  "with --type, --station or --where");
    declareSplit(*app, split);
    app->footer("Every message that passes the filter is written bit by bit as it was; only parity "
                "is made anew.\nDamaged and truncated messages and what stands between messages "
                "are left out.\n"
                "With --to aivdm, messages that came by AIS keep their sender and its position; "
                "others have\nthe sender that --mmsi names.\n\n"
                "Examples:\n"
                "  rtcm2 convert --to stream -o clean.rtcm2 damaged.rtcm2\n"
                "  rtcm2 convert --type 1,31 --to hex capture.rtcm2\n"
                "  rtcm2 convert --form words --to packed -o out.packed recording.bin\n"
                "  rtcm2 convert --to stream --split station -o stations/ capture.rtcm2\n"
                "  rtcm2 convert --to aivdm --mmsi 2734450 --position 59.9,30.2 capture.rtcm2");
}

ExitStatus ConvertCommand::run(Host& host)
{
    requireNoBinaryOnTerminal(writing.form, reading.output);
    const bool hasFilter = !reading.filter.kinds.empty() || !reading.filter.stations.empty() ||
                           !reading.filter.where.empty();
    if (hasFilter && keepsUndecodable) {
        throw UsageError{"--keep-undecodable does not go with --type, --station or --where: what "
                         "cannot be decoded passes none of them"};
    }
    if (keepsTimes && !isText(writing.to())) {
        throw UsageError{"--times: the form '" + writing.form + "' has no place for times"};
    }
    const CopyOptions options{.form = writing.to(),
                              .copiesUnknown = !knownOnly,
                              .copiesMisfits = keepsUndecodable,
                              .copiesTimes = keepsTimes,
                              .sender = writing.defaultsFor(reading)};
    return copy(host, options);
}

ExitStatus ConvertCommand::copy(Host& host, CopyOptions options)
{
    std::uint64_t withoutSender = 0;
    options.withoutSender = &withoutSender;
    const auto makeSink = [&](Output& output, const MessageFilter&) {
        return std::make_unique<CopySink>(output, options);
    };
    const ExitStatus status = split.empty() ? runSession(host, reading, makeSink)
                                            : runSplit(host, reading, options, split);
    if (withoutSender == 0) {
        return status;
    }
    if (!reading.session.quiet) {
        tell(withoutSenderText(withoutSender));
    }
    return status == ExitStatus::success ? ExitStatus::refused : status;
}

std::unique_ptr<Command> convertCommand()
{
    return std::make_unique<ConvertCommand>();
}
