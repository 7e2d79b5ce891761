#include "export/JsonPlan.h"

#include "base/Characters.h"
#include "format/FieldText.h"

#include <rapidjson/internal/dtoa.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t realRoom = 40;

char* putNumber(char* out, const RTCM2_reader_s& reader, const void* record, unsigned index)
{
    const std::int64_t value = RTCM2_reader_integer(&reader, record, index);
    return reader.stored == RTCM2_STORED_U64 ? putUnsigned(out, static_cast<std::uint64_t>(value))
                                             : putSigned(out, value);
}

// What is no number in JSON becomes null. The shortest digits that give the same number again.
char* putReal(char* out, double value)
{
    if (!std::isfinite(value)) {
        std::memcpy(out, "null", 4);
        return out + 4;
    }
    return rapidjson::internal::dtoa(value, out);
}

// A satellite is a string; null stands for no quantity.
char* putJsonQuantity(char* out, const FieldModel& quantity, const void* record)
{
    const std::ptrdiff_t quote = quantity.isScaled() ? 0 : 1;
    *out = '"';
    char* const end = putQuantity(out + quote, quantity, record);
    if (end == out + quote) {
        std::memcpy(out, "null", 4);
        return out + 4;
    }
    *end = '"';
    return end + quote;
}

// Puts the brackets around members or elements that all begin with a comma.
char* putEnd(char* begin, char* out, char open, char close)
{
    *begin = open;
    out = std::max(out, begin + 1);
    *out = close;
    return out + 1;
}

void appendEnd(Text& text, std::size_t begin, char open, char close)
{
    if (text.size() == begin) {
        text.append(open);
    } else {
        text.replace(begin, open);
    }
    text.append(close);
}

}    // namespace

JsonPlan::JsonPlan(const std::vector<ChosenField>& chosen)
{
    for (const ChosenField& field : chosen) {
        members.push_back(memberFor(field));
        quick.push_back(quickOf(members.back()));
        room += std::max(members.back().key.size(), quick.back().key.size()) + realRoom;
    }
}

JsonPlan::Member JsonPlan::memberFor(const ChosenField& chosen)
{
    const FieldModel& field = *chosen.field;
    Member member{.field = &field,
                  .reader = field.reader,
                  .shape = field.isQuantity()         ? Shape::quantity
                           : field.element != nullptr ? Shape::elements
                           : field.isText()           ? Shape::text
                           : field.isRepeated()       ? Shape::numbers
                           : field.isReal()           ? Shape::real
                                                      : Shape::number,
                  .key = "," + jsonString(field.identifier) + ":"};
    if (member.shape == Shape::elements) {
        member.elements = parts.size();
        parts.emplace_back(chosen.parts);
    }
    if (field.isQuantity()) {
        return member;
    }
    for (const RTCM2_text_s& coded : codedTexts(field)) {
        member.meanings.emplace_back(coded.value, jsonString(coded.text));
    }
    return member;
}

JsonPlan::Quick JsonPlan::quickOf(const Member& member)
{
    const bool isQuick = !member.field->isOptional() && member.key.size() <= sizeof Quick::key;
    Quick quick{.key = {},
                .keyLength = static_cast<std::uint16_t>(member.key.size()),
                .offset = member.reader.offset,
                .stored = member.reader.stored,
                .isNumber = isQuick && member.shape == Shape::number &&
                            member.reader.stored != RTCM2_STORED_U64,
                .isQuantity = isQuick && member.shape == Shape::quantity};
    std::copy_n(member.key.begin(), std::min(member.key.size(), quick.key.size()),
                quick.key.begin());
    return quick;
}

void JsonPlan::appendValues(Text& text, const void* record) const
{
    text.end(putValues(text.room(roomFor(record)), record));
}

// Enough for the values of the record, and for what is overwritten behind them.
std::size_t JsonPlan::roomFor(const void* record) const
{
    std::size_t bytes = room;
    for (const Member& member : members) {
        if (member.shape == Shape::elements) {
            // Elements have no texts, runs or elements.
            bytes += member.field->count(record) * parts[member.elements].room;
        } else if (member.field->isRepeated()) {
            bytes += member.field->count(record) * (numberRoom + 1);
        }
    }
    return bytes;
}

