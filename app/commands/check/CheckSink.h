// Checks input by input and writes what came of it at the end; of inputs that are waited for also
// each problem as soon as it is seen.
#pragma once

#include "commands/JsonWriter.h"
#include "commands/check/Watch.h"
#include "session/Sink.h"

#include <memory>

// What a check is asked for, and what came of it.
struct CheckReport {
    bool isJson = false;
    bool isWatch = false;    // an input comes in its own time
    Severity verdict = Severity::good;
    std::uint64_t messages = 0;
};

class CheckSink : public Sink {
public:
    // Everything given must outlive the sink.
    CheckSink(Output& out, const FormatModel& model, const Wanted& wantedOfIt, CheckReport& result);

    void beginInput(const std::string& name) override;
    void take(const Found& found) override;
    void pause() override { output.flush(); }
    void idle() override;
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void finish() override;
    bool isDone() const override { return output.failed(); }
    bool writesAlong() const override { return report.isWatch; }

private:
    std::string totalText() const;

    Output& output;
    CheckedFormat format;
    const Wanted& wanted;
    CheckReport& report;
    std::unique_ptr<InputCheck> check;
    std::unique_ptr<Watch> watch;
    std::string texts;    // of the inputs, for people
    std::size_t inputs = 0;
    std::size_t goodInputs = 0;
    JsonWriter json;
};
