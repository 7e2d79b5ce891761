#include "commands/encode/GivenRecord.h"

#include "base/Names.h"
#include "base/NearestName.h"
#include "commands/encode/CodedValue.h"
#include "commands/encode/JsonValue.h"
#include "commands/encode/MainKind.h"
#include "framing/Frame.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

using rapidjson::Value;

constexpr unsigned roomForElements = framing::maxDataWords * framing::bytesPerWord * 8;    // bits

// Whether every message of the kind has the same value there.
bool isFixed(const RTCM2_member_s& member)
{
    return member.meaning == RTCM2_MEANS_PREAMBLE || member.meaning == RTCM2_MEANS_TYPE;
}

// What is wrong with the first of the items with which something is wrong.
template <class Items, class Function>
Problem firstProblem(Items&& items, Function problemOf)
{
    for (auto& item : items) {
        if (Problem problem = problemOf(item); !problem.empty()) {
            return problem;
        }
    }
    return {};
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

// " where Ns is 2 (No_Of_Data_Words is 4)": why a member is absent, or has so many values.
std::string stateOf(const void* record, const RTCM2_member_s* member)
{
    if (member == nullptr) {
        return {};
    }
    const auto is = [record](const RTCM2_member_s& row) {
        std::int64_t value = 0;
        RTCM2_read_integer(record, &row, 0, &value);
        return identifierOf(labelOf(row)) + " is " + std::to_string(value);
    };
    return " where " + is(*member) + (member->of != nullptr ? " (" + is(*member->of) + ")" : "");
}

// Whether so many values have become a run or an array of that length. One NUL at the end of a text
// says no more than its length does, and a text that fills the data words ends with as many as it
// takes.
bool isLength(std::size_t count, const RTCM2_member_s& member, std::size_t length)
{
    const unsigned padding = !isText(member)                           ? 0
                             : member.length->role == RTCM2_ROLE_COUNT ? member.limit
                                                                       : 1U;
    return length >= count && length - count <= padding;
}

Problem addInteger(const RTCM2_member_s& member, const Value& value,
                   std::vector<std::int64_t>& integers)
{
    if (!value.IsInt64() && !value.IsUint64()) {
        return "has to be an integer";
    }
    const bool isSigned = member.type == RTCM2_TYPE_SIGNED;
    const bool isNegative = !value.IsUint64();
    const std::uint64_t largest = lowBits(member.bits) >> static_cast<unsigned>(isSigned);
    integers.push_back(isNegative ? value.GetInt64()
                                  : static_cast<std::int64_t>(value.GetUint64()));
    const auto bits = static_cast<std::uint64_t>(integers.back());
    if (isNegative ? isSigned && ~bits <= largest : bits <= largest) {
        return {};
    }
    return (isNegative ? std::to_string(integers.back()) : std::to_string(bits)) +
           " does not fit (" + (isSigned ? "-" + std::to_string(largest + 1) : "0") + " to " +
           std::to_string(largest) + ")";
}

// Takes the integers given for a member: one, bytes, or the characters of a text.
Problem readIntegers(const RTCM2_member_s& member, const Value& value,
                     std::vector<std::int64_t>& integers)
{
    if (member.type == RTCM2_TYPE_REAL) {
        return value.IsNumber() ? "" : "has to be a number";
    }
    if (isText(member)) {
        return value.IsString() ? readLatin1(textOf(value), integers) : "has to be a text";
    }
    if (member.role != RTCM2_ROLE_RUN) {
        return value.IsString() ? readCoded(member, textOf(value), integers)
                                : addInteger(member, value, integers);
    }
    if (!value.IsArray()) {
        return "has to be an array of integers";
    }
    return firstProblem(value.GetArray(), [&](const Value& element) {
        return addInteger(member, element, integers);
    });
}

}    // namespace

