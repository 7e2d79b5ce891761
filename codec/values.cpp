// Values of members, read and written by their rows.
#include "quarn_bits.h"
#include "record_values.h"
#include "table.h"

#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

using namespace rtcm2;

namespace {

// Whether the member has an index-th value.
RTCM2_access_enum accessTo(const void* record, const RTCM2_member_s& member, std::uint32_t index)
{
    if (!isPresent(record, member)) {
        return RTCM2_ACCESS_ABSENT;
    }
    return index < elementCount(record, member) ? RTCM2_ACCESS_DONE : RTCM2_ACCESS_INDEX;
}

bool isInteger(const RTCM2_member_s& member)
{
    return member.type != RTCM2_TYPE_REAL && member.type != RTCM2_TYPE_RECORD;
}

// A run of characters, which is one text.
bool isText(const RTCM2_member_s& member)
{
    return member.type == RTCM2_TYPE_CHARACTER && member.role == RTCM2_ROLE_RUN;
}

// Whether the member's bits hold the value. Unsigned values of 64 bits are any 64 bits.
bool fits(const RTCM2_member_s& member, std::int64_t value)
{
    if (member.bits >= 64) {
        return true;
    }
    return value ==
           (isSigned(member)
                ? quarn::fromBits<std::int64_t>(
                      static_cast<std::uint64_t>(value) & quarn::lowMask(member.bits), member.bits)
                : static_cast<std::int64_t>(static_cast<std::uint64_t>(value) &
                                            quarn::lowMask(member.bits)));
}

// The members beside one of a record; none in a record of no kind.
std::span<const RTCM2_member_s> membersOf(const void* record)
{
    const RTCM2_kind_s* const kind = RTCM2_kind_of(record);
    return kind != nullptr ? rtcm2::membersOf(*kind) : std::span<const RTCM2_member_s>{};
}

double numberChosen(const void* record, const RTCM2_member_s& lookup)
{
    const std::int64_t value = integerOf(record, *lookup.of);
    const RTCM2_choice_s* const end = lookup.choices + lookup.choice_count;
    const RTCM2_choice_s* const found = std::find_if(
        lookup.choices, end, [value](const RTCM2_choice_s& c) { return c.value == value; });
    return found != end ? found->number : static_cast<double>(lookup.initial);
}

std::uint64_t derivedInteger(const void* record, const RTCM2_member_s& member)
{
    const auto source = static_cast<std::uint64_t>(integerOf(record, *member.of));
    const std::uint64_t width = quarn::lowMask(member.bits);
    return member.role == RTCM2_ROLE_SLICE
               ? source >> member.low & width
               : ((source * member.times - member.minus) & width) / member.over;
}

// Puts a number into what follows from a wire member that was written.
void followSource(void* record, const RTCM2_member_s& source)
{
    for (const RTCM2_member_s& member : membersOf(record)) {
        if (member.of != &source) {
            continue;
        }
        if (member.role == RTCM2_ROLE_SLICE) {
            putInteger(placeOf(record, member), member.size,
                       static_cast<std::int64_t>(derivedInteger(record, member)));
        } else if (member.role == RTCM2_ROLE_LOOKUP) {
            const double number = numberChosen(record, member);
            std::memcpy(placeOf(record, member), &number, sizeof number);
        }
    }
}

// Puts a slice into the member that it is a part of.
void foldInto(void* record, const RTCM2_member_s& slice)
{
    const RTCM2_member_s& whole = *slice.of;
    const auto mask = static_cast<std::int64_t>(quarn::lowMask(slice.bits) << slice.low);
    const std::int64_t value = integerOf(record, slice) << slice.low;
    putInteger(placeOf(record, whole), whole.size, (integerOf(record, whole) & ~mask) | value);
}

// The run whose length the member is, or null.
const RTCM2_member_s* runOfLength(const void* record, const RTCM2_member_s& length)
{
    for (const RTCM2_member_s& member : membersOf(record)) {
        if (member.length == &length) {
            return &member;
        }
    }
    return nullptr;
}

// Whether a caller may write the member, and up to which length.
RTCM2_access_enum permission(const void* record, const RTCM2_member_s& member, std::int64_t value)
{
    if (const RTCM2_member_s* const counted = runOfLength(record, member)) {
        if (counted->role == RTCM2_ROLE_ARRAY) {
            return RTCM2_ACCESS_DERIVED;
        }
        return value <= counted->limit ? RTCM2_ACCESS_DONE : RTCM2_ACCESS_RANGE;
    }
    const bool isWritten = member.role == RTCM2_ROLE_WIRE || member.role == RTCM2_ROLE_SLICE ||
                           member.role == RTCM2_ROLE_RUN;
    return isWritten ? RTCM2_ACCESS_DONE : RTCM2_ACCESS_DERIVED;
}

RTCM2_access_enum copyOut(std::string_view text, char* target, std::uint32_t room)
{
    if (text.size() >= room) {
        return RTCM2_ACCESS_RANGE;
    }
    std::memcpy(target, text.data(), text.size());
    target[text.size()] = '\0';
    return RTCM2_ACCESS_DONE;
}

std::string_view charactersOf(const void* record, const RTCM2_member_s& run)
{
    const std::string_view all(placeOf(record, run), elementCount(record, run));
    return all.substr(0, all.find('\0'));
}

// The decimal or hexadecimal digits of a value.
std::string_view digitsOf(const void* place, const RTCM2_member_s& member, char (&buffer)[32])
{
    if (member.type == RTCM2_TYPE_REAL) {
        const auto end = std::to_chars(buffer, std::end(buffer), valueAt<double>(place)).ptr;
        return {buffer, end};
    }
    const std::int64_t value = integerAt(place, member);
    if (member.type == RTCM2_TYPE_BYTE) {
        constexpr char digits[] = "0123456789abcdef";
        buffer[0] = digits[value >> 4 & 0xF];
        buffer[1] = digits[value & 0xF];
        return {buffer, 2};
    }
    const auto end =
        member.type == RTCM2_TYPE_UNSIGNED
            ? std::to_chars(buffer, std::end(buffer), static_cast<std::uint64_t>(value))
            : std::to_chars(buffer, std::end(buffer), value);
    return {buffer, end.ptr};
}

// The whole text as a number; of bytes in hexadecimal.
bool parseInteger(const RTCM2_member_s& member, std::string_view text, std::int64_t& value)
{
    const int base = member.type == RTCM2_TYPE_BYTE ? 16 : 10;
    const char* const end = text.data() + text.size();
    std::from_chars_result read{};
    if (member.type == RTCM2_TYPE_UNSIGNED) {
        std::uint64_t number = 0;
        read = std::from_chars(text.data(), end, number, base);
        value = static_cast<std::int64_t>(number);
        if (member.bits < 64 && value < 0) {
            return false;
        }
    } else {
        read = std::from_chars(text.data(), end, value, base);
    }
    return read.ec == std::errc() && read.ptr == end;
}

int32_t writeCharacters(void* record, const RTCM2_member_s& run, std::string_view text)
{
    if (text.size() > run.limit || !fits(*run.length, static_cast<std::int64_t>(text.size()))) {
        return RTCM2_ACCESS_RANGE;
    }
    char* const place = placeOf(record, run);
    std::memcpy(place, text.data(), text.size());
    place[text.size()] = '\0';
    putInteger(placeOf(record, *run.length), run.length->size,
               static_cast<std::int64_t>(text.size()));
    return RTCM2_ACCESS_DONE;
}

}    // namespace

