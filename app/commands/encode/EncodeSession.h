// Reads messages in JSON and hands them on as packed messages.
#pragma once

#include "base/ExitStatus.h"
#include "base/Output.h"
#include "commands/encode/JsonInput.h"
#include "commands/encode/MessageEncoder.h"
#include "forms/PacketWriter.h"
#include "session/Session.h"

#include <cstdint>
#include <string>
#include <vector>

class EncodeSession {
public:
    // Everything given must outlive the session.
    EncodeSession(Output& target, PacketWriter& targetForm, const SessionOptions& sessionOptions)
        : output(target), writer(targetForm), options(sessionOptions)
    {
    }

    // Reads the inputs one after another, "-" being standard input. What cannot be read or encoded
    // is told on standard error, and the rest is encoded all the same.
    ExitStatus run(const std::vector<std::string>& inputs);

private:
    void readInput(const std::string& name);
    Problem encode(const JsonInput& input);
    bool isDone() const;

    Output& output;
    PacketWriter& writer;
    const SessionOptions& options;
    MessageEncoder encoder;
    std::vector<std::uint8_t> written;    // of one message
    std::uint64_t found = 0;
    std::uint64_t refused = 0;
    bool unreadable = false;
    bool stopped = false;
};
