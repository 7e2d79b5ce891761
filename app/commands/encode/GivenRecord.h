// A record as a JSON object gives it.
#pragma once

#include "RTCM2_format.h"

#include <rapidjson/document.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What is wrong, beginning with the member: "Corrections[1].PRC: is missing". Empty: nothing.
using Problem = std::string;

// Whether the value follows from the rest of a record, so that it need not be given.
bool isImplied(const RTCM2_kind_s& kind, const RTCM2_member_s& member);

// Writes what is given into a record, and compares it with a record that was decoded from what that
// one encoded to: whatever follows from other members shows there, and so does what contradicts it.
class GivenRecord {
public:
    using Value = rapidjson::Value;

    // What is wrong with a member begins with `recordPath`: "Corrections[1]."
    explicit GivenRecord(const RTCM2_kind_s& recordKind, std::string recordPath = {})
        : kind(recordKind), rows(recordKind.members, recordKind.member_count),
          path(std::move(recordPath)), entries(rows.size())
    {
    }

    // Takes the members that the object gives, to be called once. The object must live as long.
    [[nodiscard]] Problem read(const Value& object);

    // The value given for a member; null when none is.
    const Value* given(const RTCM2_member_s& member) const { return entryOf(member).value; }

    // Whether all members given are in the record that depend on this one, which it holds.
    bool hasPlaceFor(const void* record, const RTCM2_member_s& condition) const;

    // Writes all that does not follow from something else into an initialised record. A main record
    // has its number of data words.
    [[nodiscard]] Problem write(void* record) const;

    // What has become something else. All that is given was written without a problem before.
    [[nodiscard]] Problem compare(const void* decoded) const;

private:
    struct Entry {
        const Value* value = nullptr;          // null: not given
        std::vector<std::int64_t> integers;    // of the value; of an array and a real number none
    };

    const Entry& entryOf(const RTCM2_member_s& member) const
    {
        return entries[static_cast<std::size_t>(&member - rows.data())];
    }
    std::size_t find(std::string_view name, std::size_t likeliest) const;
    Problem readMember(const RTCM2_member_s& member, Entry& entry);
    Problem readElements(const RTCM2_member_s& array, const Value& value);
    Problem noSuchField(std::string_view name) const;
    Problem wrong(const RTCM2_member_s& member, std::string_view reason) const;
    Problem contradicts(const void* decoded, const RTCM2_member_s& member, const std::string& given,
                        const std::string& became) const;

    bool hasAllSlices(const RTCM2_member_s& whole) const;

    Problem writeMember(void* record, const RTCM2_member_s& member) const;
    Problem compareMember(const void* decoded, const RTCM2_member_s& member) const;

    const RTCM2_kind_s& kind;
    std::span<const RTCM2_member_s> rows;
    std::string path;
    std::vector<Entry> entries;           // in the order of the rows
    std::vector<GivenRecord> elements;    // of the kind's array
};
