#include "commands/stats/StatsCollector.h"

StatsCollector::StatsCollector(std::unique_ptr<StatsView> statsView, const FieldParts& fieldParts,
                               TypeNumberOf numberOf, const std::vector<const KindModel*>& kinds)
    : view(std::move(statsView)), names(fieldParts), typeNumberOf(std::move(numberOf)),
      factsReader(makeFactsReader(fieldParts, kinds))
{
}

bool StatsCollector::takePacked(const Place& place)
{
    const MessageFacts* facts = factsReader->read(place.frame.bytes());
    if (facts != nullptr) {
        count(*facts);
    }
    return facts != nullptr;
}

void StatsCollector::message(const Place& place, const Decoded&)
{
    takePacked(place);
}

void StatsCollector::count(const MessageFacts& facts)
{
    KindStats& kind = current.kinds[facts.kind];
    ++current.messages;
    ++kind.messages;
    StationStats& station = facts.station ? kind.of(*facts.station) : kind.otherStations;
    ++station.messages;
    if (facts.time) {
        station.time.add(*facts.time, names.timeWrap);
    }
    for (const MessageFacts::Satellite& satellite : facts.satellites) {
        kind.satellites.add(satellite.system, satellite.number);
    }
    if (facts.text) {
        current.texts.add(std::string(*facts.text));
    }
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
}

void StatsCollector::finish()
{
    view->total(all, inputs);
}
