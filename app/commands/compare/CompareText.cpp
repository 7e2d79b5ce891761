#include "base/Columns.h"
#include "base/Terminal.h"
#include "commands/compare/CompareSink.h"

#include <algorithm>

namespace {

constexpr const char* sideNames[] = {"A", "B"};
constexpr std::size_t mostListed = 20;

std::string nameOf(const MessageGroup& group)
{
    const RTCM2_system_s* const system = group.systemRow();
    return "station " + std::to_string(group.station) + ", type " + std::to_string(group.type) +
           (system != nullptr ? std::string(", ") + system->name : std::string());
}

std::string placeText(const MessageStore& store, std::uint32_t index)
{
    return "message " + std::to_string(store[index].number) + " at byte " +
           std::to_string(store[index].byte);
}

std::string countsText(const Comparison& comparison)
{
    std::string text;
    for (std::size_t side = 0; side < 2; ++side) {
        const MessageStore& store = comparison.store(side);
        text += std::string(sideNames[side]) + " is " + printable(store.input) + " with " +
                std::to_string(store.size()) + " messages\n";
    }
    const auto line = [](std::uint64_t count, const char* what) {
        return right(count, 14) + " " + what + "\n";
    };
    return text + line(comparison.equal(), "messages are equal") +
           line(comparison.differing(), "differ in some fields") +
           line(comparison.only(0).size(), "are only in A") +
           line(comparison.only(1).size(), "are only in B");
}

std::string valueText(const char* side, const ShownValue& value)
{
    return std::string("    ") + side + ": " + value.raw +
           (value.quantity.empty() ? "" : " (" + value.quantity + ")") + "\n";
}

std::string firstText(const Comparison& comparison, const FirstDifference& first)
{
    std::string text = "\nFirst difference, of " + nameOf(comparison.store(0)[first.a].group) +
                       ": " + placeText(comparison.store(0), first.a) + " of A, " +
                       placeText(comparison.store(1), first.b) + " of B\n";
    if (first.field.empty()) {
        return text + "    in bits that no field has\n";
    }
    text += "  " + first.field;
    text += first.element != 0 ? ", element " + std::to_string(first.element) + "\n" : "\n";
    return text + valueText("A", first.values[0]) + valueText("B", first.values[1]);
}

std::string fieldsText(const Comparison& comparison)
{
    std::string text = "\nFields that differ\n      Messages  Type  Field\n";
    for (const auto& [key, count] : comparison.fields()) {
        const auto& [type, field, part, name] = key;
        text += right(count, 14) + right(type, 6) + "  " +
                (name.empty() ? "bits that no field has" : name) + "\n";
    }
    return text;
}

// The groups with how many messages each, and the first messages.
std::string onlyText(const Comparison& comparison, std::size_t side)
{
    const MessageStore& store = comparison.store(side);
    const std::vector<std::uint32_t>& only = comparison.only(side);
    std::map<MessageGroup, std::uint64_t> groups;
    for (const std::uint32_t index : only) {
        ++groups[store[index].group];
    }
    std::string text = std::string("\nOnly in ") + sideNames[side] + "\n";
    for (const auto& [group, count] : groups) {
        text += right(count, 14) + " of " + nameOf(group) + "\n";
    }
    text += right("Message", 14) + right("Byte", 12) + right("Second", 10) + right("Sequence", 10) +
            "\n";
    for (std::size_t i = 0; i < std::min(only.size(), mostListed); ++i) {
        const StoredMessage& message = store[only[i]];
        text += right(message.number, 14) + right(message.byte, 12) +
                right(comparison.secondOf(store, only[i]), 10) + right(message.sequence, 10) +
                "  " + nameOf(message.group) + "\n";
    }
    return only.size() <= mostListed
               ? text
               : text + "    and " + std::to_string(only.size() - mostListed) +
                     " more, which --json lists\n";
}

std::string spreadText(const Spread& spread, const FieldModel& quantity)
{
    return right(spread.count, 8) + right(withDecimals(spread.mean, 4), 12) +
           right(withDecimals(spread.deviation(), 4), 12) +
           right(withDecimals(spread.largest, 4), 12) + "  " + quantity.name;
}

std::string spreadsText(const SatelliteDifferences& differences,
                        const SatelliteDifferences::Key& key,
                        const SatelliteDifferences::System& system, std::size_t field)
{
    const FieldModel& quantity = *differences.planOf(key.first.type)->quantities[field];
    std::string text;
    for (const auto& [number, satellite] : system.satellites) {
        if (satellite.fields[field].count > 0) {
            text += "  " + left(differences.nameOf(key, number), 8) +
                    spreadText(satellite.fields[field], quantity) + "\n";
        }
    }
    const Spread& common = system.common[field];
    return common.count > 0 ? text + "  common  " + spreadText(common, quantity) + "\n" : text;
}

// What was not compared.
std::string leftOutText(const SatelliteDifferences::System& system)
{
    std::uint64_t others = 0;
    for (const auto& [number, satellite] : system.satellites) {
        others += satellite.otherIssues;
    }
    const auto line = [](std::uint64_t count, const char* what) {
        return count > 0 ? "  " + std::to_string(count) + what : std::string();
    };
    return line(others, " times the issues of data differ: not compared\n") +
           line(system.alone, " differences of the only satellite at its time: not counted\n");
}

bool differs(const SatelliteDifferences::System& system)
{
    const auto isOff = [](const Spread& spread) { return spread.largest > 0; };
    return std::any_of(system.common.begin(), system.common.end(), isOff) ||
           std::any_of(system.satellites.begin(), system.satellites.end(), [&](const auto& named) {
               const SatelliteSpread& satellite = named.second;
               return satellite.otherIssues > 0 ||
                      std::any_of(satellite.fields.begin(), satellite.fields.end(), isOff);
           });
}

std::string satellitesText(const SatelliteDifferences& differences,
                           const SatelliteDifferences::Key& key,
                           const SatelliteDifferences::System& system)
{
    std::string text = "\n" + nameOf(key.first) + ", satellites of " +
                       (key.second != nullptr ? key.second->name : "an unknown system") + "\n  " +
                       left("", 8) + right("Count", 8) + right("Mean", 12) +
                       right("Deviation", 12) + right("Largest", 12) + "\n";
    for (std::size_t field = 0; field < system.common.size(); ++field) {
        text += spreadsText(differences, key, system, field);
    }
    return text + leftOutText(system);
}

std::string allSatellitesText(const SatelliteDifferences& differences)
{
    std::string text;
    for (const auto& [key, system] : differences.systems()) {
        text += differs(system) ? satellitesText(differences, key, system) : "";
    }
    return text.empty() ? text
                        : "\nCorrections of satellites, B - A, without their median at each time, "
                          "which is 'common'\n" +
                              text;
}

}    // namespace

void writeCompareText(const Comparison& comparison, Output& output)
{
    output << countsText(comparison);
    if (comparison.isSame()) {
        return;
    }
    if (comparison.first()) {
        output << firstText(comparison, *comparison.first()) << fieldsText(comparison);
    }
    for (std::size_t side = 0; side < 2; ++side) {
        if (!comparison.only(side).empty()) {
            output << onlyText(comparison, side);
        }
    }
    output << allSatellitesText(comparison.satellites());
}
