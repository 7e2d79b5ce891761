#include "commands/encode/EncodeSession.h"

#include "base/Interrupt.h"
#include "base/Progress.h"
#include "base/Terminal.h"
#include "sources/Sources.h"

ExitStatus EncodeSession::run(const std::vector<std::string>& inputs)
{
    for (auto name = inputs.begin(); name != inputs.end() && !isDone(); ++name) {
        readInput(*name);
    }
    if (stopped) {
        return ExitStatus::stoppedAtTrouble;
    }
    if (interrupt::requested()) {
        return ExitStatus::interrupted;
    }
    if (unreadable) {
        return ExitStatus::unreadable;
    }
    if (refused > 0) {
        return ExitStatus::refused;
    }
    return found == 0 ? ExitStatus::nothingFound : ExitStatus::success;
}

void EncodeSession::readInput(const std::string& name)
{
    const std::unique_ptr<Source> source = openSource(name);
    Source& file = *source;
    if (!options.quiet && !file.hint().empty()) {
        tell(file.hint());
    }
    JsonInput input(file);
    Progress progress(options.showsProgress && !file.isTyped());
    progress.begin(file.name(), file.size(), file.isLive());
    file.setIdle([&] { progress.wait(); });
    if (!options.quiet) {
        file.setTell([&](const std::string& line) { progress.tell(line); });
    }
    for (std::uint64_t number = 1; !isDone() && input.next(); ++number) {
        // An input that was left early does not end here: what is incomplete is no mistake.
        if (!input.problem().empty() && interrupt::requested()) {
            break;
        }
        progress.advance(input.bytesRead());
        ++found;
        if (const Problem problem = encode(input); !problem.empty()) {
            ++refused;
            stopped = options.onError == OnError::stop;
            if (stopped || (options.onError == OnError::report && !options.quiet)) {
                progress.tell(file.name() + ": message " + std::to_string(number) + " (line " +
                              std::to_string(input.line()) + "): " + problem);
            }
        }
        if (file.isLive()) {
            output.flush();
        }
    }
    if (!file.problem().empty()) {
        progress.tell(file.problem());
        unreadable = true;
    }
}

// What is wrong; empty when the message was written.
Problem EncodeSession::encode(const JsonInput& input)
{
    Problem problem = input.problem();
    if (problem.empty()) {
        problem = encoder.encode(input.object());
    }
    if (!problem.empty()) {
        return problem;
    }
    written.clear();
    if (!writer.append(encoder.packed(), written)) {
        return "hex: is no message with the preamble and the words that its header announces";
    }
    output.write({reinterpret_cast<const char*>(written.data()), written.size()});
    return {};
}

bool EncodeSession::isDone() const
{
    return stopped || output.failed() || interrupt::requested() ||
           (options.max != 0 && found - refused >= options.max);
}
