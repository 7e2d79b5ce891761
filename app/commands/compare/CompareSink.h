// Keeps the messages of two inputs, and compares them at the end.
#pragma once

#include "base/Output.h"
#include "commands/compare/Comparison.h"
#include "session/Sink.h"

class CompareSink : public Sink {
public:
    using Write = void (*)(const Comparison&, Output&);

    enum class Result { none, same, different };

    // Everything given must outlive the sink. `most`: messages of each input; 0 for all.
    CompareSink(const FormatModel& model, DecoderDriver& driver, Output& out, Write writeAll,
                std::uint64_t most, Result& end)
        : formatModel(model), decoder(driver), output(out), write(writeAll), max(most), result(end)
    {
    }

    void beginInput(const std::string& name) override { stores.emplace_back().input = name; }
    void take(const Found& found) override { stores.back().add(found); }
    bool hasEnough() const override { return max != 0 && stores.back().size() >= max; }
    void endOfInput(const std::string&, const ReaderCounters&) override { ++ended; }
    void finish() override;
    bool writesAlong() const override { return false; }

private:
    const FormatModel& formatModel;
    DecoderDriver& decoder;
    Output& output;
    Write write;
    std::uint64_t max;
    Result& result;
    std::deque<MessageStore> stores;
    std::size_t ended = 0;    // inputs
};

// For people.
void writeCompareText(const Comparison& comparison, Output& output);
// One object.
void writeCompareJson(const Comparison& comparison, Output& output);
