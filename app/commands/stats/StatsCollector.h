// Counts what is in each input and writes the counts when the input ends, and those of all inputs
// at the end of everything.
#pragma once

#include "base/Output.h"
#include "commands/stats/Stats.h"
#include "format/FieldParts.h"
#include "session/Sink.h"

class StatsCollector : public Sink {
public:
    // The output and the parts must outlive the collector. `kinds` are those that may occur.
    StatsCollector(Output& out, const FieldParts& fieldParts,
                   const std::vector<const KindModel*>& kinds);

    void take(const Found& found) override;
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void finish() override { writeTotal(all, inputCount); }
    bool writesAlong() const override { return false; }    // but at the end of each input

protected:
    // `form` and how certain it is stand in the counters that the reader has kept.
    virtual void writeInput(const Stats& stats, const std::string& name,
                            const ReaderCounters& counters) = 0;
    virtual void writeTotal(const Stats& stats, std::size_t inputs) = 0;

    // The system's name for a value of the field that tells it, or what the kind of the message
    // says; empty when nothing is known.
    std::string systemName(const KindModel& kind, std::uint64_t system) const;
    double secondsOf(const StationStats& station) const;
    // Of stations whose messages took some time.
    double messagesPerSecond(const StationStats& station) const;

    Output& output;
    const FieldParts& parts;

private:
    // Where a kind has what is counted; null where it has no such field.
    struct CountedFields {
        const FieldModel* station = nullptr;
        const FieldModel* time = nullptr;
        const FieldModel* text = nullptr;
        const FieldModel* elements = nullptr;     // that name satellites
        const FieldModel* satellite = nullptr;    // in the elements
        const FieldModel* system = nullptr;       // in the elements; its values name the system
    };

    CountedFields countedFieldsOf(const KindModel& kind) const;
    void countMessage(const Found& found);
    static void countSatellites(const CountedFields& fields, const void* record,
                                SatelliteCounts& satellites);

    std::vector<CountedFields> kindFields;    // by the number of the kind
    Stats current;
    std::vector<KindStats*> kindStats;    // of `current`, by the number of the kind
    Stats all;
    std::size_t inputCount = 0;
};
