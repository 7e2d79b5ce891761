#include "commands/export/CsvTable.h"

#include "FieldInfo.h"
#include "base/Characters.h"
#include "format/PackedText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

void appendQuoted(std::string& text, std::string_view cell)
{
    if (cell.find_first_of(",\"\r\n") == cell.npos) {
        text += cell;
        return;
    }
    text += '"';
    for (const char character : cell) {
        text.append(character == '"' ? 2 : 1, character);
    }
    text += '"';
}

template <class Number>
void appendNumber(std::string& text, Number number)
{
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
}

void appendValue(std::string& text, const FieldValue& value)
{
    switch (value.getKind()) {
    case FieldType::Byte:
    case FieldType::Unsigned:
        appendNumber(text, value.toUnsigned());
        break;
    case FieldType::Signed:
        appendNumber(text, value.toSigned());
        break;
    case FieldType::Float64:
        if (std::isfinite(value.toDouble())) {
            appendNumber(text, value.toDouble());
        }
        break;
    case FieldType::Character:
    case FieldType::SubMessage:
        break;
    }
}

// Many programs take a NUL for the end of a line; U+2400 pictures it.
void appendCharacters(std::string& text, std::string_view characters)
{
    for (std::size_t nul = characters.find('\0'); nul != characters.npos;
         nul = characters.find('\0')) {
        appendUtf8(text, characters.substr(0, nul));
        text += "\xE2\x90\x80";
        characters.remove_prefix(nul + 1);
    }
    appendUtf8(text, characters);
}

const FieldModel* elementField(const KindModel& kind, const std::string& name)
{
    const FieldModel* field = kind.field(name);
    if (field == nullptr || field->element == nullptr) {
        throw FieldChoiceError{"'" + name + "' is no field of " + kind.name +
                               " that holds sub-messages"};
    }
    return field;
}

}    // namespace

CsvTable::CsvTable(const KindModel& tableKind, const CsvOptions& csvOptions)
    : kind(tableKind), options(csvOptions)
{
    if (!options.rows.empty()) {
        rowField = elementField(kind, options.rows);
    }
    if (options.fields.empty()) {
        addAll(kind, false);
    } else {
        chooseColumns(options.fields);
    }
    const bool hasElementColumns = std::any_of(
        columns.begin(), columns.end(), [](const Column& column) { return column.ofElement; });
    if (rowField != nullptr && !hasElementColumns) {
        addAll(*rowField->element, true);
    }
}

void CsvTable::addColumn(const FieldModel& field, bool ofElement)
{
    columns.push_back({&field, ofElement, CodedTexts(field.info)});
}

void CsvTable::addAll(const KindModel& of, bool ofElement)
{
    for (const FieldModel& field : of.fields) {
        if (rowField == nullptr || field.element == nullptr) {
            addColumn(field, ofElement);
        }
    }
}

void CsvTable::chooseColumns(const std::vector<std::string>& names)
{
    for (const FieldPath& path : pathsOf(kind, names)) {
        if (path.part != nullptr && path.field != rowField) {
            throw FieldChoiceError{"'" + path.field->name + "." + path.part->name +
                                   "' belongs to sub-messages, which must be rows: --rows '" +
                                   path.field->name + "'"};
        }
        if (path.part != nullptr) {
            addColumn(*path.part, true);
        } else if (path.field == rowField) {
            addAll(*rowField->element, true);
        } else {
            addColumn(*path.field, false);
        }
    }
}

std::string CsvTable::header() const
{
    std::string text = options.withInput ? "Input,No.,Byte" : "No.,Byte";
    for (const Column& column : columns) {
        const std::string name =
            (column.ofElement ? rowField->name + "." : std::string()) + column.field->name;
        text += ',';
        appendQuoted(text, name);
        if (options.withTexts && !column.texts.isEmpty()) {
            text += ',';
            appendQuoted(text, name + " text");
        }
    }
    text += options.withHex ? ",Hex\n" : "\n";
    return text;
}

void CsvTable::appendRows(std::string& text, const Place& place, const Decoded& decoded)
{
    if (rowField == nullptr) {
        appendRow(text, place, decoded, nullptr);
        return;
    }
    const unsigned count = rowField->info->getCount(&decoded.message);
    for (unsigned i = 0; i < count; ++i) {
        appendRow(text, place, decoded,
                  rowField->info->getValueUnchecked(&decoded.message, i).toSubMessage());
    }
}

void CsvTable::appendRow(std::string& text, const Place& place, const Decoded& decoded,
                         const Message* element)
{
    if (options.withInput) {
        appendQuoted(text, place.input);
        text += ',';
    }
    appendNumber(text, place.frame.number);
    text += ',';
    appendNumber(text, place.frame.beginOffset);
    for (Column& column : columns) {
        appendCells(text, column, column.ofElement ? *element : decoded.message);
    }
    if (options.withHex) {
        text += ',';
        appendHex(text, place.frame.bytes());
    }
    text += '\n';
}

void CsvTable::appendCells(std::string& text, Column& column, const Message& message)
{
    text += ',';
    appendField(text, *column.field, message);
    if (!options.withTexts || column.texts.isEmpty()) {
        return;
    }
    text += ',';
    cell.clear();
    const unsigned count = column.field->info->getCount(&message);
    for (unsigned i = 0; i < count; ++i) {
        const FieldValue value = column.field->info->getValueUnchecked(&message, i);
        if (const std::string* meaning = column.texts.of(message, i, value)) {
            cell += (cell.empty() ? "" : " ") + *meaning;
        }
    }
    appendQuoted(text, cell);
}

void CsvTable::appendField(std::string& text, const FieldModel& field, const Message& message)
{
    if (field.element != nullptr) {
        appendNumber(text, field.info->getCount(&message));
    } else if (field.type == FieldType::Character) {
        readCharacters(*field.info, message, characters);
        cell.clear();
        appendCharacters(cell, withoutTerminator(characters));
        appendQuoted(text, cell);
    } else if (!field.optional && !field.repeated) {
        appendValue(text, field.info->getValueUnchecked(&message, 0));
    } else {
        appendNumbers(text, field, message);
    }
}

void CsvTable::appendNumbers(std::string& text, const FieldModel& field, const Message& message)
{
    const unsigned count = field.info->getCount(&message);
    for (unsigned i = 0; i < count; ++i) {
        text += i == 0 ? "" : " ";
        appendValue(text, field.info->getValueUnchecked(&message, i));
    }
}
