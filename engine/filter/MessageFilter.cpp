#include "filter/MessageFilter.h"

#include "base/NearestName.h"
#include "filter/Expression.h"
#include "filter/FieldCondition.h"
#include "framing/Header.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

constexpr int typeCount = framing::messageTypes;    // of messages, known or not

std::vector<std::int64_t> numbersOf(const std::vector<std::string>& texts, const char* what)
{
    std::vector<std::int64_t> numbers;
    for (const std::string& text : texts) {
        std::uint64_t number = 0;
        const char* const end = text.data() + text.size();
        const auto result = std::from_chars(text.data(), end, number);
        if (result.ec != std::errc() || result.ptr != end) {
            throw FilterError{what + (" '" + text) + "' is not a number"};
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

// The type of this number, if it is one that no kind has.
std::optional<std::int64_t> unknownType(const std::string& name)
{
    for (int type = 0; type < typeCount; ++type) {
        if (name == std::to_string(type) && RTCM2_kind_of_type(type) == nullptr) {
            return type;
        }
    }
    return std::nullopt;
}

// What --type and --except name.
struct Types {
    std::vector<const KindModel*> kinds{};
    std::vector<std::int64_t> unknown{};    // numbers of no kind

    bool isEmpty() const { return kinds.empty() && unknown.empty(); }
    bool contains(const KindModel* kind) const
    {
        return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
    }
    bool contains(std::int64_t type) const
    {
        return std::find(unknown.begin(), unknown.end(), type) != unknown.end();
    }
};

Types typesOf(const FormatModel& model, const std::vector<std::string>& names)
{
    Types types;
    for (const std::string& name : names) {
        if (const auto type = unknownType(name)) {
            types.unknown.push_back(*type);
            continue;
        }
        const KindModel* kind = model.kind(name);
        if (kind == nullptr) {
            throw unknownKind(model, name);
        }
        if (!kind->isMain) {
            throw FilterError{"'" + kind->name + "' is no message but a part of messages"};
        }
        types.kinds.push_back(kind);
    }
    return types;
}

Types chosenTypes(const FormatModel& model, const FilterOptions& options)
{
    const Types wanted = typesOf(model, options.kinds);
    const Types excluded = typesOf(model, options.excludedKinds);
    const auto isChosen = [&](const auto& type) {
        return (wanted.isEmpty() || wanted.contains(type)) && !excluded.contains(type);
    };
    Types chosen;
    for (const auto& kind : model.kinds()) {
        if (kind->isMain && isChosen(kind.get())) {
            chosen.kinds.push_back(kind.get());
        }
    }
    for (std::int64_t type = 0; type < typeCount; ++type) {
        if (RTCM2_kind_of_type(static_cast<std::int32_t>(type)) == nullptr && isChosen(type)) {
            chosen.unknown.push_back(type);
        }
    }
    if (chosen.isEmpty()) {
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
    return field != nullptr ? where::valueAmong(*field, stations)
                            : where::Condition{.constant = false};
}

where::Condition senderCondition(const std::vector<std::int64_t>& senders, bool takesSenderless)
{
    if (senders.empty()) {
        return {.constant = true};
    }
    return {.test = [senders, takesSenderless](const where::Subject& subject) {
        const auto& sender = subject.envelope->sender;
        return sender ? std::find(senders.begin(), senders.end(), sender->mmsi) != senders.end()
                      : takesSenderless;
    }};
}

}    // namespace

MessageFilter::MessageFilter(const FormatModel& model, const FilterOptions& options)
    : restricted(!options.kinds.empty() || !options.excludedKinds.empty() ||
                 !options.stations.empty() || !options.senders.empty() || !options.where.empty()),
      conditions(static_cast<std::size_t>(RTCM2_last_kind()) + 1, {.constant = false})
{
    Types types = chosenTypes(model, options);
    passingKinds = std::move(types.kinds);
    if (options.where.empty() && !types.unknown.empty()) {
        passingKinds.push_back(&model.unknownKind());
    }
    const std::vector<std::int64_t> stations = numbersOf(options.stations, "station");
    const where::Condition ofSender =
        senderCondition(numbersOf(options.senders, "MMSI"), options.takesSenderless);
    for (const KindModel* kind : passingKinds) {
        conditions[kind->number()] =
            where::allOf({stationCondition(kind->field(RTCM2_MEANS_STATION), stations), ofSender});
    }
    if (const FieldModel* type = model.unknownKind().field(RTCM2_MEANS_TYPE)) {
        restrict(model.unknownKind(), where::valueAmong(*type, types.unknown));
    }
    dropKinds();
    if (passingKinds.empty()) {
        throw FilterError{options.stations.empty()
                              ? "--where holds for no message of an unknown type"
                              : "the chosen kinds of message name no station"};
    }
    if (options.where.empty()) {
        return;
    }
    const std::vector<where::Condition> written = conditionsOf(options.where, passingKinds);
    for (std::size_t i = 0; i < written.size(); ++i) {
        restrict(*passingKinds[i], written[i]);
    }
    dropKinds();
}

void MessageFilter::restrict(const KindModel& kind, const where::Condition& more)
{
    where::Condition& condition = conditions[kind.number()];
    condition = where::allOf({condition, more});
}

void MessageFilter::dropKinds()
{
    std::erase_if(passingKinds, [this](const KindModel* kind) { return !takesKind(*kind); });
}
