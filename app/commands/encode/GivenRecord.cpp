#include "commands/encode/GivenRecord.h"

#include "commands/encode/JsonValue.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace {

using rapidjson::Value;

constexpr unsigned roomForElements = 31 * 24;    // bits of all data words

std::span<const RTCM2_member_s> rowsOf(const KindNames& kind)
{
    return {kind.row->members, kind.row->member_count};
}

// So many of them, at least one.
std::uint64_t lowBits(unsigned count)
{
    return ~std::uint64_t{0} >> (64 - count);
}

bool isRepeated(const RTCM2_member_s& member)
{
    return member.role == RTCM2_ROLE_RUN || member.role == RTCM2_ROLE_ARRAY;
}

bool isText(const RTCM2_member_s& member)
{
    return member.role == RTCM2_ROLE_RUN && member.type == RTCM2_TYPE_CHARACTER;
}

std::string integerText(const Value& value)
{
    return value.IsInt64() ? std::to_string(value.GetInt64()) : std::to_string(value.GetUint64());
}

// The bits of an integer in two's complement.
std::int64_t bitsOf(const Value& value)
{
    return value.IsInt64() ? value.GetInt64() : static_cast<std::int64_t>(value.GetUint64());
}

// "(0 to 63)", of any width.
std::string rangeText(const RTCM2_member_s& member)
{
    const bool isSigned = member.type == RTCM2_TYPE_SIGNED || member.type == RTCM2_TYPE_CHARACTER;
    const std::uint64_t largest = lowBits(member.bits) >> static_cast<unsigned>(isSigned);
    const std::string smallest = isSigned ? "-" + std::to_string(largest + 1) : "0";
    return "(" + smallest + " to " + std::to_string(largest) + ")";
}

// The number of a record's member, as people read it.
std::string numberText(const void* record, const RTCM2_member_s& member)
{
    std::int64_t value = 0;
    RTCM2_read_integer(record, &member, 0, &value);
    return member.type == RTCM2_TYPE_UNSIGNED ? std::to_string(static_cast<std::uint64_t>(value))
                                              : std::to_string(value);
}

}    // namespace

Problem GivenRecord::read(const Value& object)
{
    values.assign(names.members.size(), nullptr);
    std::size_t likeliest = 0;
    for (const auto& [name, value] : object.GetObject()) {
        const auto index = names.find(textOf(name), likeliest);
        if (!index) {
            return quoted(textOf(name)) + ": there is no such field";
        }
        if (values[*index] != nullptr) {
            return names.members[*index] + ": stands twice";
        }
        values[*index] = &value;
        likeliest = *index + 1;
    }
    return {};
}

Problem GivenRecord::wrong(const RTCM2_member_s& member, std::string_view reason) const
{
    return (nameOf(member) + ": ").append(reason);
}

Problem GivenRecord::wrongAt(const RTCM2_member_s& member, unsigned index,
                             std::string_view reason) const
{
    return (nameOf(member) + "[" + std::to_string(index) + "]").append(reason);
}

// The reason why a member is absent, or why it has to have a value: " where NAS is 3".
std::string GivenRecord::stateOf(const void* record, const RTCM2_member_s* member) const
{
    if (member == nullptr) {
        return {};
    }
    const std::string source = member->of != nullptr ? " (" + nameOf(*member->of) + ": " +
                                                           numberText(record, *member->of) + ")"
                                                     : std::string();
    return " where " + nameOf(*member) + " is " + numberText(record, *member) + source;
}

// The run or array whose length the member is; null when it is none.
const RTCM2_member_s* GivenRecord::repeatedBy(const RTCM2_member_s& length) const
{
    const auto rows = rowsOf(names);
    const auto found = std::find_if(
        rows.begin(), rows.end(), [&](const RTCM2_member_s& row) { return row.length == &length; });
    return found != rows.end() ? &*found : nullptr;
}

// Whether every message of the kind has the same value there.
bool GivenRecord::isFixed(const RTCM2_member_s& member) const
{
    return names.row->type >= 0 && (member.offset == offsetof(RTCM2_header_s, Preamble) ||
                                    member.offset == offsetof(RTCM2_header_s, Message_Type));
}

// Whether the value follows from something else, so that it need not be given.
bool GivenRecord::isImplied(const RTCM2_member_s& member) const
{
    if (isRepeated(member)) {    // it is empty if its length says so
        const RTCM2_member_s& length = *member.length;
        return given(length) != nullptr || (length.of != nullptr && given(*length.of) != nullptr);
    }
    const bool isWords =
        names.row->type >= 0 && member.offset == offsetof(RTCM2_header_s, No_Of_Data_Words);
    return member.role != RTCM2_ROLE_WIRE || isFixed(member) || isWords ||
           repeatedBy(member) != nullptr || hasAllSlices(member);
}

