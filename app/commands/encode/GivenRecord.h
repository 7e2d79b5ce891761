// A record as a JSON object gives it.
#pragma once

#include "RTCM2_format.h"
#include "commands/encode/KindNames.h"

#include <rapidjson/document.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What is wrong, beginning with the member: "Corrections[1].PRC: is missing". Empty: nothing.
using Problem = std::string;

// Writes what is given into a record, and compares it with a record that was decoded from what that
// one encoded to: whatever follows from other members shows there, and so does what contradicts it.
class GivenRecord {
public:
    using Value = rapidjson::Value;

    explicit GivenRecord(const RTCM2_kind_s& kind) : names(namesOf(kind)) {}

    // Finds the members that the object gives. It must live as long as they are asked for.
    [[nodiscard]] Problem read(const Value& object);

    // The value given for a member; null when none is.
    const Value* given(const RTCM2_member_s& member) const { return values[indexOf(member)]; }
    const std::string& nameOf(const RTCM2_member_s& member) const
    {
        return names.members[indexOf(member)];
    }

    // Writes all that does not follow from something else into an initialised record. A main record
    // has its number of data words.
    [[nodiscard]] Problem write(void* record) const;

    // Whether all members given are in the record that depend on this one, which it holds.
    bool hasPlaceFor(const void* record, const RTCM2_member_s& condition) const;

    // What has become something else.
    [[nodiscard]] Problem compare(const void* decoded) const;

private:
    std::size_t indexOf(const RTCM2_member_s& member) const
    {
        return static_cast<std::size_t>(&member - names.row->members);
    }
    Problem wrong(const RTCM2_member_s& member, std::string_view reason) const;
    Problem wrongAt(const RTCM2_member_s& member, unsigned index, std::string_view reason) const;
    Problem wrongCount(const void* decoded, const RTCM2_member_s& member, std::size_t count,
                       const char* what) const;
    Problem contradicts(const void* decoded, const RTCM2_member_s& member, const std::string& given,
                        const std::string& became) const;
    std::string stateOf(const void* record, const RTCM2_member_s* member) const;

    const RTCM2_member_s* repeatedBy(const RTCM2_member_s& length) const;
    bool isFixed(const RTCM2_member_s& member) const;
    bool isImplied(const RTCM2_member_s& member) const;
    bool hasAllSlices(const RTCM2_member_s& whole) const;

    Problem writeMember(void* record, const RTCM2_member_s& member) const;
    Problem writeInteger(void* record, const RTCM2_member_s& member, unsigned index,
                         const Value& value) const;
    Problem writeText(void* record, const RTCM2_member_s& member, const Value& value) const;
    Problem writeBytes(void* record, const RTCM2_member_s& member, const Value& value) const;
    Problem writeElements(void* record, const RTCM2_member_s& member, const Value& value) const;
    void writeLength(void* record, const RTCM2_member_s& run, std::size_t length) const;

    Problem compareMember(const void* decoded, const RTCM2_member_s& member) const;
    Problem compareInteger(const void* decoded, const RTCM2_member_s& member,
                           const Value& value) const;
    Problem compareReal(const void* decoded, const RTCM2_member_s& member,
                        const Value& value) const;
    Problem compareText(const void* decoded, const RTCM2_member_s& member,
                        const Value& value) const;
    Problem compareElements(const void* decoded, const RTCM2_member_s& member,
                            const Value& value) const;

    const KindNames& names;
    std::vector<const Value*> values;    // in the order of the rows
};
