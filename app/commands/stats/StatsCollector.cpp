#include "commands/stats/StatsCollector.h"

#include "base/Characters.h"
#include "framing/Header.h"

namespace {

std::uint64_t valueOf(const FieldModel& field, const void* record)
{
    return static_cast<std::uint64_t>(RTCM2_reader_integer(&field.reader, record, 0));
}

// Of a message of no kind that hosts are told of.
int typeNumberOf(const Found& found)
{
    return static_cast<int>(framing::headerOf(found.bytes).type);
}

}    // namespace

StatsCollector::StatsCollector(Output& out, const FieldParts& fieldParts,
                               const std::vector<const KindModel*>& kinds)
    : output(out), parts(fieldParts), kindFields(static_cast<std::size_t>(RTCM2_last_kind()) + 1),
      kindStats(kindFields.size())
{
    for (const KindModel* kind : kinds) {
        kindFields[kind->number()] = countedFieldsOf(*kind);
    }
}

StatsCollector::CountedFields StatsCollector::countedFieldsOf(const KindModel& kind) const
{
    CountedFields counted{.station = kind.field(parts.station), .time = kind.field(parts.time)};
    const FieldModel* text = kind.field(parts.text);
    counted.text = text != nullptr && text->isText() ? text : nullptr;
    for (const FieldModel& field : kind.fields) {
        if (field.element != nullptr && field.element->field(parts.satellite) != nullptr) {
            counted.elements = &field;
            counted.satellite = field.element->field(parts.satellite);
            for (const std::string& name : parts.system) {
                const FieldModel* named = field.element->field(name);
                counted.system = counted.system != nullptr ? counted.system : named;
            }
        }
    }
    return counted;
}

std::string StatsCollector::systemName(const KindModel& kind, std::uint64_t system) const
{
    if (const FieldModel* field = kindFields[kind.number()].system) {
        const char* name = RTCM2_text_of(field->row, static_cast<std::int64_t>(system));
        return name != nullptr ? name : std::to_string(system);
    }
    const auto known = parts.systemOfKind.find(kind.name);
    return known != parts.systemOfKind.end() ? known->second : std::string();
}

double StatsCollector::secondsOf(const StationStats& station) const
{
    return static_cast<double>(station.elapsed) * parts.secondsPerTimeUnit;
}

double StatsCollector::messagesPerSecond(const StationStats& station) const
{
    return static_cast<double>(station.steps) / secondsOf(station);
}

void StatsCollector::take(const Found& found)
{
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

void StatsCollector::countMessage(const Found& found)
{
    const CountedFields& fields = kindFields[found.kind->number()];
    KindStats*& kind = kindStats[found.kind->number()];
    if (kind == nullptr) {
        kind = &current.kinds[found.kind];
    }
    ++current.messages;
    ++kind->messages;
    StationStats& station = fields.station != nullptr
                                ? kind->stations.of(valueOf(*fields.station, found.record))
                                : kind->stations.others;
    ++station.messages;
    if (fields.time != nullptr) {
        station.addTime(valueOf(*fields.time, found.record), parts.timeWrap);
    }
    if (fields.text != nullptr) {
        ++current.texts.of(std::string(upToFirstNul(fields.text->characters(found.record))));
    }
    if (fields.elements != nullptr) {
        countSatellites(fields, found.record, kind->satellites);
    }
}

void StatsCollector::countSatellites(const CountedFields& fields, const void* record,
                                     SatelliteCounts& satellites)
{
    fields.elements->eachElement(record, [&](const void* element) {
        // Where no field tells the system, the kind of the message does.
        satellites.add({fields.system != nullptr ? valueOf(*fields.system, element) : 0,
                        valueOf(*fields.satellite, element), 1});
    });
}

void StatsCollector::endOfInput(const std::string& name, const ReaderCounters& counters)
{
    current.bytesRead = counters.bytesRead;
    current.bytesSkipped = counters.bytesSkipped;
    writeInput(current, name, counters);
    all += current;
    ++inputCount;
    current = Stats();
    kindStats.assign(kindStats.size(), nullptr);
}
