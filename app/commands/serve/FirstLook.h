// What is in recordings that are going to be played, for those who may want it.
#pragma once

#include "commands/serve/MessageClock.h"
#include "session/Sink.h"

#include <map>
#include <set>
#include <string>

// Looks at the first messages of each input.
class FirstLook {
public:
    // The model must outlive it.
    explicit FirstLook(const FormatModel& formatModel) : model(formatModel) {}

    void beginInput();
    void take(const Found& found);
    bool hasEnough() const { return looked >= enough; }

    // Types of messages, with the seconds between two where they are known: "1(4),3(60),16"
    std::string types() const;
    // Systems of satellites: "GPS+GLONASS"
    std::string systems() const;

private:
    struct Intervals {
        double seconds = 0;    // of all together
        unsigned count = 0;
    };

    static constexpr unsigned enough = 1000;

    const FormatModel& model;
    std::optional<MessageClock> clock;
    unsigned looked = 0;                   // messages of the input
    std::map<unsigned, double> last;       // time of a type in the input
    std::map<unsigned, Intervals> seen;    // types
    std::set<std::string> seenSystems;
};

class FirstLookSink : public Sink {
public:
    explicit FirstLookSink(FirstLook& firstLook) : look(firstLook) {}

    void beginInput(const std::string&) override { look.beginInput(); }
    void take(const Found& found) override { look.take(found); }
    bool hasEnough() const override { return look.hasEnough(); }

private:
    FirstLook& look;
};
