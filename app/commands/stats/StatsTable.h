// Counts as tables for people.
#pragma once

#include "commands/stats/StatsCollector.h"

class StatsTable : public StatsCollector {
public:
    using StatsCollector::StatsCollector;

private:
    void writeInput(const Stats& stats, const std::string& name,
                    const ReaderCounters& counters) override;
    void writeTotal(const Stats& stats, std::size_t inputs) override;
    void writeStats(const Stats& stats);
    void writeKinds(const Stats& stats);
    void writeSatellites(const Stats& stats);

    bool isFirst = true;
};
