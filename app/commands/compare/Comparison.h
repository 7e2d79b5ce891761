// What is the same and what differs in the messages of two inputs.
#pragma once

#include "commands/compare/FieldDifferences.h"
#include "commands/compare/MessageStore.h"
#include "commands/compare/SatelliteDifferences.h"
#include "session/TableRecord.h"

#include <array>
#include <map>
#include <optional>

// A value for people and programs.
struct ShownValue {
    std::string raw;
    std::string quantity;    // with its unit; empty where there is none
};

// Where the first input differs from the second for the first time.
struct FirstDifference {
    std::uint32_t a = 0;    // indices of the messages
    std::uint32_t b = 0;
    std::string field;       // empty: only bits behind the fields, or of unknown meaning
    unsigned element = 0;    // that the field is of, from 1; 0 for a field of the message
    std::array<ShownValue, 2> values;
};

class Comparison {
public:
    // By type and place in the message, with the field's name; the last ones of a type have none
    // and are the bits behind the fields.
    using FieldKey = std::tuple<unsigned, int, int, std::string>;

    // Everything given must outlive the comparison.
    Comparison(const FormatModel& model, const MessageStore& first, const MessageStore& second);

    const MessageStore& store(std::size_t side) const { return side == 0 ? a : b; }
    std::uint64_t equal() const { return equalCount; }
    std::uint64_t differing() const { return differingCount; }
    // Messages of one input that the other one lacks.
    const std::vector<std::uint32_t>& only(std::size_t side) const { return lonely[side]; }
    const std::optional<FirstDifference>& first() const { return firstFound; }
    const std::map<FieldKey, std::uint64_t>& fields() const { return fieldCounts; }
    const SatelliteDifferences& satellites() const { return satelliteDifferences; }
    bool isSame() const { return differingCount == 0 && lonely[0].empty() && lonely[1].empty(); }

    // The second of the hour of a message; empty where it is unknown.
    std::string secondOf(const MessageStore& of, std::uint32_t index) const;

private:
    void compare(std::uint32_t inA, std::uint32_t inB, bool isSameMessage);
    const KindModel* decodeBoth(std::uint32_t inA, std::uint32_t inB);
    void countFields(std::uint32_t inA, std::uint32_t inB, const KindModel* kind);
    void keepFirst(std::uint32_t inA, std::uint32_t inB, const KindModel* kind,
                   const FieldDifference* difference);

    const FormatModel& formatModel;
    const MessageStore& a;
    const MessageStore& b;
    std::uint64_t equalCount = 0;
    std::uint64_t differingCount = 0;
    std::array<std::vector<std::uint32_t>, 2> lonely;
    std::optional<FirstDifference> firstFound;
    std::map<FieldKey, std::uint64_t> fieldCounts;    // messages that differ in them
    SatelliteDifferences satelliteDifferences;
    TableRecord recordA;    // in work
    TableRecord recordB;
};
