// Counts what is in each input and hands the counts on when the input ends. What is counted is read
// from packed messages: millions of them need no message object.
#pragma once

#include "commands/stats/Stats.h"
#include "plugin/MessageFacts.h"
#include "plugin/Plugin.h"
#include "session/Session.h"

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

    bool takePacked(const Place& place) override;
    void message(const Place& place, const Decoded& decoded) override;
    void unreported(const Place& place) override;
    void trouble(const Place& place, Trouble trouble, const std::string& text) override;
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void finish() override;
    bool writesAlong() const override { return false; }    // but at the end of each input

private:
    void count(const MessageFacts& facts);

    std::unique_ptr<StatsView> view;
    const FieldParts& names;
    TypeNumberOf typeNumberOf;
    std::unique_ptr<MessageFactsReader> factsReader;
    Stats current;
    Stats all;
    std::size_t inputs = 0;
};
