#include "commands/Commands.h"

#include "base/Terminal.h"
#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "commands/WritingOptions.h"
#include "commands/encode/EncodeSession.h"
#include "commands/encode/MainKind.h"
#include "commands/encode/Template.h"
#include "forms/InputForm.h"
#include "session/Session.h"

#include <string>
#include <unistd.h>
#include <vector>

namespace {

class EncodeCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    ExitStatus printTemplates() const;
    Envelope commonEnvelope() const;

    std::vector<std::string> inputs{"-"};
    WritingOptions writing;
    std::string mmsi;
    std::string outputName;                // empty for standard output
    std::vector<std::string> templates;    // kinds of which a message is wanted to start from
    SessionOptions options;
};

}    // namespace

void EncodeCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("encode", "Makes messages from JSON as export writes it");
    declareInputs(*app, inputs);
    app->add_option("--template", templates,
                    "Read nothing, but print messages of these types in JSON to start from, by "
                    "number or name; several with commas between them")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("TYPE");
    writing.declareForm(*app, nameOf(InputForm::stream));
    app->add_option("--mmsi", mmsi, "With --to aivdm: the MMSI of the sender")
        ->type_name("NUMBER")
        ->group(optionGroup::output);
    writing.declarePosition(*app);
    declareOutput(*app, outputName);
    declareMax(*app, options.max);
    declareTrouble(*app, options,
                   "What to do about messages that cannot be encoded: report them on standard "
                   "error, skip them silently, or stop at the first. The exit status is 6 when "
                   "there were any");
    app->footer(
        "Reads one JSON object a message: a line each, in an array, or simply in a row, with "
        "these\n"
        "keys:\n"
        "    kind    name or type number of the message kind, as 'rtcm2 describe' lists them\n"
        "    fields  the message's fields, as raw values; a coded value also as the text that\n"
        "            'rtcm2 describe' shows for it\n"
        "    fill    bits behind the last field, as zeros and ones, where they are not 1010...\n"
        "    hex     the packed message, for objects without fields\n"
        "Other keys are ignored. Preamble, message type, number of data words, counts and lengths\n"
        "may be left out; where they are given they must agree with the rest. What cannot be\n"
        "encoded is left out and told on standard error; the exit status is then 6.\n\n"
        "Examples:\n"
        "    rtcm2 encode --template 3 > station.json     then edit it, and\n"
        "    rtcm2 encode -o station.rtcm2 station.json\n"
        "    rtcm2 export capture.rtcm2 | rtcm2 encode --to packed -o capture.packed");
}

ExitStatus EncodeCommand::run(Host&)
{
    if (!templates.empty()) {
        return printTemplates();
    }
    const Envelope envelope = commonEnvelope();
    requireNoBinaryOnTerminal(writing.form, outputName);
    requireInputs(inputs);
    requireOtherOutput(inputs, outputName);
    Output output;
    if (!openOutput(output, outputName)) {
        return ExitStatus::unwritable;
    }
    options.showsProgress =
        !options.quiet && !goesToTerminal(outputName) && ::isatty(STDERR_FILENO) == 1;
    const std::unique_ptr<PacketWriter> writer = makeWriter(writing.to());
    writer->setEnvelope(envelope);
    EncodeSession session(output, *writer, options);
    const ExitStatus status = workInto(
        output, [&] { return anyIsLive(inputs); }, [&] { return session.run(inputs); });
    if (status == ExitStatus::nothingFound) {
        tell("no message found in the input");
    }
    return status;
}

// What comes with every message.
Envelope EncodeCommand::commonEnvelope() const
{
    if (mmsi.empty() == writing.needsSender()) {
        throw UsageError{writing.needsSender() ? "--to aivdm needs the MMSI of the sender: --mmsi"
                                               : "--mmsi goes with --to aivdm only"};
    }
    const std::vector<std::string> given(mmsi.empty() ? 0 : 1, mmsi);
    return {.sender = writing.defaults(given).complete(std::nullopt)};
}

ExitStatus EncodeCommand::printTemplates() const
{
    if (app->count("input") > 0) {
        throw UsageError{"--template reads no input, and " + inputs.front() + " is given"};
    }
    std::string text;
    for (const std::string& name : templates) {
        const RTCM2_kind_s* const kind = findMainKind(name);
        if (kind == nullptr) {
            throw UsageError{"--template: " + noMainKind(name)};
        }
        text += templateOf(*kind);
    }
    return print(text, outputName);
}

std::unique_ptr<Command> encodeCommand()
{
    return std::make_unique<EncodeCommand>();
}
