#include "commands/encode/GivenRecord.h"

#include "base/Names.h"
#include "commands/encode/JsonValue.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace {

using rapidjson::Value;

constexpr unsigned roomForElements = 31 * 24;    // bits of all data words

using Rows = std::span<const RTCM2_member_s>;

// What people call a kind or a member: its name in code where it is not described.
template <class Row>
const char* labelOf(const Row& row)
{
    return *row.display != '\0' ? row.display : row.name;
}

// The identifiers of the members of all kinds, by the numbers of the kinds, from 1.
std::vector<std::vector<std::string>> allIdentifiers()
{
    std::vector<std::vector<std::string>> all(1);
    for (int number = 1; number <= RTCM2_last_kind(); ++number) {
        const RTCM2_kind_s& kind = *RTCM2_kind(number);
        std::vector<std::string>& identifiers = all.emplace_back();
        for (const RTCM2_member_s& member : Rows(kind.members, kind.member_count)) {
            identifiers.push_back(identifierOf(labelOf(member)));
        }
    }
    return all;
}

// So many of them, at least one.
std::uint64_t lowBits(unsigned count)
{
    return ~std::uint64_t{0} >> (64 - count);
}

bool isText(const RTCM2_member_s& member)
{
    return member.role == RTCM2_ROLE_RUN && member.type == RTCM2_TYPE_CHARACTER;
}

// The member's value in the record, for people.
std::string numberText(const void* record, const RTCM2_member_s& member)
{
    std::int64_t value = 0;
    RTCM2_read_integer(record, &member, 0, &value);
    return std::to_string(value);
}

std::string misfitText(const std::string& number, const RTCM2_member_s& member)
{
    const bool isSigned = member.type == RTCM2_TYPE_SIGNED;
    const std::uint64_t largest = lowBits(member.bits) >> static_cast<unsigned>(isSigned);
    const std::string smallest = isSigned ? "-" + std::to_string(largest + 1) : "0";
    return number + " does not fit (" + smallest + " to " + std::to_string(largest) + ")";
}

}    // namespace

const RTCM2_kind_s* findMainKind(const std::string& name)
{
    const RTCM2_kind_s* kind = RTCM2_find_kind(name.c_str());
    for (int i = 1; kind == nullptr && i <= RTCM2_last_kind(); ++i) {
        kind = sameName(labelOf(*RTCM2_kind(i)), name) ? RTCM2_kind(i) : nullptr;
    }
    return kind != nullptr && kind->type >= 0 ? kind : nullptr;
}

const std::string& nameOf(const RTCM2_kind_s& kind, std::size_t member)
{
    static const std::vector<std::vector<std::string>> identifiers = allIdentifiers();
    return identifiers[static_cast<std::size_t>(kind.kind)][member];
}

Problem GivenRecord::read(const Value& object)
{
    values.assign(rows.size(), nullptr);
    std::size_t likeliest = 0;
    for (const auto& [name, value] : object.GetObject()) {
        const std::size_t index = find(textOf(name), likeliest);
        if (index == rows.size()) {
            return quoted(textOf(name)) + ": there is no such field";
        }
        if (values[index] != nullptr) {
            return wrong(rows[index], "stands twice");
        }
        values[index] = &value;
        likeliest = index + 1;
    }
    return {};
}

// The member of this identifier or name, by its index; one past the last when there is none.
std::size_t GivenRecord::find(std::string_view name, std::size_t likeliest) const
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::size_t candidate = (likeliest + i) % rows.size();
        if (::nameOf(kind, candidate) == name) {
            return candidate;
        }
    }
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const RTCM2_member_s& row) {
        return sameName(labelOf(row), name);
    });
    return static_cast<std::size_t>(found - rows.begin());
}

Problem GivenRecord::wrong(const RTCM2_member_s& member, std::string_view reason) const
{
    return (nameOf(member) + ": ").append(reason);
}

// " where Ns is 2 (No_Of_Data_Words is 4)": why a member is absent, or has so many values.
std::string GivenRecord::stateOf(const void* record, const RTCM2_member_s* member) const
{
    if (member == nullptr) {
        return {};
    }
    const auto is = [&](const RTCM2_member_s& row) {
        return nameOf(row) + " is " + numberText(record, row);
    };
    return " where " + is(*member) + (member->of != nullptr ? " (" + is(*member->of) + ")" : "");
}

bool GivenRecord::isInHeader(const RTCM2_member_s& member, std::size_t offset) const
{
    return kind.type >= 0 && member.offset == offset;
}

