#include "export/CsvTable.h"

#include "base/Characters.h"
#include "base/Terminal.h"
#include "format/FieldText.h"
#include "format/PackedText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

const FieldModel* elementField(const KindModel& kind, const std::string& name)
{
    const FieldModel* field = kind.field(name);
    if (field == nullptr || field->element == nullptr) {
        throw FieldPathError{"'" + name + "' is no field of " + kind.name +
                             " that holds sub-messages"};
    }
    return field;
}

// What a spreadsheet would run as a formula.
bool isFormula(std::string_view cell)
{
    return !cell.empty() && std::string_view("=+-@\t\r").find(cell[0]) != std::string_view::npos;
}

void appendInteger(Text& text, const FieldModel& field, const void* record, unsigned index)
{
    const std::int64_t value = RTCM2_reader_integer(&field.reader, record, index);
    char* const out = text.room(numberRoom);
    text.end(field.reader.stored == RTCM2_STORED_U64
                 ? putUnsigned(out, static_cast<std::uint64_t>(value))
                 : putSigned(out, value));
}

}    // namespace

CsvTable::CsvTable(const KindModel& tableKind, const CsvOptions& csvOptions)
    : kind(tableKind), options(csvOptions), withHex(options.withHex || kind.isUnknown)
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
    const bool isPlainNumber = !field.isQuantity() && !field.isRepeated() && !field.isOptional() &&
                               !field.isReal() && field.reader.stored != RTCM2_STORED_U64;
    const bool isPlainQuantity = field.isQuantity() && !field.isOptional();
    columns.push_back({&field, ofElement, isPlainNumber, isPlainQuantity});
}

void CsvTable::addAll(const KindModel& of, bool ofElement)
{
    for (const ChosenField& chosen : chosenFields(of, {}, options.values)) {
        if (rowField == nullptr || chosen.field->element == nullptr) {
            addColumn(*chosen.field, ofElement);
        }
    }
}

void CsvTable::chooseColumns(const std::vector<std::string>& names)
{
    for (const FieldPath& path : pathsOf(kind, names)) {
        if (path.part != nullptr && path.field != rowField) {
            throw FieldPathError{"'" + path.name() +
                                 "' belongs to sub-messages, which must be rows: --rows '" +
                                 path.field->name + "'"};
        }
        if (path.part == nullptr && path.field == rowField) {
            addAll(*rowField->element, true);
        } else {
            addColumn(path.last(), path.part != nullptr);
        }
    }
}

std::string CsvTable::header(const EnvelopeColumns& envelopes) const
{
    Text text;
    const auto append = [&](const std::string& name) {
        appendTextCell(text, name);
        text.append(options.separator);
    };
    if (options.withInput) {
        append("Input");
    }
    append("No.");
    append("Byte");
    envelopes.eachName([&](const char* name, const char*, std::size_t) { append(name); });
    for (const Column& column : columns) {
        const std::string name =
            (column.ofElement ? rowField->name + "." : std::string()) + column.field->name;
        append(name);
        if (options.withTexts && column.field->hasTexts()) {
            append(name + " text");
        }
    }
    if (withHex) {
        append("Hex");
    }
    text.cut(text.size() - 1);
    text.append('\n');
    return std::string(text.view());
}

void CsvTable::appendRows(Text& text, const std::string& input, const EnvelopeColumns& envelopes,
                          const Found& found) const
{
    const std::size_t start = text.size();
    appendBegin(text, input, envelopes, found);
    if (rowField == nullptr) {
        appendRow(text, found, nullptr);
        return;
    }
    const std::string begin(text.view().substr(start));
    text.cut(start);
    rowField->eachElement(found.record, [&](const void* element) {
        if (options.filter == nullptr ||
            options.filter->takes({found.record, element, found.envelope}, kind)) {
            text.append(begin);
            appendRow(text, found, element);
        }
    });
}

