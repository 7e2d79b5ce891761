#include "filter/MessageFilter.h"

#include "base/NearestName.h"
#include "filter/Expression.h"

#include <algorithm>
#include <charconv>

namespace {

std::uint64_t stationNumber(const std::string& text)
{
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw FilterError{"station '" + text + "' is not a number"};
    }
    return number;
}

FilterError unknownKind(const FormatModel& model, const std::string& name)
{
    std::vector<std::string> names;
    for (const auto& kind : model.kinds()) {
        if (kind->isMain) {
            names.push_back("'" + kind->name + "'");
        }
    }
    const std::string meant = suggestion(nearestNames(name, names));
    return FilterError{"no kind of message is called '" + name + "'" +
                       (meant.empty() ? " ('rtcm2 describe' lists them)" : ": " + meant)};
}

std::vector<const KindModel*> mainKinds(const FormatModel& model,
                                        const std::vector<std::string>& names)
{
    std::vector<const KindModel*> kinds;
    for (const std::string& name : names) {
        const KindModel* kind = model.kind(name);
        if (kind == nullptr) {
            throw unknownKind(model, name);
        }
        if (!kind->isMain) {
            throw FilterError{"'" + kind->name + "' is no message but a part of messages"};
        }
        kinds.push_back(kind);
    }
    return kinds;
}

bool isAmong(const std::vector<const KindModel*>& kinds, const KindModel* kind)
{
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

template <class Predicate>
void dropKinds(std::vector<const KindModel*>& kinds, Predicate isDropped)
{
    kinds.erase(std::remove_if(kinds.begin(), kinds.end(), isDropped), kinds.end());
}

}    // namespace

MessageFilter::MessageFilter(const FormatModel& model, const FilterOptions& options,
                             const std::string& stationField)
{
    chooseKinds(model, options);
    chooseStations(options, stationField);
    chooseByExpression(options.where);
    isPassing.resize(static_cast<std::size_t>(RTCM2_last_kind()) + 1);
    for (const KindModel* kind : passingKinds) {
        isPassing[kind->number()] = true;
    }
}

MessageFilter::~MessageFilter() = default;

void MessageFilter::chooseKinds(const FormatModel& model, const FilterOptions& options)
{
    const auto wanted = mainKinds(model, options.kinds);
    const auto excluded = mainKinds(model, options.excludedKinds);
    for (const auto& kind : model.kinds()) {
        if (kind->isMain && (wanted.empty() || isAmong(wanted, kind.get())) &&
            !isAmong(excluded, kind.get())) {
            passingKinds.push_back(kind.get());
        }
    }
    if (passingKinds.empty()) {
        throw FilterError{"the chosen types leave no kind of message"};
    }
}

void MessageFilter::chooseStations(const FilterOptions& options, const std::string& stationField)
{
    for (const std::string& station : options.stations) {
        stations.push_back(stationNumber(station));
    }
    if (stations.empty()) {
        return;
    }
    for (const KindModel* kind : passingKinds) {
        if (const FieldModel* field = kind->field(stationField)) {
            stationFields.emplace(kind, field);
        }
    }
    dropKinds(passingKinds, [this](const KindModel* kind) { return !stationFields.count(kind); });
    if (passingKinds.empty()) {
        throw FilterError{"the chosen kinds of message name no station"};
    }
}

void MessageFilter::chooseByExpression(const std::string& where)
{
    if (where.empty()) {
        return;
    }
    expression = std::make_unique<Expression>(where, passingKinds);
    dropKinds(passingKinds, [this](const KindModel* kind) { return !expression->canHold(*kind); });
}

bool MessageFilter::takes(const void* record, const KindModel& kind) const
{
    return takesKind(kind) && takesStation(record, kind) &&
           (expression == nullptr || expression->holds(record, kind));
}

bool MessageFilter::takesStation(const void* record, const KindModel& kind) const
{
    if (stations.empty()) {
        return true;
    }
    const auto field = stationFields.find(&kind);
    if (field == stationFields.end() || field->second->count(record) == 0) {
        return false;
    }
    const auto station =
        static_cast<std::uint64_t>(RTCM2_reader_integer(&field->second->reader, record, 0));
    return std::find(stations.begin(), stations.end(), station) != stations.end();
}