// Whether the value follows from something else, so that it need not be given.
bool GivenRecord::isImplied(const RTCM2_member_s& member) const
{
    if (member.role != RTCM2_ROLE_WIRE) {
        return member.length == nullptr;
    }
    const bool isLength = std::any_of(
        rows.begin(), rows.end(), [&](const RTCM2_member_s& row) { return row.length == &member; });
    return isLength || isFixed(member) ||
           isInHeader(member, offsetof(RTCM2_header_s, No_Of_Data_Words)) || hasAllSlices(member);
}

// Whether every message of the kind has the same value there.
bool GivenRecord::isFixed(const RTCM2_member_s& member) const
{
    return isInHeader(member, offsetof(RTCM2_header_s, Preamble)) ||
           isInHeader(member, offsetof(RTCM2_header_s, Message_Type));
}

bool GivenRecord::hasAllSlices(const RTCM2_member_s& whole) const
{
    std::uint64_t bits = 0;
    for (const RTCM2_member_s& slice : rows) {
        if (slice.role == RTCM2_ROLE_SLICE && slice.of == &whole && given(slice) != nullptr) {
            bits |= lowBits(slice.bits) << slice.low;
        }
    }
    return bits == lowBits(whole.bits);
}

bool GivenRecord::hasPlaceFor(const void* record, const RTCM2_member_s& condition) const
{
    return std::all_of(rows.begin(), rows.end(), [&](const RTCM2_member_s& row) {
        return row.when != &condition || given(row) == nullptr ||
               RTCM2_is_present(record, &row) != 0;
    });
}

Problem GivenRecord::write(void* record)
{
    Problem problem;
    for (std::size_t i = 0; problem.empty() && i < rows.size(); ++i) {
        problem = writeMember(record, rows[i]);
    }
    return problem;
}

Problem GivenRecord::writeMember(void* record, const RTCM2_member_s& member)
{
    const Value* const value = given(member);
    const bool isPresent = RTCM2_is_present(record, &member) != 0;
    if (value == nullptr) {
        return !isPresent || isImplied(member)
                   ? Problem()
                   : wrong(member, "is missing" + stateOf(record, member.when));
    }
    if (!isPresent) {
        return wrong(member, "must be absent" + stateOf(record, member.when));
    }
    if (member.role == RTCM2_ROLE_ARRAY) {
        return writeElements(record, member, *value);
    }
    if (member.type == RTCM2_TYPE_REAL) {
        return value->IsNumber() ? Problem() : wrong(member, "has to be a number");
    }
    if (const Problem problem = readNumbers(member, *value); !problem.empty()) {
        return wrong(member, problem);
    }
    // A part of a whole that is given is compared only.
    const bool isWritten =
        !isFixed(member) && (member.role != RTCM2_ROLE_SLICE || given(*member.of) == nullptr);
    return isWritten ? writeNumbers(record, member) : Problem();
}

// Takes the numbers given: one, bytes, or the characters of a text.
Problem GivenRecord::readNumbers(const RTCM2_member_s& member, const Value& value)
{
    numbers.clear();
    if (isText(member)) {
        return value.IsString() ? readLatin1(textOf(value), numbers) : "has to be a text";
    }
    if (member.role != RTCM2_ROLE_RUN) {
        return addNumber(member, value);
    }
    if (!value.IsArray()) {
        return "has to be an array of integers";
    }
    Problem problem;
    for (auto i = value.Begin(); problem.empty() && i != value.End(); ++i) {
        problem = addNumber(member, *i);
    }
    return problem;
}

Problem GivenRecord::addNumber(const RTCM2_member_s& member, const Value& value)
{
    if (!value.IsInt64() && !value.IsUint64()) {
        return "has to be an integer";
    }
    const bool isWide = member.bits == 64 && member.type == RTCM2_TYPE_UNSIGNED;
    if (isWide ? !value.IsUint64() : !value.IsInt64()) {
        return misfitText(value.IsInt64() ? std::to_string(value.GetInt64())
                                          : std::to_string(value.GetUint64()),
                          member);
    }
    numbers.push_back(isWide ? static_cast<std::int64_t>(value.GetUint64()) : value.GetInt64());
    return {};
}

// What follows from something else cannot be written; whether it agrees shows in comparison.
Problem GivenRecord::writeNumbers(void* record, const RTCM2_member_s& member) const
{
    if (member.role == RTCM2_ROLE_RUN) {
        if (numbers.size() > member.limit) {
            return wrong(member, "has " + std::to_string(numbers.size()) +
                                     " values, and room for " + std::to_string(member.limit));
        }
        writeLength(record, member);
    }
    for (std::uint32_t i = 0; i < numbers.size(); ++i) {
        if (RTCM2_write_integer(record, &member, i, numbers[i]) == RTCM2_ACCESS_RANGE) {
            return wrong(member, misfitText(std::to_string(numbers[i]), member));
        }
    }
    return {};
}