bool GivenRecord::hasAllSlices(const RTCM2_member_s& whole) const
{
    std::uint64_t bits = 0;
    for (const RTCM2_member_s& slice : rowsOf(names)) {
        if (slice.role == RTCM2_ROLE_SLICE && slice.of == &whole && given(slice) != nullptr) {
            bits |= lowBits(slice.bits) << slice.low;
        }
    }
    return bits == lowBits(whole.bits);
}

bool GivenRecord::hasPlaceFor(const void* record, const RTCM2_member_s& condition) const
{
    const auto rows = rowsOf(names);
    return std::all_of(rows.begin(), rows.end(), [&](const RTCM2_member_s& row) {
        return row.when != &condition || given(row) == nullptr ||
               RTCM2_is_present(record, &row) != 0;
    });
}

Problem GivenRecord::write(void* record) const
{
    for (const RTCM2_member_s& member : rowsOf(names)) {
        if (Problem problem = writeMember(record, member); !problem.empty()) {
            return problem;
        }
    }
    return {};
}

Problem GivenRecord::writeMember(void* record, const RTCM2_member_s& member) const
{
    const Value* const value = given(member);
    if (RTCM2_is_present(record, &member) == 0) {
        return value != nullptr ? wrong(member, "must be absent" + stateOf(record, member.when))
                                : Problem();
    }
    if (value == nullptr) {
        return isImplied(member) ? Problem()
                                 : wrong(member, "is missing" + stateOf(record, member.when));
    }
    if (member.role == RTCM2_ROLE_ARRAY) {
        return writeElements(record, member, *value);
    }
    if (member.role == RTCM2_ROLE_RUN) {
        return isText(member) ? writeText(record, member, *value)
                              : writeBytes(record, member, *value);
    }
    if (member.type == RTCM2_TYPE_REAL) {
        return value->IsNumber() ? Problem() : wrong(member, isNot(*value, "a number"));
    }
    const Problem problem = writeInteger(record, member, 0, *value);
    return problem.empty() ? problem : wrong(member, problem);
}

// What follows from something else cannot be written; whether it agrees shows in comparison.
Problem GivenRecord::writeInteger(void* record, const RTCM2_member_s& member, unsigned index,
                                  const Value& value) const
{
    if (!isInteger(value)) {
        return isNot(value, "an integer");
    }
    const bool isFollower =
        isFixed(member) || (member.role == RTCM2_ROLE_SLICE && given(*member.of) != nullptr);
    if (isFollower) {
        return {};
    }
    const bool fits64 = member.bits == 64 && member.type == RTCM2_TYPE_UNSIGNED ? value.IsUint64()
                                                                                : value.IsInt64();
    if (!fits64 ||
        RTCM2_write_integer(record, &member, index, bitsOf(value)) == RTCM2_ACCESS_RANGE) {
        return integerText(value) + " does not fit " + rangeText(member);
    }
    return {};
}

Problem GivenRecord::writeText(void* record, const RTCM2_member_s& member, const Value& value) const
{
    if (!value.IsString()) {
        return wrong(member, isNot(value, "a text"));
    }
    std::string characters;
    if (const std::size_t misfit = readLatin1(textOf(value), characters)) {
        return wrong(member, "character " + std::to_string(misfit) + " is above U+00FF");
    }
    if (characters.size() > member.limit) {
        return wrong(member, "more than " + std::to_string(member.limit) + " characters");
    }
    writeLength(record, member, characters.size());
    std::memcpy(static_cast<char*>(record) + member.offset, characters.data(), characters.size());
    return {};
}

Problem GivenRecord::writeBytes(void* record, const RTCM2_member_s& member,
                                const Value& value) const
{
    if (!value.IsArray()) {
        return wrong(member, isNot(value, "an array of integers"));
    }
    if (value.Size() > member.limit) {
        return wrong(member, "more than " + std::to_string(member.limit) + " bytes");
    }
    writeLength(record, member, value.Size());
    for (unsigned i = 0; i < value.Size(); ++i) {
        if (const Problem problem = writeInteger(record, member, i, value[i]); !problem.empty()) {
            return wrongAt(member, i, ": " + problem);
        }
    }
    return {};
}

// A run that fills the data words is at least as long as they say; what is not given is zero.
void GivenRecord::writeLength(void* record, const RTCM2_member_s& run, std::size_t length) const
{
    if (given(*run.length) == nullptr) {
        double derived = 0;
        RTCM2_derive(record, run.length, &derived);
        RTCM2_write_integer(
            record, run.length, 0,
            std::max(static_cast<std::int64_t>(length), static_cast<std::int64_t>(derived)));
    }
}

