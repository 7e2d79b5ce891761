// Counts what is in each input and writes the counts when the input ends, and those of all inputs
// at the end of everything.
#pragma once

#include "base/Output.h"
#include "commands/stats/StatsCounter.h"
#include "session/Sink.h"

class StatsCollector : public Sink {
public:
    // The output must outlive the collector. `kinds` are those that may occur.
    StatsCollector(Output& out, const std::vector<const KindModel*>& kinds)
        : output(out), counter(kinds)
    {
    }

    void take(const Found& found) override { counter.take(found); }
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void finish() override { writeTotal(all, inputCount); }
    bool writesAlong() const override { return false; }    // but at the end of each input

protected:
    // `form` and how certain it is stand in the counters that the reader has kept.
    virtual void writeInput(const Stats& stats, const std::string& name,
                            const ReaderCounters& counters) = 0;
    virtual void writeTotal(const Stats& stats, std::size_t inputs) = 0;

    Output& output;
    StatsCounter counter;

private:
    Stats all;
    std::size_t inputCount = 0;
};
