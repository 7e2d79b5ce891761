// One record of the codec while it is being filled by member.
#pragma once

#include "RTCM2_format.h"
#include "commands/encode/Integer.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What is wrong with a record: which member, by its index, and why.
struct Problem {
    int member;
    std::string text;
};

// Refers to a record that somebody else owns.
class RecordDraft {
public:
    using Names = std::vector<std::string>;
    using Result = std::optional<Problem>;    // nothing: all is well

    RecordDraft() = default;
    // `record` is initialised, and zero but for that. `memberNames` must outlive the draft.
    RecordDraft(const RTCM2_kind_s& kindRow, const Names& memberNames, void* target);

    const std::string& name(int member) const { return names->at(index(member)); }
    const RTCM2_member_s& member(int member) const { return row->members[index(member)]; }
    int memberCount() const { return static_cast<int>(row->member_count); }
    // The index of one of the kind's rows; -1 for null.
    int indexOf(const RTCM2_member_s* member) const
    {
        return member != nullptr ? static_cast<int>(member - row->members) : -1;
    }
    int lengthOf(int member) const { return indexOf(this->member(member).length); }

    // Take what is given for a member. Each member may be given once.
    Result set(int member, Integer value);
    Result set(int member, double value);
    Result setText(int member, std::string_view characters);
    Result setByte(int member, Integer value);    // the next one of a run
    Result beginArray(int member);
    void addElement(int member) { ++given[index(member)].count; }

    bool isGiven(int member) const { return given[index(member)].isGiven; }
    // The characters, bytes or elements that were given.
    unsigned givenCount(int member) const { return given[index(member)].count; }
    Integer value(int member) const;
    void store(int member, Integer value);
    bool isPresent(int member) const;

    // Sets what was not given but follows: members from their parts, lengths from what they count.
    Result complete();
    // Computes counts, lookups and parts from what they follow from.
    void derive();
    // Whether what was given agrees with what follows from it, and nothing is missing. `isImplied`
    // names wire members that need not be given.
    Result check(const std::function<bool(int)>& isImplied) const;
    // The same for one count, lookup, constant or part of a member.
    Result checkDerived(int member) const;
    // Whether as many elements were given as the length member says. Texts may be shorter where the
    // length is computed, else by one NUL.
    bool agreesWithLength(int member) const;
    // Bits in the message of everything but the elements of an array.
    unsigned contentBits() const;

private:
    struct Given {
        bool isGiven = false;
        Integer number;
        double real = 0;
        unsigned count = 0;
    };

    static std::size_t index(int member) { return static_cast<std::size_t>(member); }
    char* place(int member) const
    {
        return static_cast<char*>(target) + this->member(member).offset;
    }
    Result take(int member);
    Result completeFromSlices(int member);
    Result completeLength(int member);
    Result checkWire(int member, const std::function<bool(int)>& isImplied) const;
    std::string sourceText(int member) const;
    std::string conditionText(int member) const;

    const RTCM2_kind_s* row = nullptr;
    const Names* names = nullptr;
    void* target = nullptr;
    std::vector<Given> given;
};
