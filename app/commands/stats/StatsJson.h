// Counts as one JSON object.
#pragma once

#include "base/Output.h"
#include "commands/stats/StatsCollector.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

class StatsJson : public StatsView {
public:
    // The output and the parts must outlive the view.
    StatsJson(Output& out, const FieldParts& fieldParts);

    void input(const Stats& stats) override;
    void total(const Stats& stats, std::size_t inputs) override;

private:
    void writeStats(const Stats& stats);
    void writeKinds(const Stats& stats);
    void writeStation(const StationStats& station);
    void writeSatellites(const KindModel& kind, const SatelliteCounts& satellites);
    void writeTexts(const Stats& stats);
    void writeTypes(const char* key, const BoundedCounts<int>& types);
    void writeEvents(const Stats& stats);
    void number(const char* key, std::uint64_t value);
    void text(const char* key, const std::string& value);
    void writeOut();

    Output& output;
    const FieldParts& parts;
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer{buffer};
};
