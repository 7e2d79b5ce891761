// Reads messages in JSON and hands them on as packed messages.
#pragma once

#include "base/ExitStatus.h"
#include "base/Progress.h"
#include "commands/encode/JsonMessage.h"
#include "session/Session.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

class JsonInput;
class Output;

class EncodeSession {
public:
    // Writes a packed message. False when the form cannot hold it.
    using Write = std::function<bool(std::span<const std::uint8_t> packed)>;

    // The output must outlive the session; what `write` is given goes there.
    EncodeSession(Output& target, Write writeMessage, const SessionOptions& sessionOptions);

    // Reads the inputs one after another, "-" being standard input. What cannot be read or encoded
    // is told on standard error, and the rest is encoded all the same.
    ExitStatus run(const std::vector<std::string>& inputs);

private:
    void readInput(const std::string& name);
    void takeNext(JsonInput& input, const std::string& name);
    void refuse(const JsonInput& input, const std::string& name, const std::string& reason);
    bool isDone() const;

    Output& output;
    Write write;
    SessionOptions options;
    JsonMessage message;
    std::optional<Progress> progress;
    std::uint64_t number = 0;     // of the message in its input
    std::uint64_t found = 0;      // in all inputs
    std::uint64_t encoded = 0;    // likewise
    std::uint64_t refused = 0;
    bool unreadable = false;
    bool stopped = false;
};
