// Counts what is in each input and hands the counts on when the input ends.
#pragma once

#include "CodedTexts.h"
#include "Plugin.h"
#include "Session.h"
#include "Stats.h"

#include <functional>

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

    // The parts must outlive the collector.
    StatsCollector(std::unique_ptr<StatsView> statsView, const FieldParts& fieldParts,
                   TypeNumberOf numberOf, const std::vector<const KindModel*>& kinds);

    void message(const Place& place, const Decoded& decoded) override;
    void unreported(const Place& place) override;
    void trouble(const Place& place, Trouble trouble, const std::string& text) override;
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void finish() override;
    bool writesAlong() const override { return false; }    // but at the end of each input

private:
    // Where a kind keeps what is counted; null where it has no such field.
    struct Parts {
        const FieldModel* station = nullptr;
        const FieldModel* time = nullptr;
        const FieldModel* text = nullptr;
        const FieldModel* elements = nullptr;     // sub-messages that name satellites
        const FieldModel* satellite = nullptr;    // in the elements
        const FieldModel* system = nullptr;       // in the elements
        KindStats* stats = nullptr;               // in the counts of this input
    };

    Parts partsOf(const KindModel& kind) const;
    void countStation(const Parts& parts, const Message& message);
    void countSatellites(const Parts& parts, const Message& message);
    void countText(const Parts& parts, const Message& message);

    std::unique_ptr<StatsView> view;
    const FieldParts& names;
    TypeNumberOf typeNumberOf;
    std::map<const KindModel*, Parts> kindParts;
    Stats current;
    Stats all;
    std::size_t inputs = 0;
    std::string characters;
};
