#include "commands/stats/StatsCollector.h"

#include "base/Characters.h"
#include "commands/stats/StatsSystems.h"

namespace {

std::uint64_t valueOf(const FieldModel& field, const void* record)
{
    return static_cast<std::uint64_t>(RTCM2_reader_integer(&field.reader, record, 0));
}

}    // namespace

StatsCollector::StatsCollector(std::unique_ptr<StatsView> statsView, const FieldParts& fieldParts,
                               TypeNumberOf numberOf, const std::vector<const KindModel*>& kinds)
    : view(std::move(statsView)), names(fieldParts), typeNumberOf(std::move(numberOf)),
      kindParts(static_cast<std::size_t>(RTCM2_last_kind()) + 1), kindStats(kindParts.size())
{
    for (const KindModel* kind : kinds) {
        kindParts[kind->number()] = partsOf(*kind, names);
    }
}

StatsCollector::Parts StatsCollector::partsOf(const KindModel& kind, const FieldParts& names)
{
    Parts parts{.station = kind.field(names.station), .time = kind.field(names.time)};
    const FieldModel* text = kind.field(names.text);
    parts.text = text != nullptr && text->isText() ? text : nullptr;
    for (const FieldModel& field : kind.fields) {
        if (field.element != nullptr && field.element->field(names.satellite) != nullptr) {
            parts.elements = &field;
            parts.satellite = field.element->field(names.satellite);
            parts.system = systemField(*field.element, names);
        }
    }
    return parts;
}

void StatsCollector::take(const Found& found)
{
    switch (found.what) {
    case Found::What::message:
        return countMessage(found);
    case Found::What::unreported:
        ++current.unreported;
        current.unreportedTypes.add(typeNumberOf(found.bytes));
        break;
    case Found::What::damaged:
        ++current.damaged;
        break;
    case Found::What::truncated:
        ++current.truncated;
        break;
    case Found::What::unknownType:
        ++current.unknown;
        current.unknownTypes.add(typeNumberOf(found.bytes));
        current.events.add(found.text);
        break;
    case Found::What::misfit:
        ++current.misfit;
        current.events.add(found.text);
        break;
    }
}

void StatsCollector::countMessage(const Found& found)
{
    const Parts& parts = kindParts[found.kind->number()];
    KindStats*& kind = kindStats[found.kind->number()];
    if (kind == nullptr) {
        kind = &current.kinds[found.kind];
    }
    ++current.messages;
    ++kind->messages;
    StationStats& station = parts.station != nullptr
                                ? kind->of(valueOf(*parts.station, found.record))
                                : kind->otherStations;
    ++station.messages;
    if (parts.time != nullptr) {
        station.time.add(valueOf(*parts.time, found.record), names.timeWrap);
    }
    if (parts.text != nullptr) {
        current.texts.add(std::string(upToFirstNul(parts.text->characters(found.record))));
    }
    if (parts.elements != nullptr) {
        countSatellites(parts, found.record, kind->satellites);
    }
}

void StatsCollector::countSatellites(const Parts& parts, const void* record,
                                     SatelliteCounts& satellites)
{
    parts.elements->eachElement(record, [&](const void* element) {
        // Where no field tells the system, the kind of the message does.
        satellites.add(parts.system != nullptr ? valueOf(*parts.system, element) : 0,
                       valueOf(*parts.satellite, element));
    });
}

void StatsCollector::endOfInput(const std::string& name, const ReaderCounters& counters)
{
    current.input = name;
    current.form = counters.form;
    current.read = counters;
    view->input(current);
    all.add(current);
    ++inputs;
    current = Stats();
    kindStats.assign(kindStats.size(), nullptr);
}
