#include "commands/ReadingOptions.h"

#include "commands/Command.h"
#include "commands/OutputFile.h"
#include "format/FieldPath.h"
#include "forms/InputForm.h"

#include <unistd.h>

void ReadingOptions::declare(CLI::App& command)
{
    command.add_option("input", inputs, "Files to read; - is standard input")
        ->required()
        ->type_name("FILE");
    command.add_option("-o,--output", output, "Write to this file instead of standard output")
        ->type_name("FILE");
    command
        .add_option(
            "-f,--form", form,
            "Form of the input: auto, stream (6 bits a byte), packed, hex (a message a line), "
            "words (a receiver's own recording). auto finds out from the first bytes")
        ->check(CLI::IsMember({"auto", "stream", "packed", "hex", "words"}))
        ->capture_default_str();
    command.add_option("--mode", mode, "Mode byte of a receiver's own recording, for --form words")
        ->check(CLI::Range(0, 255))
        ->capture_default_str();
    command
        .add_option("-t,--type", filter.kinds, "Only messages of these types, by number or name")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("TYPE");
    command
        .add_option("--except", filter.excludedKinds,
                    "No messages of these types, by number or name")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("TYPE");
    command.add_option("--station", filter.stations, "Only messages of these stations")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("NUMBER");
    command
        .add_option(
            "-w,--where", filter.where,
            "Only messages for which the condition holds; 'rtcm2 --help' tells how to write one")
        ->type_name("EXPRESSION");
    command.add_option("-n,--max", session.max, "Stop after this many messages")->type_name("N");
    command
        .add_option(
            "--on-error", session.onError,
            "What to do about damaged and undecodable messages: report them on standard error, "
            "skip them silently, or stop at the first")
        ->transform(CLI::CheckedTransformer(
            std::map<std::string, OnError>{
                {"report", OnError::report}, {"skip", OnError::skip}, {"stop", OnError::stop}},
            CLI::ignore_case))
        ->option_text("report|skip|stop");
    command.add_flag("-q,--quiet", session.quiet,
                     "Nothing on standard error but what ends the program");
}

namespace {

// Kinds that cannot pass need not be decoded.
void switchKinds(AbstractDecoder& decoder, const FormatModel& model, const MessageFilter& filter)
{
    for (const auto& kind : model.kinds()) {
        if (kind->info != nullptr && !filter.takesKind(*kind)) {
            decoder.disableMessage(kind->info);
        }
    }
}

// A terminal that shows results as they come has no place for progress.
bool showsProgress(const ReadingOptions& options, const Sink& sink)
{
    const bool resultsOnTerminal = goesToTerminal(options.output);
    return !options.session.quiet && ::isatty(STDERR_FILENO) == 1 &&
           !(resultsOnTerminal && sink.writesAlong());
}

}    // namespace

ExitStatus runSession(Host& host, const ReadingOptions& options, const SinkFactory& makeSink)
{
    Output output;
    try {
        const MessageFilter filter(host.model, options.filter);
        requireOtherOutput(options.inputs, options.output);
        if (!openOutput(output, options.output)) {
            return ExitStatus::unwritable;
        }
        switchKinds(*host.decoder, host.model, filter);
        const InputForm form = *inputFormOf(options.form);
        Session session(host.model, host.driver, filter, [form] { return makeReader(form); });
        const std::unique_ptr<Sink> sink = makeSink(output, filter);
        SessionOptions sessionOptions = options.session;
        sessionOptions.mode = static_cast<unsigned char>(options.mode);
        sessionOptions.showsProgress = showsProgress(options, *sink);
        sessionOptions.showsResults =
            goesToTerminal(options.output) && ::isatty(STDERR_FILENO) == 1;
        return workInto(output, options.inputs,
                        [&] { return session.run(options.inputs, sessionOptions, *sink); });
    } catch (const FilterError& error) {
        throw UsageError{error.text};
    } catch (const FieldPathError& error) {
        throw UsageError{error.text};
    }
}
