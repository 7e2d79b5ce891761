// Counts what is in an input.
#pragma once

#include "commands/stats/Stats.h"
#include "forms/PacketReader.h"
#include "session/Found.h"

class StatsCounter {
public:
    // `kinds` are those that may occur.
    explicit StatsCounter(const std::vector<const KindModel*>& kinds);

    void take(const Found& found);
    // What was counted in an input that ends here; what comes next belongs to another one.
    Stats takeStats(const ReaderCounters& counters);

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
};
