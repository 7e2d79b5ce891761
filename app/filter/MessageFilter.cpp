#include "MessageFilter.h"

#include "Expression.h"
#include "FieldInfo.h"
#include "Message.h"

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

const KindModel* mainKind(const FormatModel& model, const std::string& name)
{
    const KindModel* kind = model.kind(name);
    if (kind == nullptr || !kind->isMain) {
        throw FilterError{"no kind of message is called '" + name +
                          "' ('rtcm2 describe' lists them)"};
    }
    return kind;
}

}    // namespace

MessageFilter::MessageFilter(const FormatModel& model, const FilterOptions& options,
                             const std::string& stationField)
    : stationName(stationField)
{
    for (const std::string& name : options.kinds) {
        passingKinds.push_back(mainKind(model, name));
    }
    if (options.kinds.empty()) {
        for (const auto& kind : model.kinds()) {
            if (kind->isMain) {
                passingKinds.push_back(kind.get());
            }
        }
    }
    for (const std::string& station : options.stations) {
        stations.push_back(stationNumber(station));
    }
    if (!options.where.empty()) {
        expression = std::make_unique<Expression>(options.where, passingKinds);
    }
}

MessageFilter::~MessageFilter() = default;

bool MessageFilter::takesKind(const KindModel& kind) const
{
    return std::find(passingKinds.begin(), passingKinds.end(), &kind) != passingKinds.end();
}

bool MessageFilter::takes(const Message& message, const KindModel& kind) const
{
    return takesKind(kind) && takesStation(message, kind) &&
           (expression == nullptr || expression->holds(message, kind));
}

bool MessageFilter::takesStation(const Message& message, const KindModel& kind) const
{
    if (stations.empty()) {
        return true;
    }
    const FieldModel* field = kind.field(stationName);
    if (field == nullptr) {
        return false;
    }
    const std::uint64_t station = field->info->getValue(&message, 0).toUnsigned();
    return std::find(stations.begin(), stations.end(), station) != stations.end();
}
