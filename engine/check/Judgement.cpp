// What follows from everything that was heard.
#include "check/InputCheck.h"

#include "base/Columns.h"
#include "base/PlainText.h"
#include "check/CheckNumbers.h"
#include "framing/Header.h"

#include <cmath>

namespace {

constexpr double badShare = 0.05;               // lost or damaged: critical from here on
constexpr double lateFactor = 1.5;              // of the expected time: warning
constexpr double missingFactor = 3;             // critical
constexpr double stoppedFactor = 5;             // of a type's own period: it came no more
constexpr double shortestStop = 10;             // seconds
constexpr std::uint64_t messagesToTell = 16;    // before it is clear who shares a counter

}    // namespace

// How many of the counter's messages are missing by the time: of each type that comes regularly,
// those that its own pause around the gap has room for.
double InputCheck::expectedIn(const Gap& gap, const Counters::Counted& counted) const
{
    double sum = 0;
    for (const auto& [key, rate] : rates) {
        if ((!counted.station || *counted.station == key.station) &&
            (!counted.system || *counted.system == key.system)) {
            sum += rate.missingAround(gap.from.place.number, gap.to.place.number,
                                      gap.to.time - gap.from.time);
        }
    }
    return sum;
}

// The numbers tell how many are missing but for whole rounds; of these the time tells. Times are
// rounded and types change, so it takes the lower one of two that are about as likely.
Loss InputCheck::lossOf(const Gap& gap, const Counters::Counted& counted) const
{
    constexpr double round = framing::sequenceNumbers;
    constexpr double doubt = 3;
    Loss loss{.least = gap.missing, .station = counted.station};
    const double more = expectedIn(gap, counted) - static_cast<double>(gap.missing);
    const double rounds = std::max(0.0, std::floor((more + doubt) / round));
    loss.least += static_cast<std::uint64_t>(rounds * round);
    loss.isExact = rounds == 0;
    loss.place = gap.to.place;
    loss.seconds = secondsOf(gap.to.time - gap.from.time);
    loss.damaged = gap.to.damaged - gap.from.damaged;
    return loss;
}

Losses InputCheck::findLosses()
{
    Losses found{.areCounted = false};
    for (Counters::Counted& counted : counters.chosen()) {
        if (!counted.track->counts()) {
            findUncounted(counted, found);
            continue;
        }
        found.areCounted = true;
        for (const Gap& gap : counted.track->gaps()) {
            const Loss loss = lossOf(gap, counted);
            if (loss.least > 0) {
                found.all.push_back(loss);
            }
        }
        found.lost += counted.track->missingInOthers();
        found.isExact = found.isExact && counted.track->missingInOthers() == 0;
    }
    std::sort(found.all.begin(), found.all.end(),
              [](const Loss& a, const Loss& b) { return a.place.number < b.place.number; });
    shareDamage(found);
    return found;
}

// Of a station whose numbers count nothing only the time tells.
void InputCheck::findUncounted(const Counters::Counted& counted, Losses& found) const
{
    for (const auto& [key, rate] : rates) {
        if (counted.station && *counted.station != key.station) {
            continue;
        }
        for (const TypeRate::Longest& gap : rate.longestGaps()) {
            if (const double missing = rate.expectedIn(gap.units); missing > 0) {
                found.all.push_back({.least = static_cast<std::uint64_t>(missing),
                                     .isExact = false,
                                     .station = key.station,
                                     .place = gap.to,
                                     .seconds = secondsOf(gap.units)});
            }
        }
    }
}

// A message that came damaged is the one that is missing, once.
void InputCheck::shareDamage(Losses& found) const
{
    std::uint64_t shared = 0;
    for (Loss& loss : found.all) {
        loss.damaged = std::min({loss.damaged, loss.least, damaged - std::min(damaged, shared)});
        shared += loss.damaged;
        found.damaged += loss.damaged;
        found.lost += loss.least - loss.damaged;
        found.isExact = found.isExact && loss.isExact;
    }
}

std::string InputCheck::textOf(const Loss& loss) const
{
    std::string text = loss.station ? loss.station->text() + ": " : "";
    text += (loss.isExact ? "" : "at least ") + countText(loss.least, "message") + " missing in " +
            withDecimals(loss.seconds, 1) + " s";
    return loss.damaged == 0 ? text : text + ", " + std::to_string(loss.damaged) + " came damaged";
}

