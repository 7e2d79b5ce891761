// Counts as one JSON object.
#pragma once

#include "commands/JsonWriter.h"
#include "commands/stats/StatsCollector.h"

class StatsJson : public StatsCollector {
public:
    StatsJson(Output& out, const std::vector<const KindModel*>& kinds);

private:
    void writeInput(const Stats& stats, const std::string& name,
                    const ReaderCounters& counters) override;
    void writeTotal(const Stats& stats, std::size_t inputs) override;
    void writeStats(const Stats& stats);
    void writeKind(const KindModel& kind, const KindStats& stats);
    void writeSender(const std::optional<Sender>& sender);
    void writeTime(const KindModel& kind, const StationStats& station);

    JsonWriter json;
};