bool isImplied(const RTCM2_kind_s& kind, const RTCM2_member_s& member)
{
    if (member.role != RTCM2_ROLE_WIRE) {
        return member.length == nullptr;
    }
    const std::span rows(kind.members, kind.member_count);
    const bool isLength = std::any_of(
        rows.begin(), rows.end(), [&](const RTCM2_member_s& row) { return row.length == &member; });
    return isLength || member.meaning == RTCM2_MEANS_WORDS || isFixed(member);
}

Problem GivenRecord::read(const Value& object)
{
    std::size_t likeliest = 0;
    for (const auto& [name, value] : object.GetObject()) {
        const std::size_t index = find(textOf(name), likeliest);
        if (index == rows.size()) {
            return noSuchField(textOf(name));
        }
        if (entries[index].value != nullptr) {
            return wrong(rows[index], "stands twice");
        }
        entries[index].value = &value;
        if (Problem problem = readMember(rows[index], entries[index]); !problem.empty()) {
            return problem;
        }
        likeliest = index + 1;
    }
    return {};
}

Problem GivenRecord::readMember(const RTCM2_member_s& member, Entry& entry)
{
    if (member.role == RTCM2_ROLE_ARRAY) {
        return readElements(member, *entry.value);
    }
    Problem problem = readIntegers(member, *entry.value, entry.integers);
    if (problem.empty() && member.role == RTCM2_ROLE_RUN && entry.integers.size() > member.limit) {
        problem = "has " + std::to_string(entry.integers.size()) + " values, and room for " +
                  std::to_string(member.limit);
    }
    return problem.empty() ? problem : wrong(member, problem);
}

// The member of this identifier or name, by its index; one past the last when there is none.
std::size_t GivenRecord::find(std::string_view name, std::size_t likeliest) const
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::size_t candidate = (likeliest + i) % rows.size();
        if (name == rows[candidate].name || sameName(name, labelOf(rows[candidate]))) {
            return candidate;
        }
    }
    return rows.size();
}

Problem GivenRecord::readElements(const RTCM2_member_s& array, const Value& value)
{
    const unsigned most = roomForElements / std::max<unsigned>(array.elements->bits, 1);
    if (!value.IsArray() || value.Size() > most) {
        return wrong(array, "has to be an array of at most " + std::to_string(most) + " objects");
    }
    const std::string name = path + identifierOf(labelOf(array)) + "[";
    return firstProblem(value.GetArray(), [&](const Value& element) {
        const std::string place = name + std::to_string(elements.size()) + "]";
        return element.IsObject()
                   ? elements.emplace_back(*array.elements, place + ".").read(element)
                   : place + ": is no object";
    });
}

Problem GivenRecord::noSuchField(std::string_view name) const
{
    std::vector<std::string> names;
    for (const RTCM2_member_s& row : rows) {
        names.push_back(identifierOf(labelOf(row)));
        if (row.quantity != nullptr && sameName(name, row.quantity->name)) {
            return path + quoted(name) + ": is no raw value; in its place give " + names.back() +
                   ", the integer that stands in the message";
        }
    }
    const std::string meant = suggestion(nearestNames(name, names));
    return path + quoted(name) + ": there is no such field" + (meant.empty() ? "" : "; " + meant);
}

Problem GivenRecord::wrong(const RTCM2_member_s& member, std::string_view reason) const
{
    return (path + identifierOf(labelOf(member)) + ": ").append(reason);
}

Problem GivenRecord::contradicts(const void* decoded, const RTCM2_member_s& member,
                                 const std::string& given, const std::string& became) const
{
    return wrong(member, given + " contradicts " + became + ", which " +
                             (member.of != nullptr ? "follows" + stateOf(decoded, member.of)
                                                   : "it always is"));
}

bool GivenRecord::hasAllSlices(const RTCM2_member_s& whole) const
{
    std::uint64_t bits = 0;
    for (const RTCM2_member_s& slice : rows) {
        if (slice.role == RTCM2_ROLE_SLICE && slice.of == &whole && given(slice) != nullptr) {
            bits |= lowBits(slice.bits) << slice.low;
        }
    }
    return bits != 0 && bits == lowBits(whole.bits);
}

