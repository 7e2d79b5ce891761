// Counts what is in each input and writes the counts when the input ends, and those of all inputs
// at the end of everything.
#pragma once

#include "base/Output.h"
#include "commands/stats/Stats.h"
#include "session/Sink.h"

class StatsCollector : public Sink {
public:
    // The output must outlive the collector. `kinds` are those that may occur.
    StatsCollector(Output& out, const std::vector<const KindModel*>& kinds);

    void take(const Found& found) override;
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void finish() override { writeTotal(all, inputCount); }
    bool writesAlong() const override { return false; }    // but at the end of each input

protected:
    // `form` and how certain it is stand in the counters that the reader has kept.
    virtual void writeInput(const Stats& stats, const std::string& name,
                            const ReaderCounters& counters) = 0;
    virtual void writeTotal(const Stats& stats, std::size_t inputs) = 0;

    struct NamedSatellite {
        std::string system;    // empty where it is unknown
        std::int64_t number = 0;
        std::string name;
        SatelliteCounts::Seen seen;
    };
    // By system and number.
    std::vector<NamedSatellite> satellitesOf(const KindModel& kind, const KindStats& stats) const;

    // The time that so many units of the kind's time field are.
    double secondsOf(const KindModel& kind, std::int64_t units) const;
    // Of senders whose messages took some time.
    double messagesPerSecond(const KindModel& kind, const StationStats& station) const;

    Output& output;

private:
    // Where a kind has what is counted; null where it has no such field.
    struct CountedFields {
        const FieldModel* station = nullptr;
        std::optional<MessageSystem> messageSystem{};
        MessageTime time{};
        const FieldModel* text = nullptr;
        const FieldModel* elements = nullptr;     // that name satellites
        const FieldModel* satellite = nullptr;    // in the elements
        const FieldModel* system = nullptr;       // in the elements; its values name the system
    };

    static CountedFields countedFieldsOf(const KindModel& kind);
    NamedSatellite named(const KindModel& kind, const SatelliteCounts::Seen& seen) const;
    static StationStats& senderOf(const CountedFields& fields, const Found& found, KindStats& kind);
    void countMessage(const Found& found);
    static void countSatellites(const CountedFields& fields, const void* record,
                                SatelliteCounts& satellites);

    std::vector<CountedFields> kindFields;    // by the number of the kind
    Stats current;
    std::vector<KindStats*> kindStats;    // of `current`, by the number of the kind
    Stats all;
    std::size_t inputCount = 0;
};
