// Writes the messages of a session again.
#pragma once

#include "base/Output.h"
#include "export/SenderDefaults.h"
#include "forms/InputForm.h"
#include "session/Sink.h"

struct CopyOptions {
    InputForm form = InputForm::stream;
    bool copiesUnknown = true;     // also what the decoder does not know or does not report
    bool copiesMisfits = false;    // also what does not fit its kind
    bool copiesTimes = false;      // also when messages were received, where that is known
    SenderDefaults sender{};
    std::uint64_t* withoutSender = nullptr;    // counts what the form needs a sender for
};

class CopySink : public Sink {
public:
    CopySink(Output& out, const CopyOptions& copyOptions);

    bool counts(const Found& found) const override;
    void take(const Found& found) override;
    void pause() override { output.flush(); }
    bool isDone() const override { return output.failed(); }

private:
    bool isWanted(const Found& found) const;
    bool hasSender(const Found& found) const;

    Output& output;
    CopyOptions options;
    std::unique_ptr<PacketWriter> writer;
    std::vector<std::uint8_t> bytes;    // of the message in work
};