bool GivenRecord::hasPlaceFor(const void* record, const RTCM2_member_s& condition) const
{
    return std::all_of(rows.begin(), rows.end(), [&](const RTCM2_member_s& row) {
        return row.when != &condition || given(row) == nullptr ||
               RTCM2_is_present(record, &row) != 0;
    });
}

Problem GivenRecord::write(void* record) const
{
    return firstProblem(rows,
                        [&](const RTCM2_member_s& member) { return writeMember(record, member); });
}

Problem GivenRecord::writeMember(void* record, const RTCM2_member_s& member) const
{
    const bool isPresent = RTCM2_is_present(record, &member) != 0;
    if (given(member) == nullptr) {
        return !isPresent || isImplied(kind, member) || hasAllSlices(member)
                   ? Problem()
                   : wrong(member, "is missing" + stateOf(record, member.when));
    }
    if (!isPresent) {
        return wrong(member, "must be absent" + stateOf(record, member.when));
    }
    if (member.role == RTCM2_ROLE_ARRAY) {
        return firstProblem(elements, [&](const GivenRecord& element) {
            void* const target = RTCM2_append_element(record);
            return target != nullptr ? element.write(target) : wrong(member, "no room for all");
        });
    }
    const std::vector<std::int64_t>& integers = entryOf(member).integers;
    // A run that fills the data words is at least as long as they say; what is not given is zero.
    if (member.role == RTCM2_ROLE_RUN && given(*member.length) == nullptr) {
        double derived = 0;
        RTCM2_derive(record, member.length, &derived);
        const double length = std::max(derived, static_cast<double>(integers.size()));
        RTCM2_write_integer(record, member.length, 0, static_cast<std::int64_t>(length));
    }
    // What follows from something else cannot be written, and a part of a whole that is given need
    // not be; whether they agree shows in comparison.
    if (!isFixed(member) && (member.role != RTCM2_ROLE_SLICE || given(*member.of) == nullptr)) {
        for (std::uint32_t i = 0; i < integers.size(); ++i) {
            RTCM2_write_integer(record, &member, i, integers[i]);
        }
    }
    return {};
}

Problem GivenRecord::compare(const void* decoded) const
{
    return firstProblem(rows, [&](const RTCM2_member_s& member) {
        return given(member) != nullptr ? compareMember(decoded, member) : Problem();
    });
}

Problem GivenRecord::compareMember(const void* decoded, const RTCM2_member_s& member) const
{
    const auto& [value, integers] = entryOf(member);
    if (member.type == RTCM2_TYPE_REAL) {
        double became = 0;
        RTCM2_read_real(decoded, &member, 0, &became);
        const bool differs = value->GetDouble() < became || value->GetDouble() > became;
        return differs ? contradicts(decoded, member, "what is given", std::to_string(became))
                       : Problem();
    }
    const std::size_t count = member.role == RTCM2_ROLE_ARRAY ? elements.size() : integers.size();
    if (member.length != nullptr && !isLength(count, member, RTCM2_count(decoded, &member))) {
        return wrong(member, "has " + std::to_string(count) +
                                 (isText(member) ? " characters" : " elements") +
                                 stateOf(decoded, member.length));
    }
    std::uint32_t index = 0;
    if (member.role == RTCM2_ROLE_ARRAY) {
        return firstProblem(elements, [&](const GivenRecord& element) {
            return element.compare(RTCM2_element(decoded, &member, index++));
        });
    }
    return firstProblem(integers, [&](std::int64_t integer) {
        std::int64_t became = 0;
        RTCM2_read_integer(decoded, &member, index++, &became);
        return became == integer
                   ? Problem()
                   : contradicts(decoded, member, std::to_string(integer), std::to_string(became));
    });
}