// While the input is read: as soon as it is clear how messages are counted. Gaps in which nothing
// is missing make room for others.
void InputCheck::review()
{
    constexpr std::uint64_t messagesToReview = 256;
    if (messages < messagesToTell || (!tell && messages % messagesToReview != 0)) {
        return;
    }
    for (const Counters::Counted& counted : counters.chosen()) {
        counted.track->makeRoom([&](const Gap& gap) { return lossOf(gap, counted).least == 0; });
        if (tell && counted.track->counts()) {
            tellNewLosses(counted);
        }
    }
}

void InputCheck::tellNewLosses(const Counters::Counted& counted)
{
    const auto& gaps = counted.track->gaps();
    std::uint64_t& told = toldUpTo[counted.track];
    auto gap = gaps.end();
    while (gap != gaps.begin() && std::prev(gap)->to.place.number > told) {
        --gap;
    }
    for (; gap != gaps.end(); ++gap) {
        told = gap->to.place.number;
        const Loss loss = lossOf(*gap, counted);
        if (loss.least > 0) {
            tell({Severity::warning, textOf(loss), loss.place});
        }
    }
}

void InputCheck::finish()
{
    counters.settle();
    losses = findLosses();
    judgeLosses();
    judgeDamage();
    judgeRates();
    for (const ExpectedType& expected : wanted.types) {
        judgeExpected(expected);
    }
    findings.sort();
}

void InputCheck::judgeLosses()
{
    for (const Loss& loss : losses.all) {
        findings.add({Severity::warning, textOf(loss), loss.place});
    }
    const auto share = static_cast<double>(losses.lost) /
                       static_cast<double>(std::max<std::uint64_t>(1, messages + losses.lost));
    if (share >= badShare) {
        findings.add(
            {Severity::critical, withDecimals(100 * share, 1) + " % of the messages are lost", {}});
    }
}

void InputCheck::judgeDamage()
{
    const auto all = static_cast<double>(messages + damaged);
    const double share = static_cast<double>(damaged) / std::max(1.0, all);
    if (damaged > 0) {
        findings.add({share >= badShare ? Severity::critical : Severity::warning,
                      countText(damaged, "message") + " of " + withDecimals(all, 0) +
                          " came damaged, " + withDecimals(100 * share, 1) + " %",
                      {}});
    }
}

// Types that came regularly, and then no more while the station went on.
void InputCheck::judgeRates()
{
    std::map<StationId, std::int64_t> ends;
    for (const auto& [key, rate] : rates) {
        ends[key.station] = std::max(ends[key.station], rate.lastTime());
    }
    for (const auto& [key, rate] : rates) {
        const double silence = secondsOf(ends[key.station] - rate.lastTime());
        if (rate.isRegular() && silence > shortestStop &&
            silence > stoppedFactor * *rate.period() * format.secondsPerUnit) {
            findings.add({Severity::warning,
                          key.station.text() + ": type " + std::to_string(key.type) +
                              " came for the last time " + withDecimals(silence, 1) +
                              " s before the end",
                          rate.lastPlace()});
        }
    }
}

void InputCheck::judgeExpected(const ExpectedType& expected)
{
    const double rounding = 2 * format.secondsPerUnit;
    bool isThere = false;
    for (const auto& [key, rate] : rates) {
        if (key.type != expected.type) {
            continue;
        }
        isThere = true;
        const double every = rate.period().value_or(0) * format.secondsPerUnit;
        const double after = secondsOf(clock.now() - rate.lastTime());
        const bool isGone = after > missingFactor * expected.seconds + rounding;
        if (!isGone && every <= lateFactor * expected.seconds) {
            continue;
        }
        findings.add({isGone || every > missingFactor * expected.seconds ? Severity::critical
                                                                         : Severity::warning,
                      key.station.text() + ": " + expected.name +
                          (isGone ? " has not come for " : " comes every ") +
                          withDecimals(isGone ? after : every, 1) + " s instead of every " +
                          withDecimals(expected.seconds, 1) + " s",
                      rate.lastPlace()});
    }
    if (!isThere && seconds() > lateFactor * expected.seconds + rounding) {
        findings.add({Severity::critical, expected.name + " never came", {}});
    }
}
