#include "commands/report/InputReport.h"

#include "base/Characters.h"
#include "framing/Header.h"

#include <cmath>

namespace {

constexpr std::size_t mostTexts = 200;
constexpr std::size_t mostDistances = 64;
constexpr std::int64_t bytesOfAStretch = 256;
constexpr double secondsOfAColumn = 6;

const FieldModel* textFieldOf(const KindModel& kind)
{
    const FieldModel* const text = kind.field(RTCM2_MEANS_TEXT);
    return text != nullptr && text->isText() ? text : nullptr;
}

}    // namespace

InputReport::InputReport(const ReportSubject& reportSubject, const std::string& name)
    : subject(reportSubject), check(subject.format, subject.wanted, {}),
      counter(subject.filter.kinds()), satellites(subject.satellites.fields),
      textFields(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    check.name = name;
    positions.beginInput(name);
    damageByTime.begin(static_cast<std::int64_t>(secondsOfAColumn / subject.format.secondsPerUnit));
    damageByByte.begin(bytesOfAStretch);
    for (const auto& kind : subject.model.kinds()) {
        textFields[kind->number()] = textFieldOf(*kind);
    }
}

bool InputReport::isChosen(const Found& found) const
{
    const MessageFilter& filter = subject.filter;
    if (!filter.isRestricted() || !found.hasRecord()) {
        return true;    // of damage nobody knows what it was
    }
    return filter.takes({.record = found.record, .envelope = found.envelope}, *found.kind);
}

void InputReport::take(const Found& found)
{
    const std::optional<InputCheck::Taken> taken = check.take(found);
    const double seconds = axisSeconds(taken);
    const bool isBad = found.what == Found::What::damaged || found.what == Found::What::misfit;
    received = received ? received : found.envelope->received;
    damageByTime.add(taken ? taken->place.clock : check.now(), isBad);
    damageByByte.add(static_cast<std::int64_t>(found.begin), isBad);
    if (found.what == Found::What::damaged) {
        traffic.addDamage(seconds);
    }
    if (!isChosen(found)) {
        return;
    }
    counter.take(found);
    if (taken) {
        traffic.add(
            {taken->station, taken->type, taken->system},
            {.seconds = seconds, .isFaulty = isBad || found.isShort, .isPlaced = taken->isPlaced});
    }
    if (found.what != Found::What::message) {
        return;
    }
    if (taken) {
        satellites.take(*found.kind, found.record, taken->station, seconds);
    }
    takePoints(found, seconds);
    takeText(found, {framing::headerOf(found.bytes).station, *found.envelope}, seconds);
}

double InputReport::secondsOf(const Place& place) const
{
    constexpr double hour = 3600;
    constexpr double mostOff = 120;
    const double seconds = check.secondsOf(place.clock);
    if (!place.time) {
        return seconds;
    }
    const double step = std::remainder(*place.time - *check.beginOfClock() - seconds, hour);
    return std::abs(step) <= mostOff ? seconds + step : seconds;
}

double InputReport::axisSeconds(const std::optional<InputCheck::Taken>& taken)
{
    if (!taken) {
        return check.seconds();
    }
    const double seconds =
        taken->isPlaced ? secondsOf(taken->place) : check.secondsOf(taken->place.clock);
    shown = {std::min(shown.low, seconds), std::max(shown.high, seconds)};
    return seconds;
}

void InputReport::takePoints(const Found& found, double seconds)
{
    const RTCM2_kind_s& row = *found.kind->row;
    if (row.point_count == 0) {
        return;
    }
    positions.add(found);
    for (std::uint32_t i = 0; i < row.point_count; ++i) {
        const Positions::Key key = Positions::keyOf(found, i);
        const auto point = positions.points().find(key);
        if (point == positions.points().end() || !point->second.last ||
            (distances.size() >= mostDistances && distances.count(key) == 0)) {
            continue;
        }
        const PointHistory& history = point->second;
        const Cartesian from = subject.wanted.position
                                   ? *subject.wanted.position
                                   : cartesianOf(history.kept.front().coordinates);
        distances[key].add(seconds, distanceBetween(from, cartesianOf(history.last->coordinates)));
    }
}

void InputReport::takeText(const Found& found, const StationId& station, double seconds)
{
    const FieldModel* const field = textFields[found.kind->number()];
    if (field == nullptr) {
        return;
    }
    std::string text;
    appendUtf8(text, upToFirstNul(field->characters(found.record)));
    const auto known = texts.find({station, text});
    if (known == texts.end() && texts.size() >= mostTexts) {
        ++otherTexts;
        return;
    }
    TextUse& use = texts[{station, text}];
    use.first = use.times == 0 ? seconds : use.first;
    use.last = seconds;
    ++use.times;
}

void InputReport::finish(const ReaderCounters& readerCounters)
{
    check.finish();
    counters = readerCounters;
    stats = counter.takeStats(counters);
}

// When messages were received tells the date only where they came as they were sent: what was kept
// comes at any time.
std::optional<double> InputReport::dateOf(double begin) const
{
    constexpr double hour = 3600;
    constexpr double mostOnTheWay = 180;
    const std::optional<std::int64_t> near = subject.date ? subject.date : received;
    if (!near) {
        return std::nullopt;
    }
    const double seconds = static_cast<double>(*near) / 1e6;
    const bool isAtOnce = std::abs(std::remainder(seconds - begin, hour)) < mostOnTheWay;
    const double hours = subject.date ? std::ceil((seconds - begin) / hour - 0.5)
                                      : std::round((seconds - begin) / hour);
    return subject.date || isAtOnce ? std::optional(begin + hour * hours) : std::nullopt;
}

TimeScale InputReport::times() const
{
    const double begin = check.beginOfClock().value_or(0);
    const std::optional<double> date = dateOf(begin);
    return {date.value_or(begin), date.has_value(), shown};
}
