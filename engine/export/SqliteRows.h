// Rows of a table, made of records.
#pragma once

#include "base/Text.h"
#include "export/SqliteDatabase.h"
#include "export/SqliteLayout.h"

#include <cstdint>
#include <string>
#include <vector>

// The value of a field as a parameter.
class SqliteValue {
public:
    explicit SqliteValue(const FieldModel& of);

    // The value stays as it is until this is called again. What is absent, and a quantity that the
    // message says there is none of, is NULL.
    void bind(SqliteStatement& statement, int parameter, const void* record);

private:
    enum class Shape : std::uint8_t {
        number,
        largeNumber,
        real,
        quantity,
        satellite,
        characters,
        bytes,
        numbers
    };

    static Shape shapeOf(const FieldModel& field);
    void bindLarge(SqliteStatement& statement, int parameter, const void* record);
    static void bindReal(SqliteStatement& statement, int parameter, double value);
    void bindQuantity(SqliteStatement& statement, int parameter, const void* record) const;
    void bindSatellite(SqliteStatement& statement, int parameter, const void* record);
    void bindCharacters(SqliteStatement& statement, int parameter, const void* record);
    void bindBytes(SqliteStatement& statement, int parameter, const void* record) const;
    void bindNumbers(SqliteStatement& statement, int parameter, const void* record);

    const FieldModel* field;
    Shape shape;
    bool isOptional;
    Text text;    // that is bound
};

// Inserts rows into one table.
class SqliteRows {
public:
    SqliteRows(const SqliteDatabase& database, const SqliteTable& table);

    // A message, or all elements that it has in the table's field.
    void insert(std::int64_t messageId, const void* message);

private:
    void insertRow(std::int64_t messageId, const void* record);

    const FieldModel* elements;
    SqliteStatement statement;
    std::vector<SqliteValue> values;
    std::int64_t position = 0;
};
