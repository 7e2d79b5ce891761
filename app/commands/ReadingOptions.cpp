#include "commands/ReadingOptions.h"

#include "base/Terminal.h"
#include "commands/Command.h"
#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "format/FieldPath.h"
#include "forms/InputForm.h"

#include <unistd.h>

void ReadingOptions::declareInput(CLI::App& command)
{
    declareInputs(command, inputs);
    command
        .add_option(
            "-f,--form", form,
            "Form of the input: stream (as it is sent: 6 bits a byte), packed (8 bits a byte, "
            "without parity), hex (packed, a message a line), words (a receiver's own recording), "
            "or auto, which finds out from the first bytes")
        ->check(CLI::IsMember({"auto", "stream", "packed", "hex", "words"}))
        ->capture_default_str()
        ->group(optionGroup::input);
    command.add_option("--mode", mode, "Mode byte that the receiver was set to, for --form words")
        ->check(CLI::Range(0, 255))
        ->capture_default_str()
        ->type_name("NUMBER")
        ->group(optionGroup::input);
}

void ReadingOptions::declare(CLI::App& command)
{
    declareReading(command);
    declareOutput(command, output);
}

void ReadingOptions::declareReading(CLI::App& command)
{
    declareInput(command);
    declareFilter(command);
    declareMax(command, session.max);
    declareTrouble(command, session,
                   "What to do about damaged and undecodable messages: report them on standard "
                   "error, skip them silently, or stop at the first");
}

void ReadingOptions::declareFilter(CLI::App& command)
{
    const auto add = [&command](const std::string& name, std::vector<std::string>& values,
                                const std::string& about, const std::string& type) {
        command.add_option(name, values, about + "; several with commas between them")
            ->delimiter(',')
            ->allow_extra_args(false)
            ->type_name(type)
            ->group(optionGroup::choice);
    };
    add("-t,--type", filter.kinds, "Only messages of these types, by number or name", "TYPE");
    add("--except", filter.excludedKinds, "No messages of these types, by number or name", "TYPE");
    add("--station", filter.stations, "Only messages of these stations", "NUMBER");
    add("--mmsi", filter.senders, "Only messages that these AIS stations sent", "NUMBER");
    command
        .add_option(
            "-w,--where", filter.where,
            "Only messages for which the condition holds; 'rtcm2 --help' tells how to write one")
        ->type_name("EXPRESSION")
        ->group(optionGroup::choice);
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
    return options.hasProgress && !options.session.quiet && ::isatty(STDERR_FILENO) == 1 &&
           !(resultsOnTerminal && sink.writesAlong());
}

std::string nothingFound(std::uint64_t messages)
{
    return messages == 0 ? "no message found in the input"
                         : "none of the messages in the input (" + std::to_string(messages) +
                               ") is among those that --type, --except, --station and --where "
                               "choose";
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
        const ExitStatus status = workInto(output, options.inputs, [&] {
            return session.run(options.inputs, sessionOptions, *sink);
        });
        if (status == ExitStatus::nothingFound) {
            tell(nothingFound(session.messages()));
        }
        return status;
    } catch (const FilterError& error) {
        throw UsageError{error.text};
    } catch (const FieldPathError& error) {
        throw UsageError{error.text};
    }
}
