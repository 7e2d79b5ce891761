#include "commands/stats/StatsCounter.h"

#include "base/Characters.h"
#include "framing/Header.h"

#include <tuple>
#include <utility>

namespace {

std::uint64_t valueOf(const FieldModel& field, const void* record)
{
    return static_cast<std::uint64_t>(RTCM2_reader_integer(&field.reader, record, 0));
}

const RTCM2_system_s* systemOfValue(std::int64_t value)
{
    const RTCM2_system_s* system = nullptr;
    for (std::uint32_t i = 0; (system = systemAt(i)) != nullptr && system->value != value; ++i) {
    }
    return system;
}

std::string nameOf(const RTCM2_system_s* system)
{
    return system != nullptr ? system->name : "";
}

// Of a message of no kind that hosts are told of.
int typeNumberOf(const Found& found)
{
    return static_cast<int>(framing::headerOf(found.bytes).type);
}

}    // namespace

StatsCounter::StatsCounter(const std::vector<const KindModel*>& kinds)
    : kindFields(static_cast<std::size_t>(RTCM2_last_kind()) + 1), kindStats(kindFields.size())
{
    for (const KindModel* kind : kinds) {
        kindFields[kind->number()] = countedFieldsOf(*kind);
    }
}

StatsCounter::CountedFields StatsCounter::countedFieldsOf(const KindModel& kind)
{
    CountedFields counted{.station = kind.field(RTCM2_MEANS_STATION),
                          .messageSystem = MessageSystem(kind),
                          .time = timeOf(kind)};
    const FieldModel* text = kind.field(RTCM2_MEANS_TEXT);
    counted.text = text != nullptr && text->isText() ? text : nullptr;
    for (const FieldModel& field : kind.fields) {
        if (field.element != nullptr && field.element->field(RTCM2_MEANS_SATELLITE) != nullptr) {
            counted.elements = &field;
            counted.satellite = field.element->field(RTCM2_MEANS_SATELLITE);
            counted.system = field.element->field(RTCM2_MEANS_SYSTEM);
        }
    }
    return counted;
}

StatsCounter::NamedSatellite StatsCounter::named(const KindModel& kind,
                                                 const SatelliteCounts::Seen& seen) const
{
    const CountedFields& fields = kindFields[kind.number()];
    const auto value = static_cast<std::int64_t>(seen.system);
    const RTCM2_system_s* const system =
        fields.system != nullptr ? systemOfValue(value) : kind.row->system;
    const RTCM2_quantity_s* const quantity = fields.satellite->row->quantity;
    RTCM2_decimal_s number{static_cast<std::int64_t>(seen.satellite), 0};
    if (quantity == nullptr || quantity->is_satellite == 0) {
        return {nameOf(system), number.digits, std::to_string(number.digits), seen};
    }
    number.digits = number.digits == 0 ? quantity->zero : number.digits;
    char name[RTCM2_QUANTITY_ROOM];
    RTCM2_quantity_text(quantity, system, &number, name);
    return {nameOf(system), number.digits, name, seen};
}

std::vector<StatsCounter::NamedSatellite> StatsCounter::satellitesOf(const KindModel& kind,
                                                                     const KindStats& stats) const
{
    std::vector<NamedSatellite> satellites;
    for (const SatelliteCounts::Seen& seen : stats.satellites.sorted()) {
        satellites.push_back(named(kind, seen));
    }
    std::sort(satellites.begin(), satellites.end(), [](const auto& a, const auto& b) {
        return std::tie(a.seen.system, a.number) < std::tie(b.seen.system, b.number);
    });
    return satellites;
}

double StatsCounter::secondsOf(const KindModel& kind, std::int64_t units) const
{
    return static_cast<double>(units) * kindFields[kind.number()].time.secondsPerUnit;
}

double StatsCounter::messagesPerSecond(const KindModel& kind, const StationStats& station) const
{
    return static_cast<double>(station.steps) / secondsOf(kind, station.elapsed);
}

void StatsCounter::take(const Found& found)
{
    current.shortened += found.isShort && found.hasRecord() ? 1 : 0;
    switch (found.what) {
    case Found::What::message:
        return countMessage(found);
    case Found::What::unreported:
        ++current.unreported;
        ++current.unreportedTypes.of(typeNumberOf(found));
        break;
    case Found::What::damaged:
        ++current.damaged;
        break;
    case Found::What::truncated:
        ++current.truncated;
        break;
    case Found::What::unknownType:
        ++current.unknown;
        ++current.unknownTypes.of(typeNumberOf(found));
        ++current.events.of(found.text);
        break;
    case Found::What::misfit:
        ++current.misfit;
        ++current.events.of(found.text);
        break;
    }
}

void StatsCounter::countMessage(const Found& found)
{
    const CountedFields& fields = kindFields[found.kind->number()];
    KindStats*& kind = kindStats[found.kind->number()];
    if (kind == nullptr) {
        kind = &current.kinds[found.kind];
    }
    ++current.messages;
    ++kind->messages;
    StationStats& sender = senderOf(fields, found, *kind);
    ++sender.messages;
    // Senders that are counted together have no time in common.
    if (fields.time.field != nullptr && &sender != &kind->stations.others) {
        sender.addTime(fields.time.of(found.record), fields.time.wrap);
    }
    if (fields.text != nullptr) {
        ++current.texts.of(std::string(upToFirstNul(fields.text->characters(found.record))));
    }
    if (fields.elements != nullptr) {
        countSatellites(fields, found.record, kind->satellites);
    }
}

StationStats& StatsCounter::senderOf(const CountedFields& fields, const Found& found,
                                     KindStats& kind)
{
    if (fields.station == nullptr) {
        return kind.stations.others;
    }
    const auto number = static_cast<unsigned>(valueOf(*fields.station, found.record));
    return kind.stations.of(
        {StationId(number, *found.envelope), fields.messageSystem->of(found.record)});
}

void StatsCounter::countSatellites(const CountedFields& fields, const void* record,
                                   SatelliteCounts& satellites)
{
    fields.elements->eachElement(record, [&](const void* element) {
        // Where no field tells the system, the kind of the message does.
        satellites.add({fields.system != nullptr ? valueOf(*fields.system, element) : 0,
                        valueOf(*fields.satellite, element), 1});
    });
}

Stats StatsCounter::takeStats(const ReaderCounters& counters)
{
    current.bytesRead = counters.bytesRead;
    current.bytesSkipped = counters.bytesSkipped;
    kindStats.assign(kindStats.size(), nullptr);
    return std::exchange(current, Stats());
}
