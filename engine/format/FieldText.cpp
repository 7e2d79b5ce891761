#include "format/FieldText.h"

#include "base/Characters.h"
#include "base/Terminal.h"

#include <charconv>

namespace {

constexpr const char* doNotUse = "DoNotUse";

bool meansDoNotUse(const FieldModel& field, std::int64_t value)
{
    return field.row->has_do_not_use != 0 && value == field.row->do_not_use;
}

void appendText(Text& text, const FieldModel& field, const void* record)
{
    std::string utf8;
    appendUtf8(utf8, upToFirstNul(field.characters(record)));
    text.append(printable(utf8));
}

void appendBytes(Text& text, const FieldModel& field, const void* record)
{
    const unsigned count = field.count(record);
    for (unsigned i = 0; i < count; ++i) {
        if (i > 0 && i % 4 == 0) {
            text.append(' ');
        }
        appendPlain(text, field, RTCM2_reader_integer(&field.reader, record, i));
    }
}

void appendElements(Text& text, unsigned count)
{
    for (unsigned i = 0; i < count; ++i) {
        text.append(i == 0 ? "submsg" : " submsg");
    }
}

void appendUnit(Text& text, const FieldModel& field)
{
    if (!field.unit.empty()) {
        text.append(' ');
        text.append(field.unit);
    }
}

void appendInterpretedValue(Text& text, const FieldModel& field, std::int64_t value, bool withUnit)
{
    if (const char* meaning = meaningOf(field, value)) {
        text.append(meaning);
    } else {
        appendPlain(text, field, value);
    }
    if (withUnit) {
        appendUnit(text, field);
    }
}

// Of all records that have the field, separated by blanks.
template <class Append>
void appendAll(Text& text, const FieldPath& path, const void* record, Append append)
{
    bool isFirst = true;
    path.anyRecord(record, [&](const void* holder) {
        if (!isFirst) {
            text.append(' ');
        }
        isFirst = false;
        append(path.last(), holder);
        return false;
    });
}

bool isShownAsHex(const FieldModel& field, const void* record, bool isInterpreted)
{
    if (field.row->type != RTCM2_TYPE_BYTE || field.isQuantity() || field.count(record) == 0) {
        return false;
    }
    const std::int64_t value = RTCM2_reader_integer(&field.reader, record, 0);
    return meaningOf(field, value) == nullptr ||
           !(isInterpreted || (meansDoNotUse(field, value) && !field.isRepeated()));
}

}    // namespace

void appendPlain(Text& text, const FieldModel& field, std::int64_t value)
{
    char* const out = text.room(numberRoom);
    switch (field.row->type) {
    case RTCM2_TYPE_BYTE:
        out[0] = "0123456789abcdef"[value >> 4 & 15];
        out[1] = "0123456789abcdef"[value & 15];
        return text.end(out + 2);
    case RTCM2_TYPE_SIGNED:
        return text.end(putSigned(out, value));
    default:
        return text.end(putUnsigned(out, static_cast<std::uint64_t>(value)));
    }
}

void appendNumber(Text& text, const FieldModel& field, std::int64_t value)
{
    text.append(field.row->type == RTCM2_TYPE_BYTE ? "0x" : "");
    appendPlain(text, field, value);
}

char* putQuantity(char* out, const FieldModel& quantity, const void* record)
{
    RTCM2_decimal_s value;
    if (RTCM2_reader_quantity(&*quantity.quantity, record, &value) != RTCM2_ACCESS_DONE) {
        return out;
    }
    const RTCM2_system_s* const system = quantity.isScaled() ? nullptr : RTCM2_system_of(record);
    return out + RTCM2_quantity_text(quantity.row->quantity, system, &value, out);
}

bool appendQuantity(Text& text, const FieldModel& quantity, const void* record)
{
    if (!quantity.isPresent(record)) {
        return false;
    }
    char* const out = text.room(RTCM2_QUANTITY_ROOM);
    char* const end = putQuantity(out, quantity, record);
    text.end(end);
    return end != out;
}

const char* meaningOf(const FieldModel& field, std::int64_t value)
{
    return meansDoNotUse(field, value) ? doNotUse : RTCM2_text_of(field.row, value);
}

std::vector<RTCM2_text_s> codedTexts(const RTCM2_member_s& row)
{
    std::vector<RTCM2_text_s> texts;
    if (row.has_do_not_use != 0) {
        texts.push_back({row.do_not_use, doNotUse});
    }
    for (unsigned i = 0; i < row.text_count; ++i) {
        texts.push_back(row.texts[i]);
    }
    return texts;
}

void appendReal(Text& text, double value)
{
    constexpr std::size_t most = 400;    // of the largest number
    char* const out = text.room(most);
    text.end(std::to_chars(out, out + most, value, std::chars_format::fixed, 6).ptr);
}

void appendRaw(Text& text, const FieldModel& field, const void* record)
{
    if (field.count(record) == 0) {
        return;
    }
    if (field.element != nullptr) {
        appendElements(text, field.count(record));
    } else if (field.isQuantity()) {
        appendQuantity(text, field, record);
    } else if (field.isText()) {
        appendText(text, field, record);
    } else if (field.isRepeated()) {
        appendBytes(text, field, record);
    } else if (field.isReal()) {
        appendReal(text, RTCM2_reader_real(&field.reader, record));
    } else if (const std::int64_t value = RTCM2_reader_integer(&field.reader, record, 0);
               meansDoNotUse(field, value)) {
        text.append(doNotUse);
    } else {
        appendPlain(text, field, value);
    }
}

void appendInterpreted(Text& text, const FieldModel& field, const void* record, bool withUnit)
{
    const unsigned count = field.count(record);
    if (field.element != nullptr) {
        appendUnsigned(text, count);
        text.append(" x ");
        text.append(field.element->name);
    } else if (field.isQuantity()) {
        if (appendQuantity(text, field, record) && withUnit) {
            appendUnit(text, field);
        }
    } else if (field.isText()) {
        appendText(text, field, record);
    } else if (field.isReal()) {
        appendReal(text, RTCM2_reader_real(&field.reader, record));
        if (withUnit) {
            appendUnit(text, field);
        }
    } else {
        for (unsigned i = 0; i < count; ++i) {
            if (i > 0) {
                text.append(' ');
            }
            appendInterpretedValue(text, field, RTCM2_reader_integer(&field.reader, record, i),
                                   withUnit);
        }
    }
}

void appendColumn(Text& text, const FieldPath& path, const void* record, bool isInterpreted)
{
    appendAll(text, path, record, [&](const FieldModel& field, const void* holder) {
        if (isShownAsHex(field, holder, isInterpreted)) {
            text.append("0x");
        }
        isInterpreted ? appendInterpreted(text, field, holder, false)
                      : appendRaw(text, field, holder);
    });
}
