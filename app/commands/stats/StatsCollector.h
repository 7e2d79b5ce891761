// Counts what is in each input and hands the counts on when the input ends.
#pragma once

#include "commands/stats/Stats.h"
#include "format/FieldParts.h"
#include "session/Sink.h"

#include <functional>
#include <memory>

// Takes the counts of one input, or of all of them.
class StatsView {
public:
    virtual ~StatsView() = default;

    virtual void input(const Stats& stats) = 0;
    // Once, after the last input. `inputs` tells how many there were.
    virtual void total(const Stats& stats, std::size_t inputs) = 0;
};

class StatsCollector : public Sink {
public:
    // `typeNumberOf` gives the type number of a packed message.
    using TypeNumberOf = std::function<int(std::span<const std::uint8_t>)>;

    // The parts must outlive the collector. `kinds` are those that may occur.
    StatsCollector(std::unique_ptr<StatsView> statsView, const FieldParts& fieldParts,
                   TypeNumberOf numberOf, const std::vector<const KindModel*>& kinds);

    void take(const Found& found) override;
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void finish() override { view->total(all, inputs); }
    bool writesAlong() const override { return false; }    // but at the end of each input

private:
    // Where a kind has what is counted; null where it has no such field.
    struct Parts {
        const FieldModel* station = nullptr;
        const FieldModel* time = nullptr;
        const FieldModel* text = nullptr;
        const FieldModel* elements = nullptr;     // that name satellites
        const FieldModel* satellite = nullptr;    // in the elements
        const FieldModel* system = nullptr;       // in the elements
    };

    static Parts partsOf(const KindModel& kind, const FieldParts& names);
    void countMessage(const Found& found);
    void countSatellites(const Parts& parts, const void* record, SatelliteCounts& satellites);

    std::unique_ptr<StatsView> view;
    const FieldParts& names;
    TypeNumberOf typeNumberOf;
    std::vector<Parts> kindParts;    // by the number of the kind
    Stats current;
    std::vector<KindStats*> kindStats;    // of `current`, by the number of the kind
    Stats all;
    std::size_t inputs = 0;
};