int RTCM2_is_present(const void* record, const RTCM2_member_s* member)
{
    return isPresent(record, *member) ? 1 : 0;
}

uint32_t RTCM2_count(const void* record, const RTCM2_member_s* member)
{
    return isPresent(record, *member) ? elementCount(record, *member) : 0;
}

void* RTCM2_element(const void* record, const RTCM2_member_s* member, uint32_t index)
{
    if (member->role != RTCM2_ROLE_ARRAY || index >= elementCount(record, *member)) {
        return nullptr;
    }
    char* const elements = elementsOf(record, *member);
    return elements != nullptr ? elements + std::size_t{index} * member->elements->size : nullptr;
}

int32_t RTCM2_read_integer(const void* record, const RTCM2_member_s* member, uint32_t index,
                           int64_t* value)
{
    if (!isInteger(*member)) {
        return RTCM2_ACCESS_TYPE;
    }
    if (const RTCM2_access_enum access = accessTo(record, *member, index);
        access != RTCM2_ACCESS_DONE) {
        return access;
    }
    *value = integerAt(placeOf(record, *member) + std::size_t{index} * member->size, *member);
    return RTCM2_ACCESS_DONE;
}

int32_t RTCM2_read_real(const void* record, const RTCM2_member_s* member, uint32_t index,
                        double* value)
{
    if (member->type == RTCM2_TYPE_REAL) {
        const RTCM2_access_enum access = accessTo(record, *member, index);
        if (access == RTCM2_ACCESS_DONE) {
            *value = valueAt<double>(placeOf(record, *member));
        }
        return access;
    }
    int64_t integer = 0;
    const int32_t access = RTCM2_read_integer(record, member, index, &integer);
    if (access == RTCM2_ACCESS_DONE) {
        *value = member->type == RTCM2_TYPE_UNSIGNED
                     ? static_cast<double>(static_cast<std::uint64_t>(integer))
                     : static_cast<double>(integer);
    }
    return access;
}