char* JsonPlan::putValues(char* out, const void* record) const
{
    char* const begin = out;
    const char* const bytes = static_cast<const char*>(record);
    for (std::size_t i = 0; i < quick.size(); ++i) {
        const Quick& member = quick[i];
        if (member.isNumber) [[likely]] {
            std::memcpy(out, member.key.data(), member.key.size());
            out = putSigned(out + member.keyLength,
                            RTCM2_stored_integer(bytes + member.offset, member.stored));
        } else if (member.isQuantity) {
            std::memcpy(out, member.key.data(), member.key.size());
            out = putJsonQuantity(out + member.keyLength, *members[i].field, record);
        } else {
            out = putMember(out, members[i], record);
        }
    }
    return putEnd(begin, out, '{', '}');
}

char* JsonPlan::putMember(char* out, const Member& member, const void* record) const
{
    if (!RTCM2_reader_is_present(&member.reader, record)) {
        return out;
    }
    out = member.putKey(out);
    switch (member.shape) {
    case Shape::number:
        return putNumber(out, member.reader, record, 0);
    case Shape::real:
        return putReal(out, RTCM2_reader_real(&member.reader, record));
    case Shape::text:
        *out = '"';
        out = putJson(out + 1, member.field->characters(record));
        *out = '"';
        return out + 1;
    case Shape::quantity:
        return putJsonQuantity(out, *member.field, record);
    case Shape::numbers:
    case Shape::elements:
        break;
    }
    return putElements(out, member, record);
}

char* JsonPlan::putElements(char* out, const Member& member, const void* record) const
{
    char* const begin = out;
    const unsigned count = RTCM2_reader_count(&member.reader, record);
    const char* element =
        member.shape == Shape::elements ? RTCM2_reader_elements(&member.reader, record) : nullptr;
    for (unsigned i = 0; i < count; ++i) {
        *out++ = ',';
        if (member.shape == Shape::elements) {
            out = parts[member.elements].putValues(out, element);
            element += member.reader.stride;
        } else {
            out = putNumber(out, member.reader, record, i);
        }
    }
    return putEnd(begin, out, '[', ']');
}

bool JsonPlan::hasTexts() const
{
    return std::any_of(members.begin(), members.end(), [this](const Member& member) {
        return member.shape == Shape::elements
                   ? parts[member.elements].hasTexts()
                   : member.shape == Shape::text || !member.meanings.empty();
    });
}

void JsonPlan::appendTexts(Text& text, const void* record) const
{
    const std::size_t begin = text.size();
    for (const Member& member : members) {
        if (RTCM2_reader_is_present(&member.reader, record)) {
            appendTextsOf(text, member, record);
        }
    }
    appendEnd(text, begin, '{', '}');
}

void JsonPlan::appendTextsOf(Text& text, const Member& member, const void* record) const
{
    if (member.shape == Shape::text) {
        const std::string_view characters = upToFirstNul(member.field->characters(record));
        text.append(member.key);
        text.append('"');
        text.end(putJson(text.room(jsonCharacterRoom * characters.size()), characters));
        text.append('"');
    } else if (member.shape == Shape::elements) {
        if (parts[member.elements].hasTexts() && member.field->count(record) > 0) {
            appendElementTexts(text, member, record);
        }
    } else if (!member.meanings.empty()) {
        appendMeanings(text, member, record);
    }
}

void JsonPlan::appendElementTexts(Text& text, const Member& member, const void* record) const
{
    text.append(member.key);
    const std::size_t begin = text.size();
    member.field->eachElement(record, [&](const void* element) {
        text.append(',');
        parts[member.elements].appendTexts(text, element);
    });
    appendEnd(text, begin, '[', ']');
}

// Nothing when no value has a text; beside values that have one stand nulls for the others.
void JsonPlan::appendMeanings(Text& text, const Member& member, const void* record) const
{
    const std::size_t begin = text.size();
    text.append(member.key);
    const std::size_t values = text.size();
    bool hasMeaning = false;
    const unsigned count = member.field->count(record);
    for (unsigned i = 0; i < count; ++i) {
        const std::string* const meaning =
            member.meaningOf(RTCM2_reader_integer(&member.reader, record, i));
        hasMeaning = hasMeaning || meaning != nullptr;
        if (member.shape == Shape::numbers) {
            text.append(',');
        }
        text.append(meaning != nullptr ? std::string_view(*meaning) : "null");
    }
    if (!hasMeaning) {
        text.cut(begin);
    } else if (member.shape == Shape::numbers) {
        appendEnd(text, values, '[', ']');
    }
}

const std::string* JsonPlan::Member::meaningOf(std::int64_t value) const
{
    const auto found = std::find_if(meanings.begin(), meanings.end(),
                                    [&](const auto& meaning) { return meaning.first == value; });
    return found != meanings.end() ? &found->second : nullptr;
}
