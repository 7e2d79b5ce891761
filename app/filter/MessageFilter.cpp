#include "filter/MessageFilter.h"

#include "base/NearestName.h"
#include "filter/Expression.h"
#include "filter/FieldCondition.h"

#include <algorithm>
#include <charconv>

namespace {

std::vector<std::int64_t> stationNumbers(const std::vector<std::string>& stations)
{
    std::vector<std::int64_t> numbers;
    for (const std::string& text : stations) {
        std::uint64_t number = 0;
        const char* const end = text.data() + text.size();
        const auto result = std::from_chars(text.data(), end, number);
        if (result.ec != std::errc() || result.ptr != end) {
            throw FilterError{"station '" + text + "' is not a number"};
        }
        numbers.push_back(static_cast<std::int64_t>(number));
    }
    return numbers;
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

std::vector<const KindModel*> chosenKinds(const FormatModel& model, const FilterOptions& options)
{
    const auto contains = [](const std::vector<const KindModel*>& kinds, const KindModel* kind) {
        return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
    };
    const auto wanted = mainKinds(model, options.kinds);
    const auto excluded = mainKinds(model, options.excludedKinds);
    std::vector<const KindModel*> chosen;
    for (const auto& kind : model.kinds()) {
        if (kind->isMain && (wanted.empty() || contains(wanted, kind.get())) &&
            !contains(excluded, kind.get())) {
            chosen.push_back(kind.get());
        }
    }
    if (chosen.empty()) {
        throw FilterError{"the chosen types leave no kind of message"};
    }
    return chosen;
}

where::Condition stationCondition(const FieldModel* field,
                                  const std::vector<std::int64_t>& stations)
{
    if (stations.empty()) {
        return {.constant = true};
    }
    return field != nullptr ? where::valueAmong({field}, stations)
                            : where::Condition{.constant = false};
}

}    // namespace

MessageFilter::MessageFilter(const FormatModel& model, const FilterOptions& options)
    : passingKinds(chosenKinds(model, options)),
      conditions(static_cast<std::size_t>(RTCM2_last_kind()) + 1, {.constant = false})
{
    const std::vector<std::int64_t> stations = stationNumbers(options.stations);
    for (const KindModel* kind : passingKinds) {
        conditions[kind->number()] = stationCondition(kind->field(RTCM2_MEANS_STATION), stations);
    }
    dropKinds();
    if (passingKinds.empty()) {
        throw FilterError{"the chosen kinds of message name no station"};
    }
    if (options.where.empty()) {
        return;
    }
    const std::vector<where::Condition> written = conditionsOf(options.where, passingKinds);
    for (std::size_t i = 0; i < written.size(); ++i) {
        where::Condition& condition = conditions[passingKinds[i]->number()];
        condition = where::allOf({condition, written[i]});
    }
    dropKinds();
}

void MessageFilter::dropKinds()
{
    std::erase_if(passingKinds, [this](const KindModel* kind) { return !takesKind(*kind); });
}
