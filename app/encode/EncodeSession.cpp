#include "EncodeSession.h"

#include "InputFile.h"
#include "Interrupt.h"
#include "JsonInput.h"
#include "Output.h"

#include <cinttypes>
#include <cstdio>

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
    while (!isDone() && input.next()) {
        takeNext(input, file.name());
        if (file.isLive()) {
            output.flush();
        }
    }
    if (!file.problem().empty()) {
        std::fprintf(stderr, "rtcm2: %s\n", file.problem().c_str());
        unreadable = true;
    }
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
        std::fprintf(stderr, "rtcm2: %s: message %" PRIu64 " (line %" PRIu64 "): %s\n",
                     name.c_str(), number, input.line(), reason.c_str());
    }
}

bool EncodeSession::isDone() const
{
    return stopped || output.failed() || interrupt::requested() ||
           (options.max != 0 && encoded >= options.max);
}
