#include "StatsCollector.h"

#include "Characters.h"
#include "FieldInfo.h"
#include "Message.h"
#include "StatsSystems.h"

namespace {

// The first value of a field; 0 when there is none.
std::uint64_t valueOf(const FieldModel* field, const Message& message)
{
    if (field == nullptr) {
        return 0;
    }
    const bool maybeAbsent = field->optional || field->repeated;
    return maybeAbsent && !field->info->isPresent(&message)
               ? 0
               : bitsOf(field->info->getValueUnchecked(&message, 0));
}

}    // namespace

StatsCollector::StatsCollector(std::unique_ptr<StatsView> statsView, const FieldParts& fieldParts,
                               TypeNumberOf numberOf, const std::vector<const KindModel*>& kinds)
    : view(std::move(statsView)), names(fieldParts), typeNumberOf(std::move(numberOf))
{
    for (const KindModel* kind : kinds) {
        kindParts.emplace(kind, partsOf(*kind));
    }
}

StatsCollector::Parts StatsCollector::partsOf(const KindModel& kind) const
{
    Parts parts;
    parts.station = kind.field(names.station);
    parts.time = kind.field(names.time);
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

void StatsCollector::message(const Place&, const Decoded& decoded)
{
    Parts& parts = kindParts.at(&decoded.kind);
    if (parts.stats == nullptr) {
        parts.stats = &current.kinds[&decoded.kind];
    }
    ++current.messages;
    ++parts.stats->messages;
    countStation(parts, decoded.message);
    if (parts.elements != nullptr) {
        countSatellites(parts, decoded.message);
    }
    if (parts.text != nullptr) {
        countText(parts, decoded.message);
    }
}

void StatsCollector::countStation(const Parts& parts, const Message& message)
{
    StationStats& station = parts.station != nullptr
                                ? parts.stats->of(valueOf(parts.station, message))
                                : parts.stats->otherStations;
    ++station.messages;
    if (parts.time != nullptr) {
        station.time.add(valueOf(parts.time, message), names.timeWrap);
    }
}

void StatsCollector::countSatellites(const Parts& parts, const Message& message)
{
    const unsigned count = parts.elements->info->getCount(&message);
    for (unsigned i = 0; i < count; ++i) {
        const Message& element =
            *parts.elements->info->getValueUnchecked(&message, i).toSubMessage();
        parts.stats->satellites.add(valueOf(parts.system, element),
                                    valueOf(parts.satellite, element));
    }
}

void StatsCollector::countText(const Parts& parts, const Message& message)
{
    readCharacters(*parts.text->info, message, characters);
    characters.resize(upToFirstNul(characters).size());
    current.texts.add(characters);
}

void StatsCollector::unreported(const Place& place)
{
    ++current.unreported;
    current.unreportedTypes.add(typeNumberOf(place.frame.bytes()));
}

void StatsCollector::trouble(const Place& place, Trouble trouble, const std::string& text)
{
    switch (trouble) {
    case Trouble::damaged:
        ++current.damaged;
        break;
    case Trouble::truncated:
        ++current.truncated;
        break;
    case Trouble::unknownType:
        ++current.unknown;
        current.unknownTypes.add(typeNumberOf(place.frame.bytes()));
        current.events.add(text);
        break;
    case Trouble::misfit:
        ++current.misfit;
        current.events.add(text);
        break;
    }
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
    for (auto& entry : kindParts) {
        entry.second.stats = nullptr;
    }
}

void StatsCollector::finish()
{
    view->total(all, inputs);
}