int32_t RTCM2_read_text(const void* record, const RTCM2_member_s* member, uint32_t index,
                        char* text, uint32_t room)
{
    if (member->type == RTCM2_TYPE_RECORD) {
        return RTCM2_ACCESS_TYPE;
    }
    if (isText(*member)) {
        if (!isPresent(record, *member)) {
            return RTCM2_ACCESS_ABSENT;
        }
        return index == 0 ? copyOut(charactersOf(record, *member), text, room) : RTCM2_ACCESS_INDEX;
    }
    if (const RTCM2_access_enum access = accessTo(record, *member, index);
        access != RTCM2_ACCESS_DONE) {
        return access;
    }
    const char* const place = placeOf(record, *member) + std::size_t{index} * member->size;
    const char* const coded =
        isInteger(*member) ? RTCM2_text_of(member, integerAt(place, *member)) : nullptr;
    char digits[32];
    return copyOut(coded != nullptr ? coded : digitsOf(place, *member, digits), text, room);
}

int32_t RTCM2_write_integer(void* record, const RTCM2_member_s* member, uint32_t index,
                            int64_t value)
{
    if (!isInteger(*member)) {
        return member->type == RTCM2_TYPE_RECORD ? RTCM2_ACCESS_TYPE : RTCM2_ACCESS_DERIVED;
    }
    if (const RTCM2_access_enum access = accessTo(record, *member, index);
        access != RTCM2_ACCESS_DONE) {
        return access;
    }
    if (!fits(*member, value)) {
        return RTCM2_ACCESS_RANGE;
    }
    if (const RTCM2_access_enum allowed = permission(record, *member, value);
        allowed != RTCM2_ACCESS_DONE) {
        return allowed;
    }
    putInteger(placeOf(record, *member) + std::size_t{index} * member->size, member->size, value);
    if (member->role == RTCM2_ROLE_SLICE) {
        foldInto(record, *member);
    } else {
        followSource(record, *member);
    }
    return RTCM2_ACCESS_DONE;
}

int32_t RTCM2_write_real(void* record, const RTCM2_member_s* member, uint32_t index, double value)
{
    if (!isInteger(*member)) {
        return RTCM2_write_integer(record, member, index, 0);    // refuses it, whatever the value
    }
    constexpr double beyond = 18446744073709551616.0;    // 2 to the power of 64
    if (member->type == RTCM2_TYPE_UNSIGNED && member->bits == 64 && value >= beyond / 2 &&
        value < beyond) {
        return RTCM2_write_integer(record, member, index,
                                   static_cast<std::int64_t>(static_cast<std::uint64_t>(value)));
    }
    if (!(value >= -beyond / 2 && value < beyond / 2) || std::trunc(value) != value) {
        return RTCM2_ACCESS_RANGE;
    }
    return RTCM2_write_integer(record, member, index, static_cast<std::int64_t>(value));
}

int32_t RTCM2_write_text(void* record, const RTCM2_member_s* member, uint32_t index,
                         const char* text)
{
    if (isText(*member)) {
        if (!isPresent(record, *member)) {
            return RTCM2_ACCESS_ABSENT;
        }
        return index == 0 ? writeCharacters(record, *member, text)
                          : static_cast<int32_t>(RTCM2_ACCESS_INDEX);
    }
    for (uint32_t i = 0; i < member->text_count; ++i) {
        if (std::string_view(text) == member->texts[i].text) {
            return RTCM2_write_integer(record, member, index, member->texts[i].value);
        }
    }
    std::int64_t value = 0;
    if (isInteger(*member) && !parseInteger(*member, text, value)) {
        return RTCM2_ACCESS_RANGE;
    }
    return RTCM2_write_integer(record, member, index, value);
}

int32_t RTCM2_derive(const void* record, const RTCM2_member_s* member, double* value)
{
    if (member->of == nullptr) {
        return RTCM2_ACCESS_TYPE;
    }
    *value = member->role == RTCM2_ROLE_LOOKUP
                 ? numberChosen(record, *member)
                 : static_cast<double>(derivedInteger(record, *member));
    return RTCM2_ACCESS_DONE;
}
