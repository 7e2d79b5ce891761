#include "commands/ReadingOptions.h"

#include "base/Terminal.h"
#include "commands/Command.h"
#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "format/FieldPath.h"
#include "forms/InputForm.h"
#include "session/SwitchKinds.h"

#include <unistd.h>

void ReadingOptions::declareInput(CLI::App& command)
{
    declareInputs(command, inputs);
    command.add_option("-f,--form", form, "Form of the input: " + aboutForms(true))
        ->check(CLI::IsMember(namesOfForms(true)))
        ->capture_default_str()
        ->group(optionGroup::input);
    command
        .add_flag("--follow", session.follows,
                  "Wait at the end of the file, or of the last of several, for what is written to "
                  "it, until interrupted")
        ->group(optionGroup::input);
    command.add_option("--mode", mode, "Mode byte that the receiver was set to, for --form words")
        ->check(CLI::Range(0, 255))
        ->capture_default_str()
        ->type_name("NUMBER")
        ->group(optionGroup::input);
    part.declare(command);
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

bool ReadingOptions::isLive() const
{
    return session.follows || anyIsLive(inputs);
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

// A terminal that shows results as they come has no place for progress.
bool showsProgress(const ReadingOptions& options, const Sink& sink)
{
    const bool resultsOnTerminal = goesToTerminal(options.output);
    return options.hasProgress && !options.session.quiet && ::isatty(STDERR_FILENO) == 1 &&
           !(resultsOnTerminal && sink.writesAlong());
}

InputOptions inputOptionsOf(const ReadingOptions& options)
{
    options.part.requireOneBeginning(options.inputs);
    if (!options.part.range.empty() && options.session.follows) {
        throw UsageError{"--range does not go with --follow"};
    }
    return {.form = *inputFormOf(options.form), .range = options.part.bytesOf(options.inputs)};
}

SessionOptions sessionOptionsOf(const ReadingOptions& options, const Sink& sink)
{
    SessionOptions result = options.session;
    result.window = options.part.window();
    result.mode = static_cast<unsigned char>(options.mode);
    result.showsProgress = showsProgress(options, sink);
    result.showsResults = goesToTerminal(options.output) && ::isatty(STDERR_FILENO) == 1;
    return result;
}

std::string nothingFound(std::uint64_t messages, bool isRange)
{
    return messages == 0 ? (isRange ? "no message begins in this range of the input"
                                    : "no message found in the input")
                         : "none of the messages in the input (" + std::to_string(messages) +
                               ") is among those that --type, --except, --station, --mmsi, "
                               "--where, --from and --until choose";
}

}    // namespace

ExitStatus runSession(Host& host, const ReadingOptions& options, const SinkFactory& makeSink)
{
    Output output;
    try {
        const MessageFilter filter(host.model, options.filter);
        if (!options.endsEach) {
            requireInputs(options.inputs);
        }
        const InputOptions inputOptions = inputOptionsOf(options);
        requireOtherOutput(options.inputs, options.output);
        if (!openOutput(output, options.output)) {
            return ExitStatus::unwritable;
        }
        switchKinds(*host.decoder, host.model, filter);
        Session session(host.model, host.driver, filter, inputOptions);
        const std::unique_ptr<Sink> sink = makeSink(output, filter);
        const auto isPartOfUse = [&] { return session.messages() > 0 && options.isLive(); };
        const ExitStatus status = workInto(output, isPartOfUse, [&] {
            return session.run(options.inputs, sessionOptionsOf(options, *sink), *sink);
        });
        if (status == ExitStatus::nothingFound) {
            tell(nothingFound(session.messages(), inputOptions.range.has_value()));
        }
        return status;
    } catch (const FilterError& error) {
        throw UsageError{error.text};
    } catch (const FieldPathError& error) {
        throw UsageError{error.text};
    }
}
