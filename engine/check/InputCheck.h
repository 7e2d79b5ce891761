// What is found out about the stream of one input.
#pragma once

#include "check/Counters.h"
#include "check/StationState.h"
#include "check/TypeRate.h"
#include "check/Wanted.h"
#include "session/Found.h"
#include "session/InputClock.h"

#include <deque>
#include <functional>

// What the format says of messages, looked up once.
class CheckedFormat {
public:
    explicit CheckedFormat(const FormatModel& model);

    const CheckedFields& fieldsOf(const KindModel& kind) const { return *fields[kind.number()]; }
    // The system of what was found, as an index; RTCM2_system_count() where it is unknown.
    std::uint32_t systemOf(const Found& found, unsigned type) const;
    const FieldModel* health() const { return healthField; }

    double secondsPerUnit = 1;
    std::uint64_t unitsPerHour = 0;
    std::uint32_t noSystem = 0;

private:
    std::vector<std::optional<CheckedFields>> fields;    // by the number of the kind
    std::vector<std::optional<MessageSystem>> systems;
    const FieldModel* healthField = nullptr;
};

// Messages that are missing at a place.
struct Loss {
    std::uint64_t least = 0;
    bool isExact = true;          // else more may be missing
    std::uint64_t damaged = 0;    // of those, messages that came damaged
    std::optional<StationId> station{};
    Place place{};
    double seconds = 0;    // between the messages before and after
};

struct Losses {
    std::uint64_t lost = 0;       // without those that came damaged
    std::uint64_t damaged = 0;    // messages that came damaged, as gaps tell
    bool isExact = true;
    bool areCounted = true;    // some station's messages are
    std::vector<Loss> all{};
};

struct RateKey {
    StationId station{};
    unsigned type = 0;
    std::uint32_t system = 0;

    auto operator<=>(const RateKey&) const = default;
};

// Damage through the messages of an input, in up to so many stretches of equal length.
class DamageCurve {
public:
    struct Stretch {
        std::uint64_t all = 0;
        std::uint64_t bad = 0;
    };
    void add(std::int64_t time, bool isBad);
    const std::vector<Stretch>& stretches() const { return counted; }
    std::int64_t unitsEach() const { return units; }
    void begin(std::int64_t unitsOfAStretch) { units = unitsOfAStretch; }

private:
    static constexpr std::size_t most = 128;

    std::int64_t units = 1;
    std::vector<Stretch> counted;
};

class InputCheck {
public:
    using Tell = std::function<void(const Finding&)>;

    // Everything given must outlive the check. `tellNow`, if there is one, hears of
    // problems when they are seen.
    InputCheck(const CheckedFormat& checkedFormat, const Wanted& wanted, Tell tellNow);

    // A message as it was counted.
    struct Taken {
        StationId station{};
        unsigned type = 0;
        std::uint32_t system = 0;    // index
        Place place{};
        bool isPlaced = true;    // its time belongs where it stands
    };
    // Nothing for what is no message, is repeated or is of others than those that are looked at.
    std::optional<Taken> take(const Found& found);
    // Nothing was received for so long, of an input that is waited for.
    void addSilence(double seconds, bool isOver);
    // Nothing more comes. What follows from everything together becomes known.
    void finish();

    double secondsOf(std::int64_t units) const
    {
        return static_cast<double>(units) * format.secondsPerUnit;
    }
    double seconds() const { return secondsOf(clock.now()); }
    std::int64_t now() const { return clock.now(); }
    // Where the clock begins, in seconds of the hour; nothing as long as no message tells a time.
    const std::optional<double>& beginOfClock() const { return begin; }
    // The field whose values tell how stations are; null where the format has none.
    const RTCM2_member_s* healthRow() const
    {
        return format.health() != nullptr ? format.health()->row : nullptr;
    }
    // From a message to the next one, on the average; 0 as long as that is not known.
    double secondsPerMessage() const
    {
        return messages > 8 ? seconds() / static_cast<double>(messages) : 0;
    }

    std::uint64_t messages = 0;    // good ones of the stations that are looked at
    std::uint64_t damaged = 0;
    std::uint64_t truncated = 0;
    std::uint64_t misfit = 0;
    std::uint64_t unknown = 0;
    std::uint64_t shortened = 0;    // of which fewer words came than they declare
    std::uint64_t repeated = 0;
    std::uint64_t ofOthers = 0;    // stations for which there was no room
    std::uint64_t misplaced = 0;
    std::uint64_t restarts = 0;    // the time went back, and went on from there
    Findings findings;
    Losses losses;
    DamageCurve damage;
    std::map<RateKey, TypeRate> rates;
    std::map<StationId, StationState> stations;
    std::string name;

    // Of a rate whose type is expected; null where it is not.
    const ExpectedType* expectation(unsigned type) const;

private:
    struct Message;

    Place placeOf(const Found& found) const;
    void takeDamage(const Found& found);
    std::optional<Taken> takeMessage(Message& message);
    void takeRecord(const Message& message);
    bool isRepeated(const Message& message);
    bool isPlaced(Message& message);
    void takeHealth(const Message& message, StationState& station);
    void takePoints(const Message& message, StationState& station);
    void takeRate(const Message& message);
    void report(Severity severity, std::string text, const Place& place);

    double expectedIn(const Gap& gap, const Counters::Counted& counted) const;
    Loss lossOf(const Gap& gap, const Counters::Counted& counted) const;
    Losses findLosses();
    void findUncounted(const Counters::Counted& counted, Losses& found) const;
    void shareDamage(Losses& found) const;
    void review();
    void tellNewLosses(const Counters::Counted& counted);
    std::string textOf(const Loss& loss) const;
    void judgeLosses();
    void judgeRates();
    void judgeExpected(const ExpectedType& expected);
    void judgeDamage();

    const CheckedFormat& format;
    const Wanted& wanted;
    Tell tell;
    InputClock clock;
    std::optional<double> begin;
    Counters counters;
    std::map<StationId, std::deque<std::uint64_t>> recent;    // what stations sent, as hashes
    std::map<const CounterTrack*, std::uint64_t> toldUpTo;    // number of a message
};
