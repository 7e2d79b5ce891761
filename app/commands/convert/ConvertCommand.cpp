#include "commands/Commands.h"

#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "commands/ReadingOptions.h"
#include "commands/convert/CopySink.h"
#include "commands/convert/Split.h"

#include <string>

namespace {

class ConvertCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ReadingOptions reading;
    std::string form;
    bool knownOnly = false;
    bool keepsUndecodable = false;
    std::string split;
};

}    // namespace

void ConvertCommand::declare(CLI::App& program)
{
    app = program.add_subcommand(
        "convert", "The messages as they are, cut and cleaned, in any of the input forms");
    reading.declare(*app);
    app->add_option("--to", form,
                    "Form of the output: stream (6 bits a byte, with parity), packed, hex (a "
                    "message a line), words (a receiver's own recording, with parity)")
        ->required()
        ->check(CLI::IsMember({"stream", "packed", "hex", "words"}))
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
                "are left out.\n\n"
                "Examples:\n"
                "  rtcm2 convert --to stream -o clean.rtcm2 damaged.rtcm2\n"
                "  rtcm2 convert --type 1,31 --to hex capture.rtcm2\n"
                "  rtcm2 convert --form words --to packed -o out.packed recording.bin\n"
                "  rtcm2 convert --to stream --split station -o stations/ capture.rtcm2");
}

ExitStatus ConvertCommand::run(Host& host)
{
    const InputForm to = *inputFormOf(form);
    requireNoBinaryOnTerminal(form, reading.output);
    const bool hasFilter = !reading.filter.kinds.empty() || !reading.filter.stations.empty() ||
                           !reading.filter.where.empty();
    if (hasFilter && keepsUndecodable) {
        throw UsageError{"--keep-undecodable does not go with --type, --station or --where: what "
                         "cannot be decoded passes none of them"};
    }
    const CopyOptions options{
        .form = to, .copiesUnknown = !knownOnly, .copiesMisfits = keepsUndecodable};
    if (!split.empty()) {
        return runSplit(host, reading, options, split);
    }
    return runSession(host, reading, [&](Output& output, const MessageFilter&) {
        return std::make_unique<CopySink>(output, options);
    });
}

std::unique_ptr<Command> convertCommand()
{
    return std::make_unique<ConvertCommand>();
}
