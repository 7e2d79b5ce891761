#include "commands/encode/EncodeSession.h"

#include "base/InputFile.h"
#include "base/Interrupt.h"
#include "base/Output.h"
#include "base/Progress.h"
#include "commands/encode/JsonInput.h"
#include "commands/encode/MessageEncoder.h"

namespace {

class EncodeSession {
public:
    EncodeSession(Output& target, const WriteMessage& writeMessage,
                  const SessionOptions& sessionOptions)
        : output(target), write(writeMessage), options(sessionOptions)
    {
    }

    void readInput(const std::string& name);
    bool isDone() const;
    ExitStatus status() const;

private:
    std::string encode(const JsonInput& input);
    void refuse(Progress& progress, const std::string& message);

    Output& output;
    const WriteMessage& write;
    const SessionOptions& options;
    MessageEncoder encoder;
    std::uint64_t found = 0;
    std::uint64_t refused = 0;
    bool unreadable = false;
    bool stopped = false;
};

void EncodeSession::readInput(const std::string& name)
{
    InputFile file(name);
    JsonInput input(file);
    Progress progress(options.showsProgress && !file.isTyped());
    progress.begin(file.name(), file.size());
    for (std::uint64_t number = 1; !isDone() && input.next(); ++number) {
        // An input that was left early does not end here: what is incomplete is no mistake.
        if (!input.problem().empty() && interrupt::requested()) {
            break;
        }
        progress.advance(input.bytesRead());
        ++found;
        if (const std::string problem = encode(input); !problem.empty()) {
            refuse(progress, file.name() + ": message " + std::to_string(number) + " (line " +
                                 std::to_string(input.line()) + "): " + problem);
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
std::string EncodeSession::encode(const JsonInput& input)
{
    if (!input.problem().empty()) {
        return input.problem();
    }
    const auto packed = encoder.encode(input.object());
    if (packed.empty()) {
        return encoder.problem();
    }
    return write(packed) ? std::string()
                         : "hex: is no message with the preamble and the words that its header "
                           "announces";
}

void EncodeSession::refuse(Progress& progress, const std::string& message)
{
    ++refused;
    stopped = options.onError == OnError::stop;
    if (stopped || (options.onError == OnError::report && !options.quiet)) {
        progress.tell(message);
    }
}

bool EncodeSession::isDone() const
{
    return stopped || output.failed() || interrupt::requested() ||
           (options.max != 0 && found - refused >= options.max);
}

ExitStatus EncodeSession::status() const
{
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

}    // namespace

ExitStatus encodeInputs(const std::vector<std::string>& inputs, Output& output,
                        const WriteMessage& write, const SessionOptions& options)
{
    EncodeSession session(output, write, options);
    for (auto name = inputs.begin(); name != inputs.end() && !session.isDone(); ++name) {
        session.readInput(*name);
    }
    return session.status();
}
