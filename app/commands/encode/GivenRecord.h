// A record as a JSON object gives it.
#pragma once

#include "RTCM2_format.h"

#include <rapidjson/document.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The main kind of this name or identifier; null when there is none.
const RTCM2_kind_s* findMainKind(const std::string& name);

// The identifier of a kind's member.
const std::string& nameOf(const RTCM2_kind_s& kind, std::size_t member);

// What is wrong, beginning with the member: "Corrections[1].PRC: is missing". Empty: nothing.
using Problem = std::string;

// Writes what is given into a record, and compares it with a record that was decoded from what that
// one encoded to: whatever follows from other members shows there, and so does what contradicts it.
class GivenRecord {
public:
    using Value = rapidjson::Value;

    explicit GivenRecord(const RTCM2_kind_s& recordKind)
        : kind(recordKind), rows(recordKind.members, recordKind.member_count)
    {
    }

    // Finds the members that the object gives. It must live as long as they are asked for.
    [[nodiscard]] Problem read(const Value& object);

    // The value given for a member; null when none is.
    const Value* given(const RTCM2_member_s& member) const { return values[indexOf(member)]; }

    // Whether all members given are in the record that depend on this one, which it holds.
    bool hasPlaceFor(const void* record, const RTCM2_member_s& condition) const;

    // Writes all that does not follow from something else into an initialised record. A main record
    // has its number of data words.
    [[nodiscard]] Problem write(void* record);

    // What has become something else. All that is given was written without a problem before.
    [[nodiscard]] Problem compare(const void* decoded);

private:
    std::size_t indexOf(const RTCM2_member_s& member) const
    {
        return static_cast<std::size_t>(&member - rows.data());
    }
    const std::string& nameOf(const RTCM2_member_s& member) const
    {
        return ::nameOf(kind, indexOf(member));
    }
    std::size_t find(std::string_view name, std::size_t likeliest) const;
    Problem wrong(const RTCM2_member_s& member, std::string_view reason) const;
    Problem contradicts(const void* decoded, const RTCM2_member_s& member, const std::string& given,
                        const std::string& became) const;
    std::string stateOf(const void* record, const RTCM2_member_s* member) const;

    bool isInHeader(const RTCM2_member_s& member, std::size_t offset) const;
    bool isFixed(const RTCM2_member_s& member) const;
    bool isImplied(const RTCM2_member_s& member) const;
    bool hasAllSlices(const RTCM2_member_s& whole) const;

    Problem readNumbers(const RTCM2_member_s& member, const Value& value);
    Problem addNumber(const RTCM2_member_s& member, const Value& value);
    template <class Function>
    Problem eachElement(const RTCM2_member_s& member, const Value& value, Function function) const;

    Problem writeMember(void* record, const RTCM2_member_s& member);
    Problem writeNumbers(void* record, const RTCM2_member_s& member) const;
    void writeLength(void* record, const RTCM2_member_s& run) const;
    Problem writeElements(void* record, const RTCM2_member_s& member, const Value& value);

    Problem compareMember(const void* decoded, const RTCM2_member_s& member, const Value& value);
    Problem compareNumbers(const void* decoded, const RTCM2_member_s& member, const Value& value);
    Problem compareCount(const void* decoded, const RTCM2_member_s& member, std::size_t count,
                         unsigned padding) const;

    const RTCM2_kind_s& kind;
    std::span<const RTCM2_member_s> rows;
    std::vector<const Value*> values;     // in the order of the rows
    std::vector<std::int64_t> numbers;    // of the member that is at work
};
