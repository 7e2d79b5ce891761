// Keeps the messages of two inputs, and compares them at the end.
#pragma once

#include "base/Output.h"
#include "commands/compare/Comparison.h"
#include "session/Session.h"

class CompareSink : public Sink {
public:
    using Write = void (*)(const Comparison&, Output&);

    enum class Result { none, same, different };

    // Everything given must outlive the sink. `sessionOptions.max` is about each of the inputs.
    CompareSink(const FormatModel& model, Output& out, Write writeAll,
                const SessionOptions& sessionOptions, Result& end)
        : formatModel(model), output(out), write(writeAll), options(sessionOptions), result(end)
    {
    }

    void beginInput(const std::string& name) override { stores.emplace_back().input = name; }
    void take(const Found& found) override;
    bool hasEnough() const override
    {
        return options.max != 0 && stores.back().size() >= options.max;
    }
    void endOfInput(const std::string&, const ReaderCounters&) override { ++ended; }
    void finish() override;
    bool writesAlong() const override { return false; }

private:
    const FormatModel& formatModel;
    Output& output;
    Write write;
    const SessionOptions& options;
    Result& result;
    std::deque<MessageStore> stores;
    std::size_t ended = 0;    // inputs
    bool isCut = false;       // stopped at trouble
};

// For people.
void writeCompareText(const Comparison& comparison, Output& output);
// One object.
void writeCompareJson(const Comparison& comparison, Output& output);
