// Counts as tables for people.
#pragma once

#include "base/Output.h"
#include "commands/stats/StatsCollector.h"

class StatsTable : public StatsView {
public:
    // The output and the parts must outlive the table.
    StatsTable(Output& out, const FieldParts& fieldParts) : output(out), parts(fieldParts) {}

    void input(const Stats& stats) override;
    void total(const Stats& stats, std::size_t inputs) override;

private:
    void write(const Stats& stats);
    void writeSummary(const Stats& stats);
    void writeKinds(const Stats& stats);
    void writeStation(const KindModel& kind, const std::string& name, const StationStats& station);
    void writeSatellites(const Stats& stats);
    void writeTexts(const Stats& stats);
    void writeTypes(const char* title, const BoundedCounts<int>& types);
    void writeEvents(const Stats& stats);

    Output& output;
    const FieldParts& parts;
    bool isFirst = true;
};