// A run that fills the data words is at least as long as they say; what is not given is zero.
void GivenRecord::writeLength(void* record, const RTCM2_member_s& run) const
{
    if (given(*run.length) == nullptr) {
        double derived = 0;
        RTCM2_derive(record, run.length, &derived);
        RTCM2_write_integer(record, run.length, 0,
                            std::max(static_cast<std::int64_t>(numbers.size()),
                                     static_cast<std::int64_t>(derived)));
    }
}

Problem GivenRecord::writeElements(void* record, const RTCM2_member_s& member, const Value& value)
{
    const unsigned most = roomForElements / std::max<unsigned>(member.elements->bits, 1);
    if (!value.IsArray() || value.Size() > most) {
        return wrong(member, "has to be an array of at most " + std::to_string(most) + " objects");
    }
    return eachElement(member, value, [&](GivenRecord& element, std::uint32_t) {
        void* const target = RTCM2_append_element(record);
        return target != nullptr ? element.write(target) : Problem("no room for it");
    });
}

template <class Function>
Problem GivenRecord::eachElement(const RTCM2_member_s& member, const Value& value,
                                 Function function) const
{
    GivenRecord element(*member.elements);
    for (std::uint32_t i = 0; i < value.Size(); ++i) {
        Problem problem = value[i].IsObject() ? element.read(value[i]) : "is no object";
        if (problem.empty()) {
            problem = function(element, i);
        }
        if (!problem.empty()) {
            return nameOf(member) + "[" + std::to_string(i) + (value[i].IsObject() ? "]." : "]: ") +
                   problem;
        }
    }
    return {};
}

Problem GivenRecord::compare(const void* decoded)
{
    Problem problem;
    for (std::size_t i = 0; problem.empty() && i < rows.size(); ++i) {
        if (const Value* const value = given(rows[i])) {
            problem = compareMember(decoded, rows[i], *value);
        }
    }
    return problem;
}

Problem GivenRecord::compareMember(const void* decoded, const RTCM2_member_s& member,
                                   const Value& value)
{
    if (member.type == RTCM2_TYPE_REAL) {
        double became = 0;
        RTCM2_read_real(decoded, &member, 0, &became);
        const bool differs = value.GetDouble() < became || value.GetDouble() > became;
        return differs ? contradicts(decoded, member, "what is given", std::to_string(became))
                       : Problem();
    }
    if (member.role == RTCM2_ROLE_ARRAY) {
        const Problem problem = compareCount(decoded, member, value.Size(), 0);
        return !problem.empty() ? problem
                                : eachElement(member, value, [&](GivenRecord& element, auto i) {
                                      return element.compare(RTCM2_element(decoded, &member, i));
                                  });
    }
    return compareNumbers(decoded, member, value);
}

// One NUL at the end of a text says no more than its length does, and a text that fills the data
// words ends with as many as it takes.
Problem GivenRecord::compareNumbers(const void* decoded, const RTCM2_member_s& member,
                                    const Value& value)
{
    Problem problem = readNumbers(member, value);
    if (member.role == RTCM2_ROLE_RUN) {
        const bool mayBePadded = member.length->role == RTCM2_ROLE_COUNT;
        problem += compareCount(decoded, member, numbers.size(),
                                !isText(member) ? 0
                                : mayBePadded   ? member.limit
                                                : 1U);
    }
    for (std::uint32_t i = 0; problem.empty() && i < numbers.size(); ++i) {
        std::int64_t became = 0;
        RTCM2_read_integer(decoded, &member, i, &became);
        if (became != numbers[i]) {
            problem =
                contradicts(decoded, member, std::to_string(numbers[i]), std::to_string(became));
        }
    }
    return problem;
}

// `padding` is how many more values there may be than were given.
Problem GivenRecord::compareCount(const void* decoded, const RTCM2_member_s& member,
                                  std::size_t count, unsigned padding) const
{
    const std::size_t became = RTCM2_count(decoded, &member);
    return became >= count && became - count <= padding
               ? Problem()
               : wrong(member, "has " + std::to_string(count) +
                                   (isText(member) ? " characters" : " elements") +
                                   stateOf(decoded, member.length));
}

Problem GivenRecord::contradicts(const void* decoded, const RTCM2_member_s& member,
                                 const std::string& given, const std::string& became) const
{
    return wrong(member, given + " contradicts " + became + ", which " +
                             (member.of != nullptr ? "follows" + stateOf(decoded, member.of)
                                                   : "it always is"));
}