// What is the same in all rows of a message.
void CsvTable::appendBegin(Text& text, const std::string& input, const EnvelopeColumns& envelopes,
                           const Found& found) const
{
    if (options.withInput) {
        appendTextCell(text, validUtf8(input));
        text.append(options.separator);
    }
    appendUnsigned(text, found.number);
    text.append(options.separator);
    appendUnsigned(text, found.begin);
    envelopes.eachCell(*found.envelope, [&](std::string cell, std::size_t) {
        text.append(options.separator);
        std::replace(cell.begin(), cell.end(), '.', options.decimal);
        text.append(cell);
    });
}

void CsvTable::appendRow(Text& text, const Found& found, const void* element) const
{
    for (const Column& column : columns) {
        const void* const record = column.ofElement ? element : found.record;
        if (column.isPlainNumber && !options.withTexts) [[likely]] {
            char* const out = text.room(numberRoom + 1);
            *out = options.separator;
            text.end(putSigned(out + 1, RTCM2_reader_integer(&column.field->reader, record, 0)));
            continue;
        }
        if (column.isPlainQuantity) {
            char* const out = text.room(RTCM2_QUANTITY_ROOM + 1);
            *out = options.separator;
            text.end(putQuantityCell(out + 1, *column.field, record));
            continue;
        }
        text.append(options.separator);
        appendCell(text, *column.field, record);
        if (options.withTexts && column.field->hasTexts()) {
            text.append(options.separator);
            appendMeanings(text, *column.field, record);
        }
    }
    if (withHex) {
        std::string digits;
        appendHex(digits, found.bytes);
        text.append(options.separator);
        text.append(digits);
    }
    text.append('\n');
}

void CsvTable::appendCell(Text& text, const FieldModel& field, const void* record) const
{
    if (field.isQuantity()) {
        if (field.isPresent(record)) {
            text.end(putQuantityCell(text.room(RTCM2_QUANTITY_ROOM), field, record));
        }
    } else if (field.element != nullptr) {
        appendUnsigned(text, field.count(record));
    } else if (field.isText()) {
        appendTextCell(text, withoutNuls(field.characters(record)));
    } else if (field.isReal()) {
        appendRealCell(text, RTCM2_reader_real(&field.reader, record));
    } else {
        appendNumbers(text, field, record);
    }
}

void CsvTable::appendNumbers(Text& text, const FieldModel& field, const void* record) const
{
    const unsigned count = field.count(record);
    for (unsigned i = 0; i < count; ++i) {
        if (i > 0) {
            text.append(' ');
        }
        appendInteger(text, field, record, i);
    }
}

void CsvTable::appendRealCell(Text& text, double value) const
{
    if (!std::isfinite(value)) {
        return;
    }
    constexpr std::size_t most = 32;
    char* const out = text.room(most);
    char* const end = std::to_chars(out, out + most, value).ptr;
    std::replace(out, end, '.', options.decimal);
    text.end(end);
}

// Of a record that has the field.
char* CsvTable::putQuantityCell(char* out, const FieldModel& field, const void* record) const
{
    char* const end = putQuantity(out, field, record);
    if (options.decimal != '.') {
        std::replace(out, end, '.', options.decimal);
    }
    return end;
}

void CsvTable::appendMeanings(Text& text, const FieldModel& field, const void* record) const
{
    std::string cell;
    const unsigned count = field.count(record);
    for (unsigned i = 0; i < count; ++i) {
        const std::int64_t value = RTCM2_reader_integer(&field.reader, record, i);
        if (const char* meaning = meaningOf(field, value)) {
            cell += (cell.empty() ? "" : " ") + std::string(meaning);
        }
    }
    appendTextCell(text, cell);
}

// A text that would be a formula begins with an apostrophe, which spreadsheets take for "text".
void CsvTable::appendTextCell(Text& text, std::string_view cell) const
{
    const std::string harmless =
        (isFormula(cell) ? "'" : "") + (options.isShown ? printable(cell) : std::string(cell));
    const char special[] = {options.separator, '"', '\r', '\n', '\0'};
    if (harmless.find_first_of(special) == std::string::npos) {
        text.append(harmless);
        return;
    }
    text.append('"');
    for (const char character : harmless) {
        text.append(std::string_view("\"\"").substr(0, character == '"' ? 1 : 0));
        text.append(character);
    }
    text.append('"');
}
