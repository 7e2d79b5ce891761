// Writes the messages of a session again.
#pragma once

#include "forms/PacketWriter.h"
#include "session/Session.h"

class Output;

struct CopyOptions {
    InputForm form = InputForm::stream;
    bool copiesUnknown = true;     // also what the decoder does not know or does not report
    bool copiesMisfits = false;    // also what does not fit its kind
    std::uint64_t max = 0;         // messages to write; 0 for all
};

class CopySink : public Sink {
public:
    CopySink(Output& out, const CopyOptions& copyOptions);

    void message(const Place& place, const Decoded& decoded) override;
    void unreported(const Place& place) override;
    void trouble(const Place& place, Trouble trouble, const std::string& text) override;
    void pause() override;
    bool isDone() const override;

private:
    void copy(const Place& place);

    Output& output;
    CopyOptions options;
    std::unique_ptr<PacketWriter> writer;
    std::vector<std::uint8_t> bytes;    // of the message in work
    std::uint64_t written = 0;          // messages
};