Problem GivenRecord::writeElements(void* record, const RTCM2_member_s& member,
                                   const Value& value) const
{
    if (!value.IsArray()) {
        return wrong(member, isNot(value, "an array of objects"));
    }
    const unsigned most = roomForElements / std::max<unsigned>(member.elements->bits, 1);
    if (value.Size() > most) {
        return wrong(member, "has " + std::to_string(value.Size()) +
                                 " elements; a message has room for " + std::to_string(most));
    }
    GivenRecord element(*member.elements);
    for (unsigned i = 0; i < value.Size(); ++i) {
        if (!value[i].IsObject()) {
            return wrongAt(member, i, ": " + isNot(value[i], "an object"));
        }
        Problem problem = element.read(value[i]);
        void* const target = problem.empty() ? RTCM2_append_element(record) : nullptr;
        if (target != nullptr) {
            problem = element.write(target);
        }
        if (!problem.empty()) {
            return wrongAt(member, i, "." + problem);
        }
    }
    return {};
}

Problem GivenRecord::compare(const void* decoded) const
{
    for (const RTCM2_member_s& member : rowsOf(names)) {
        if (Problem problem = compareMember(decoded, member); !problem.empty()) {
            return problem;
        }
    }
    return {};
}

Problem GivenRecord::compareMember(const void* decoded, const RTCM2_member_s& member) const
{
    const Value* const value = given(member);
    if (value == nullptr) {
        return isRepeated(member) && RTCM2_count(decoded, &member) > 0
                   ? wrong(member, "is missing" + stateOf(decoded, member.length))
                   : Problem();
    }
    if (isText(member)) {
        return compareText(decoded, member, *value);
    }
    if (isRepeated(member)) {
        return compareElements(decoded, member, *value);
    }
    return member.type == RTCM2_TYPE_REAL ? compareReal(decoded, member, *value)
                                          : compareInteger(decoded, member, *value);
}

Problem GivenRecord::compareInteger(const void* decoded, const RTCM2_member_s& member,
                                    const Value& value) const
{
    std::int64_t became = 0;
    RTCM2_read_integer(decoded, &member, 0, &became);
    return became == bitsOf(value)
               ? Problem()
               : contradicts(decoded, member, integerText(value), numberText(decoded, member));
}

Problem GivenRecord::compareReal(const void* decoded, const RTCM2_member_s& member,
                                 const Value& value) const
{
    double became = 0;
    RTCM2_read_real(decoded, &member, 0, &became);
    const double given = value.GetDouble();
    std::array<char, RTCM2_TEXT_ROOM> text{};
    RTCM2_read_text(decoded, &member, 0, text.data(), text.size());
    return !(given < became) && !(given > became)
               ? Problem()
               : contradicts(decoded, member, "what was given", text.data());
}

Problem GivenRecord::contradicts(const void* decoded, const RTCM2_member_s& member,
                                 const std::string& given, const std::string& became) const
{
    return wrong(member, given + " contradicts " + became + ", which " +
                             (member.of == nullptr ? "it always is"
                                                   : "follows where " + nameOf(*member.of) +
                                                         " is " + numberText(decoded, *member.of)));
}

// One NUL at the end of a text says no more than its length does, and a run that fills the data
// words ends with as many as it takes.
Problem GivenRecord::compareText(const void* decoded, const RTCM2_member_s& member,
                                 const Value& value) const
{
    std::string characters;
    readLatin1(textOf(value), characters);
    const std::string_view became(static_cast<const char*>(decoded) + member.offset,
                                  RTCM2_count(decoded, &member));
    const bool mayBePadded = member.length->role == RTCM2_ROLE_COUNT;
    const std::size_t longest = mayBePadded ? became.size() : characters.size() + 1;
    const bool agrees = became.size() <= longest && became.starts_with(characters) &&
                        became.find_first_not_of('\0', characters.size()) == std::string_view::npos;
    return agrees ? Problem() : wrongCount(decoded, member, characters.size(), "characters");
}

// Bytes can only be more or less than were given.
Problem GivenRecord::compareElements(const void* decoded, const RTCM2_member_s& member,
                                     const Value& value) const
{
    if (value.Size() != RTCM2_count(decoded, &member)) {
        return wrongCount(decoded, member, value.Size(), "elements");
    }
    if (member.role == RTCM2_ROLE_RUN) {
        return {};
    }
    GivenRecord element(*member.elements);
    for (unsigned i = 0; i < value.Size(); ++i) {
        Problem problem = element.read(value[i]);
        problem += element.compare(RTCM2_element(decoded, &member, i));
        if (!problem.empty()) {
            return wrongAt(member, i, "." + problem);
        }
    }
    return {};
}

Problem GivenRecord::wrongCount(const void* decoded, const RTCM2_member_s& member,
                                std::size_t count, const char* what) const
{
    return wrong(member,
                 "has " + std::to_string(count) + " " + what + stateOf(decoded, member.length));
}
