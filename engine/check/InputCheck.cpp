#include "check/InputCheck.h"

#include "base/Columns.h"
#include "check/CheckNumbers.h"

#include "framing/Header.h"

#include <functional>
#include <string_view>

namespace {

constexpr double secondsBack = 5;         // before a message counts as out of its place
constexpr double shortestAbsence = 10;    // of a satellite, in seconds
constexpr double secondsOfAStretch = 60;
constexpr std::size_t mostStations = 256;
constexpr std::size_t mostRates = 1024;
constexpr std::size_t rememberedMessages = 8;    // of a station, to know repeated ones

std::uint64_t hashOf(std::span<const std::uint8_t> bytes)
{
    return std::hash<std::string_view>()(
        {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

// Every number is where none is asked for.
bool isAmong(const std::vector<unsigned>& wanted, unsigned number)
{
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), number) != wanted.end();
}

}    // namespace

CheckedFormat::CheckedFormat(const FormatModel& model)
    : noSystem(static_cast<std::uint32_t>(RTCM2_system_count())),
      fields(static_cast<std::size_t>(RTCM2_last_kind()) + 1), systems(fields.size())
{
    for (const auto& kind : model.kinds()) {
        fields[kind->number()].emplace(*kind);
        systems[kind->number()].emplace(*kind);
        const MessageTime time = timeOf(*kind);
        if (time.field != nullptr) {
            secondsPerUnit = time.secondsPerUnit;
            unitsPerHour = time.wrap;
        }
        const FieldModel* const health = kind->field(RTCM2_MEANS_HEALTH);
        healthField = health != nullptr ? health : healthField;
    }
}

std::uint32_t CheckedFormat::systemOf(const Found& found, unsigned type) const
{
    if (found.what == Found::What::message) {
        return systems[found.kind->number()]->of(found.record);
    }
    const RTCM2_kind_s* const kind = RTCM2_kind_of_type(static_cast<std::int32_t>(type));
    return kind != nullptr && kind->system != nullptr
               ? static_cast<std::uint32_t>(kind->system - RTCM2_system(0))
               : noSystem;
}

void DamageCurve::add(std::int64_t time, bool isBad)
{
    std::size_t place = static_cast<std::size_t>(std::max<std::int64_t>(time, 0) / units);
    while (place >= most) {
        for (std::size_t i = 0; i < counted.size(); i += 2) {
            const Stretch next = i + 1 < counted.size() ? counted[i + 1] : Stretch{};
            counted[i / 2] = {counted[i].all + next.all, counted[i].bad + next.bad};
        }
        counted.resize((counted.size() + 1) / 2);
        units *= 2;
        place /= 2;
    }
    counted.resize(std::max(counted.size(), place + 1));
    ++counted[place].all;
    counted[place].bad += isBad ? 1 : 0;
}

// A good message with what its header says.
struct InputCheck::Message {
    const Found& found;
    framing::Header header;
    StationId station;
    std::uint32_t system;
    Place place;
};

InputCheck::InputCheck(const CheckedFormat& checkedFormat, const Wanted& wantedOfIt, Tell tellNow)
    : format(checkedFormat), wanted(wantedOfIt), tell(std::move(tellNow)),
      clock(format.unitsPerHour, static_cast<std::int64_t>(secondsBack / format.secondsPerUnit),
            format.noSystem),
      counters(format.noSystem)
{
    damage.begin(static_cast<std::int64_t>(secondsOfAStretch / format.secondsPerUnit));
}

void InputCheck::report(Severity severity, std::string text, const Place& place)
{
    const Finding problem{severity, std::move(text), place};
    if (tell) {
        tell(problem);
    }
    findings.add(problem);
}

const ExpectedType* InputCheck::expectation(unsigned type) const
{
    const auto found = std::find_if(wanted.types.begin(), wanted.types.end(),
                                    [type](const auto& expected) { return expected.type == type; });
    return found != wanted.types.end() ? &*found : nullptr;
}

std::optional<InputCheck::Taken> InputCheck::take(const Found& found)
{
    const bool hasHeader = found.what != Found::What::damaged &&
                           found.what != Found::What::truncated &&
                           found.bytes.size() >= framing::headerWords * framing::bytesPerWord;
    if (!hasHeader) {
        takeDamage(found);
        return std::nullopt;
    }
    const framing::Header header = framing::headerOf(found.bytes);
    const StationId station(header.station, *found.envelope);
    if (!isAmong(wanted.stations, station.station) || !isAmong(wanted.senders, station.mmsi)) {
        return std::nullopt;
    }
    if (stations.size() >= mostStations && stations.count(station) == 0) {
        ++ofOthers;
        return std::nullopt;
    }
    const bool hasTime = header.zCount < format.unitsPerHour;
    Place place = placeOf(found);
    if (hasTime) {
        place.time = secondsOf(header.zCount);
    }
    Message message{found, header, station, format.systemOf(found, header.type), place};
    return takeMessage(message);
}

Place InputCheck::placeOf(const Found& found) const
{
    return {.number = found.number,
            .byte = found.begin,
            .received = wanted.times ? found.envelope->received : std::nullopt,
            .clock = clock.now()};
}

void InputCheck::takeDamage(const Found& found)
{
    if (found.what == Found::What::truncated) {
        ++truncated;
        return;
    }
    ++damaged;
    damage.add(clock.now(), true);
    if (tell) {
        tell({Severity::warning, "damaged: " + found.text, placeOf(found)});
    }
}

std::optional<InputCheck::Taken> InputCheck::takeMessage(Message& message)
{
    if (isRepeated(message)) {
        ++repeated;
        return std::nullopt;
    }
    ++messages;
    unknown += message.found.what == Found::What::unknownType ? 1 : 0;
    const bool isMisfit = message.found.what == Found::What::misfit;
    misfit += isMisfit ? 1 : 0;
    shortened += message.found.isShort ? 1 : 0;
    damage.add(clock.now(), isMisfit);
    const bool isAtItsPlace = isPlaced(message);
    if (isAtItsPlace) {
        counters.add(message.station, message.system,
                     {message.header.sequence, message.place.clock, damaged, message.place});
        takeRate(message);
        review();
    }
    if (isMisfit) {
        report(Severity::warning,
               message.station.text() + ": the content does not fit type " +
                   std::to_string(message.header.type),
               message.place);
    } else if (message.found.isShort) {
        report(Severity::warning,
               message.station.text() + ": shorter than it says, only what came whole is used",
               message.place);
    }
    const auto entry = stations.try_emplace(
        message.station, static_cast<std::int64_t>(shortestAbsence / format.secondsPerUnit));
    StationState& station = entry.first->second;
    ++station.messages;
    station.lastPlace = message.place;
    takeHealth(message, station);
    if (message.found.what == Found::What::message) {
        takeRecord(message);
        takePoints(message, station);
    }
    return Taken{message.station, message.header.type, message.system, message.place, isAtItsPlace};
}

// The same bits as one of the last messages of the station: sent twice, or received twice.
bool InputCheck::isRepeated(const Message& message)
{
    std::deque<std::uint64_t>& known = recent[message.station];
    const std::uint64_t hash = hashOf(message.found.bytes);
    if (std::find(known.begin(), known.end(), hash) != known.end()) {
        return true;
    }
    known.push_back(hash);
    if (known.size() > rememberedMessages) {
        known.pop_front();
    }
    return false;
}

// Whether the message stands where its time belongs. It gets its time by the input's clock.
bool InputCheck::isPlaced(Message& message)
{
    if (!message.place.time) {
        return true;    // it tells no time, so it comes when the others come
    }
    begin = begin ? begin : message.place.time;
    const StationId& station = message.station;
    const InputClock::Reading reading = clock.read(station, message.system, message.header.zCount);
    message.place.clock = reading.time;
    const std::string what = station.text() + ": the time goes back by " +
                             withDecimals(secondsOf(reading.behind), 1) + " s";
    switch (reading.kind) {
    case InputClock::Kind::normal:
        return true;
    case InputClock::Kind::misplaced:
        ++misplaced;
        report(Severity::warning, what + " for this message", message.place);
        return false;
    case InputClock::Kind::jumped:
        ++restarts;
        break;
    }
    report(Severity::warning, what + ": another recording, or the station began anew",
           message.place);
    counters.restart(station);
    for (auto rate = rates.lower_bound({station, 0, 0});
         rate != rates.end() && rate->first.station == station; ++rate) {
        rate->second.restart();
    }
    return true;
}

void InputCheck::takeRate(const Message& message)
{
    const RateKey key{message.station, message.header.type, message.system};
    if (rates.size() >= mostRates && rates.count(key) == 0) {
        return;
    }
    if (const auto change = rates[key].add(message.place.clock, message.place)) {
        report(Severity::warning,
               key.station.text() + ": type " + std::to_string(key.type) + " now comes every " +
                   withDecimals(change->after * format.secondsPerUnit, 1) + " s instead of " +
                   withDecimals(change->before * format.secondsPerUnit, 1) + " s",
               change->place);
    }
}

void InputCheck::takeHealth(const Message& message, StationState& station)
{
    const std::int64_t value = message.header.health;
    if (!station.addHealth(value, message.place) || format.health() == nullptr) {
        return;
    }
    const RTCM2_member_s& row = *format.health()->row;
    for (std::uint32_t i = 0; i < row.alarm_count; ++i) {
        if (row.alarms[i].value == value) {
            const char* const text = RTCM2_text_of(&row, value);
            report(row.alarms[i].alarm == RTCM2_ALARM_FAILURE ? Severity::critical
                                                              : Severity::warning,
                   message.station.text() + ": " +
                       (text != nullptr ? text : "health " + std::to_string(value)),
                   message.place);
        }
    }
}

void InputCheck::takeRecord(const Message& message)
{
    const KindModel& kind = *message.found.kind;
    StationState& station = stations.at(message.station);
    const CheckedFields& fields = format.fieldsOf(kind);
    station.addRecord(fields, kind, message.found.record, clock.now(), message.place);
    for (const FieldModel* field : fields.elements) {
        const CheckedFields& parts = format.fieldsOf(*field->element);
        field->eachElement(message.found.record, [&](const void* element) {
            station.addRecord(parts, kind, element, clock.now(), message.place);
        });
    }
}

void InputCheck::takePoints(const Message& message, StationState& station)
{
    const std::string of = message.station.text() + ": ";
    for (const StationState::Move& move :
         station.addPoints(*message.found.kind, message.found.record, message.place)) {
        const std::string point =
            std::string(move.point->point->name) + " of " + message.found.kind->name;
        if (!move.isFirst) {
            report(Severity::warning,
                   of + point + " moved by " + withDecimals(move.metres, 3) + " m", message.place);
        }
        const double away =
            wanted.position ? distanceBetween(*wanted.position, move.point->metres) : 0;
        if (away > wanted.tolerance) {
            report(Severity::critical,
                   of + point + " is " + withDecimals(away, 3) + " m from the position given",
                   message.place);
        }
    }
}

void InputCheck::addSilence(double seconds, bool isOver)
{
    const Finding problem{Severity::warning,
                          std::string(isOver ? "no message came for " : "no message for ") +
                              withDecimals(seconds, 0) + " s",
                          {}};
    if (tell) {
        tell(problem);
    }
    if (isOver) {
        findings.add(problem);
    }
}
