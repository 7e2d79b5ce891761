#include "export/SqliteRows.h"

#include "base/Characters.h"
#include "export/SqliteSql.h"
#include "format/Decimal.h"
#include "format/FieldText.h"

#include <charconv>
#include <cmath>

namespace {

// The real number next to a decimal one, which a division of exact numbers gives.
double nearestReal(const RTCM2_decimal_s& value)
{
    constexpr std::int64_t largestExact = std::int64_t{1} << 53;
    if (value.digits >= -largestExact && value.digits <= largestExact) {
        return realOf(value);
    }
    const std::string text = textOf(value);
    double real = 0;
    std::from_chars(text.data(), text.data() + text.size(), real);
    return real;
}

}    // namespace

SqliteValue::SqliteValue(const FieldModel& of)
    : field(&of), shape(shapeOf(of)), isOptional(of.isOptional())
{
}

SqliteValue::Shape SqliteValue::shapeOf(const FieldModel& field)
{
    if (field.isQuantity()) {
        return field.isScaled() ? Shape::quantity : Shape::satellite;
    }
    if (field.isText()) {
        return Shape::characters;
    }
    if (field.isRepeated()) {
        return field.row->type == RTCM2_TYPE_BYTE ? Shape::bytes : Shape::numbers;
    }
    return field.isReal()                            ? Shape::real
           : field.reader.stored == RTCM2_STORED_U64 ? Shape::largeNumber
                                                     : Shape::number;
}

void SqliteValue::bind(SqliteStatement& statement, int parameter, const void* record)
{
    if (isOptional && RTCM2_reader_is_present(&field->reader, record) == 0) {
        return statement.bindNull(parameter);
    }
    switch (shape) {
    case Shape::number:
        return statement.bind(parameter, RTCM2_reader_integer(&field->reader, record, 0));
    case Shape::largeNumber:
        return bindLarge(statement, parameter, record);
    case Shape::real:
        return bindReal(statement, parameter, RTCM2_reader_real(&field->reader, record));
    case Shape::quantity:
        return bindQuantity(statement, parameter, record);
    case Shape::satellite:
        return bindSatellite(statement, parameter, record);
    case Shape::characters:
        return bindCharacters(statement, parameter, record);
    case Shape::bytes:
        return bindBytes(statement, parameter, record);
    case Shape::numbers:
        return bindNumbers(statement, parameter, record);
    }
}

// SQLite knows no unsigned numbers.
void SqliteValue::bindLarge(SqliteStatement& statement, int parameter, const void* record)
{
    const std::int64_t value = RTCM2_reader_integer(&field->reader, record, 0);
    if (value >= 0) {
        return statement.bind(parameter, value);
    }
    text.clear();
    appendUnsigned(text, static_cast<std::uint64_t>(value));
    statement.bind(parameter, text.view());
}

// As in JSON, what is no number is nothing.
void SqliteValue::bindReal(SqliteStatement& statement, int parameter, double value)
{
    std::isfinite(value) ? statement.bind(parameter, value) : statement.bindNull(parameter);
}

void SqliteValue::bindQuantity(SqliteStatement& statement, int parameter, const void* record) const
{
    RTCM2_decimal_s value;
    RTCM2_reader_quantity(&*field->quantity, record, &value) == RTCM2_ACCESS_DONE
        ? statement.bind(parameter, nearestReal(value))
        : statement.bindNull(parameter);
}

void SqliteValue::bindSatellite(SqliteStatement& statement, int parameter, const void* record)
{
    text.clear();
    appendQuantity(text, *field, record) ? statement.bind(parameter, text.view())
                                         : statement.bindNull(parameter);
}

void SqliteValue::bindCharacters(SqliteStatement& statement, int parameter, const void* record)
{
    text.clear();
    text.append(withoutNuls(field->characters(record)));
    statement.bind(parameter, text.isEmpty() ? std::string_view("") : text.view());
}

void SqliteValue::bindBytes(SqliteStatement& statement, int parameter, const void* record) const
{
    const char* const begin = RTCM2_reader_place(&field->reader, record);
    statement.bind(parameter,
                   std::span(reinterpret_cast<const std::uint8_t*>(begin), field->count(record)));
}

// As in JSON, which SQLite can take apart.
void SqliteValue::bindNumbers(SqliteStatement& statement, int parameter, const void* record)
{
    text.clear();
    const unsigned count = field->count(record);
    for (unsigned i = 0; i < count; ++i) {
        text.append(i == 0 ? '[' : ',');
        const std::int64_t value = RTCM2_reader_integer(&field->reader, record, i);
        char* const out = text.room(numberRoom);
        text.end(field->reader.stored == RTCM2_STORED_U64
                     ? putUnsigned(out, static_cast<std::uint64_t>(value))
                     : putSigned(out, value));
    }
    text.append(count == 0 ? "[]" : "]");
    statement.bind(parameter, text.view());
}

SqliteRows::SqliteRows(const SqliteDatabase& database, const SqliteTable& table)
    : elements(table.elements), statement(database, sqliteSql::insertInto(table))
{
    for (const SqliteColumn& column : table.columns) {
        values.emplace_back(*column.field);
    }
}

void SqliteRows::insert(std::int64_t messageId, const void* message)
{
    if (elements == nullptr) {
        return insertRow(messageId, message);
    }
    position = 0;
    elements->eachElement(message, [&](const void* element) { insertRow(messageId, element); });
}

void SqliteRows::insertRow(std::int64_t messageId, const void* record)
{
    int parameter = 0;
    statement.bind(++parameter, messageId);
    if (elements != nullptr) {
        statement.bind(++parameter, ++position);
    }
    for (SqliteValue& value : values) {
        value.bind(statement, ++parameter, record);
    }
    statement.run();
}
