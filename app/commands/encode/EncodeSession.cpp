#include "commands/encode/EncodeSession.h"

#include "base/InputFile.h"
#include "base/Interrupt.h"
#include "base/Output.h"
#include "commands/encode/JsonInput.h"

EncodeSession::EncodeSession(Output& target, Write writeMessage,
                             const SessionOptions& sessionOptions)
    : output(target), write(std::move(writeMessage)), options(sessionOptions)
{
}

ExitStatus EncodeSession::run(const std::vector<std::string>& inputs)
{
    for (const std::string& name : inputs) {
        readInput(name);
        if (isDone()) {
            break;
        }
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
    InputFile file(name);
    JsonInput input(file);
    number = 0;
    progress.emplace(options.showsProgress && !file.isTyped());
    progress->begin(file.name(), file.size());
    // An input that was left early does not end here: what is incomplete is no mistake.
    while (!isDone() && input.next() && (input.problem().empty() || !interrupt::requested())) {
        progress->advance(input.bytesRead());
        takeNext(input, file.name());
        if (file.isLive()) {
            output.flush();
        }
    }
    if (!file.problem().empty()) {
        progress->tell(file.problem());
        unreadable = true;
    }
    progress.reset();
}

void EncodeSession::takeNext(JsonInput& input, const std::string& name)
{
    ++found;
    ++number;
    if (!input.problem().empty()) {
        refuse(input, name, input.problem());
        return;
    }
    const auto packed = message.encode(input.object());
    if (packed.empty()) {
        refuse(input, name, message.problem());
    } else if (!write(packed)) {
        refuse(input, name,
               "no reader would find it in this form: it lacks the preamble or the words that its "
               "header announces");
    } else {
        ++encoded;
    }
}

void EncodeSession::refuse(const JsonInput& input, const std::string& name,
                           const std::string& reason)
{
    ++refused;
    stopped = options.onError == OnError::stop;
    if (stopped || (options.onError == OnError::report && !options.quiet)) {
        progress->tell(name + ": message " + std::to_string(number) + " (line " +
                       std::to_string(input.line()) + "): " + reason);
    }
}

bool EncodeSession::isDone() const
{
    return stopped || output.failed() || interrupt::requested() ||
           (options.max != 0 && encoded >= options.max);
}
