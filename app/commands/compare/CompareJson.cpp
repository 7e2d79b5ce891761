#include "base/Characters.h"
#include "commands/JsonWriter.h"
#include "commands/compare/CompareSink.h"

namespace {

constexpr const char* sideKeys[] = {"a", "b"};

void writeGroup(JsonWriter& json, const MessageGroup& group)
{
    const RTCM2_system_s* const system = group.systemRow();
    json.member("station", std::uint64_t{group.station});
    json.member("system", std::string(system != nullptr ? system->name : ""));
    json.member("type", std::uint64_t{group.type});
}

void writeMessage(JsonWriter& json, const Comparison& comparison, std::size_t side,
                  std::uint32_t index)
{
    const MessageStore& store = comparison.store(side);
    json.member("number", store[index].number);
    json.member("byte", store[index].byte);
    if (const std::string second = comparison.secondOf(store, index); !second.empty()) {
        json.number("time_s", second);
    }
}

// Written out now and then, since there may be many.
void writeOnly(JsonWriter& json, const Comparison& comparison, std::size_t side, Output& output)
{
    json.objects(side == 0 ? "only_a" : "only_b", comparison.only(side), [&](std::uint32_t index) {
        const StoredMessage& message = comparison.store(side)[index];
        writeMessage(json, comparison, side, index);
        writeGroup(json, message.group);
        json.member("sequence", std::uint64_t{message.sequence});
        output << json.take();
    });
}

void writeFirst(JsonWriter& json, const Comparison& comparison, const FirstDifference& first)
{
    json.key("first");
    json.beginObject();
    writeGroup(json, comparison.store(0)[first.a].group);
    json.member("field", first.field);
    if (first.element != 0) {
        json.member("element", std::uint64_t{first.element});
    }
    for (std::size_t side = 0; side < 2; ++side) {
        json.key(sideKeys[side]);
        json.beginObject();
        writeMessage(json, comparison, side, side == 0 ? first.a : first.b);
        if (!first.field.empty()) {
            json.member("raw", first.values[side].raw);
            json.member("quantity", first.values[side].quantity);
        }
        json.endObject();
    }
    json.endObject();
}

void writeSpread(JsonWriter& json, const Spread& spread)
{
    json.member("count", spread.count);
    json.member("mean", spread.mean);
    json.member("deviation", spread.deviation());
    json.member("largest", spread.largest);
}

void writeSystem(JsonWriter& json, const SatelliteDifferences& differences,
                 const SatelliteDifferences::Key& key, const SatelliteDifferences::System& system)
{
    writeGroup(json, key.first);
    json.member("satellites_of", std::string(key.second != nullptr ? key.second->name : ""));
    json.member("alone", system.alone);
    const auto& quantities = differences.planOf(key.first.type)->quantities;
    json.beginArray("quantities");
    for (std::size_t field = 0; field < quantities.size(); ++field) {
        json.beginObject();
        json.member("quantity", quantities[field]->name);
        json.member("unit", quantities[field]->unit);
        json.key("common");
        json.beginObject();
        writeSpread(json, system.common[field]);
        json.endObject();
        json.objects("satellites", system.satellites, [&](const auto& named) {
            json.member("satellite", differences.nameOf(key, named.first));
            writeSpread(json, named.second.fields[field]);
            json.member("other_issues", named.second.otherIssues);
        });
        json.endObject();
    }
    json.endArray();
}

}    // namespace

void writeCompareJson(const Comparison& comparison, Output& output)
{
    JsonWriter json;
    json.beginObject();
    json.member("same", comparison.isSame());
    for (std::size_t side = 0; side < 2; ++side) {
        json.key(sideKeys[side]);
        json.beginObject();
        json.member("input", validUtf8(comparison.store(side).input));
        json.member("messages", std::uint64_t{comparison.store(side).size()});
        json.endObject();
    }
    json.member("equal", comparison.equal());
    json.member("differing", comparison.differing());
    if (comparison.first()) {
        writeFirst(json, comparison, *comparison.first());
    }
    json.objects("fields", comparison.fields(), [&](const auto& counted) {
        json.member("type", std::uint64_t{std::get<0>(counted.first)});
        json.member("field", std::get<3>(counted.first));
        json.member("messages", counted.second);
    });
    writeOnly(json, comparison, 0, output);
    writeOnly(json, comparison, 1, output);
    json.objects("corrections", comparison.satellites().systems(), [&](const auto& entry) {
        writeSystem(json, comparison.satellites(), entry.first, entry.second);
    });
    json.endObject();
    output << json.take();
}
