// Which tables and columns a database has for the messages of each kind.
#pragma once

#include "format/FieldPath.h"

#include <string>
#include <vector>

struct SqliteColumn {
    std::string name;
    const FieldModel* field;
};

// The values of records of one kind, each a row: messages, or the elements in a field of these.
struct SqliteTable {
    std::string view;    // the name that people use
    std::string name;    // of the table beneath the view
    const KindModel* kind = nullptr;
    const FieldModel* elements = nullptr;    // the field that holds them; null: they are messages
    std::string messageId;                   // column with the id of the message
    std::string position;                    // column with the place among the elements, from 1
    std::vector<SqliteColumn> columns{};

    // By which people look for rows: the satellite; null when there is none.
    const SqliteColumn* satellite() const;
};

struct SqliteKind {
    SqliteTable messages;
    std::vector<SqliteTable> parts;    // those of its fields that hold elements
};

// The names are the same whatever is chosen, so that one database serves many runs.
class SqliteLayout {
public:
    // `fields` are names; empty for all.
    SqliteLayout(const FormatModel& model, const std::vector<std::string>& fields, Values values);

    const SqliteKind& of(const KindModel& kind) const { return kinds[kind.number()]; }

private:
    std::vector<SqliteKind> kinds;    // by the number of the kind
};

// Names that differ in more than the case of their letters.
class SqliteNames {
public:
    explicit SqliteNames(std::vector<std::string> takenNames = {}) : taken(std::move(takenNames)) {}

    // The name or, where it is taken, the name with as many "_" behind it as it takes.
    std::string add(std::string name);

private:
    std::vector<std::string> taken;
};
