#include "export/SqliteSql.h"

#include "format/EnvelopeField.h"

namespace sqliteSql {

namespace {

// What stands before the columns of the envelope and behind them.
constexpr const char* messageBegin[] = {"input_id", "number",  "byte",   "kind",
                                        "type",     "station", "time_s", "received"};
constexpr const char* messageEnd[] = {"is_short", "fill", "packed"};

std::string inQuotes(char quote, const std::string& text)
{
    std::string result(1, quote);
    for (const char character : text) {
        result.append(character == quote ? 2 : 1, character);
    }
    return result + quote;
}

// Numbers that SQLite cannot hold become texts, which a column with a type would turn into others.
std::string typeOf(const FieldModel& field)
{
    if (field.isQuantity()) {
        return field.isScaled() ? " REAL" : " TEXT";
    }
    if (field.isRepeated()) {
        return field.row->type == RTCM2_TYPE_BYTE ? " BLOB" : " TEXT";
    }
    return field.isReal()                            ? " REAL"
           : field.reader.stored == RTCM2_STORED_U64 ? std::string()
                                                     : " INTEGER";
}

std::string columnsOf(const SqliteTable& table)
{
    std::string sql;
    for (const SqliteColumn& column : table.columns) {
        sql += ", " + quoted(column.name) + typeOf(*column.field);
    }
    return sql;
}

std::string parameters(std::size_t count)
{
    std::string sql = "?";
    for (; count > 1; --count) {
        sql += ", ?";
    }
    return sql;
}

// The meaning of a coded value, which is looked up only where it is asked for.
std::string meaning(const SqliteTable& table, const SqliteColumn& column)
{
    return "(SELECT text FROM coded_texts c WHERE c.kind = " + literal(table.kind->name) +
           " AND c.field = " + literal(column.field->identifier) + " AND c.value = d." +
           quoted(column.name) + ")";
}

// The columns of a view. Those of the table have the first choice of names.
class ViewColumns {
public:
    explicit ViewColumns(const SqliteTable& table)
    {
        for (const SqliteColumn& column : table.columns) {
            names.add(column.name);
        }
    }

    void add(const std::string& value, const std::string& name) { addAs(value, names.add(name)); }
    void addAs(const std::string& value, const std::string& name)
    {
        sql += (sql.empty() ? "" : ", ") + value + " AS " + quoted(name);
    }
    const std::string& text() const { return sql; }

private:
    SqliteNames names;
    std::string sql;
};

void addEnvelope(ViewColumns& columns, const SqliteTable& table)
{
    columns.add("m.id", "message_id");
    columns.add("i.name", "input");
    for (const char* const name : {"number", "byte", "station", "time_s", "received"}) {
        columns.add(std::string("m.") + name, name);
    }
    for (const EnvelopeField& field : envelopeFields()) {
        columns.add("m." + quoted(field.name), field.name);
    }
    columns.add("m.is_short", "is_short");
    if (table.kind->isUnknown) {
        columns.add("m.packed", "packed");
    }
}

void addOwn(ViewColumns& columns, const SqliteTable& table)
{
    for (const SqliteColumn& column : table.columns) {
        columns.addAs("d." + quoted(column.name), column.name);
        if (column.field->hasTexts() && !column.field->isRepeated()) {
            columns.add(meaning(table, column), column.name + "_text");
        }
    }
}

}    // namespace

std::string quoted(const std::string& name)
{
    return inQuotes('"', name);
}

std::string literal(const std::string& text)
{
    return inQuotes('\'', text);
}

std::string commonTables()
{
    std::string envelope;
    for (const EnvelopeField& field : envelopeFields()) {
        envelope += quoted(field.name) + (field.decimals == 0 ? " INTEGER, " : " REAL, ");
    }
    return "CREATE TABLE inputs (id INTEGER PRIMARY KEY, name TEXT NOT NULL, form TEXT, "
           "exported TEXT NOT NULL, program TEXT NOT NULL);"
           "CREATE TABLE messages (id INTEGER PRIMARY KEY, "
           "input_id INTEGER NOT NULL REFERENCES inputs ON DELETE CASCADE, "
           "number INTEGER NOT NULL, byte INTEGER NOT NULL, kind TEXT NOT NULL, type INTEGER, "
           "station INTEGER, time_s REAL, received TEXT, " +
           envelope +
           "is_short INTEGER NOT NULL, fill TEXT, packed BLOB);"
           "CREATE TABLE coded_texts (kind TEXT NOT NULL, field TEXT NOT NULL, "
           "value INTEGER NOT NULL, text TEXT NOT NULL, PRIMARY KEY (kind, field, value)) "
           "WITHOUT ROWID;"
           "PRAGMA application_id = " +
           std::to_string(applicationId) +
           ";"
           "PRAGMA user_version = " +
           std::to_string(layoutVersion) + ";";
}

std::string commonIndexes()
{
    return "CREATE INDEX messages_by_input ON messages (input_id);"
           "CREATE INDEX messages_by_station ON messages (station, time_s);"
           "CREATE INDEX messages_by_time_received ON messages (received) "
           "WHERE received IS NOT NULL;";
}

std::string table(const SqliteTable& table)
{
    const bool hasElements = table.elements != nullptr;
    const std::string id = quoted(table.messageId);
    const std::string ofMessage = " REFERENCES messages ON DELETE CASCADE";
    return "CREATE TABLE IF NOT EXISTS " + quoted(table.name) + " (" + id +
           (hasElements ? " INTEGER NOT NULL" + ofMessage + ", " + quoted(table.position) +
                              " INTEGER NOT NULL"
                        : " INTEGER PRIMARY KEY" + ofMessage) +
           columnsOf(table) +
           (hasElements
                ? ", PRIMARY KEY (" + id + ", " + quoted(table.position) + ")) WITHOUT ROWID;"
                : ");");
}

// Outer joins are left out of a query that asks for none of their columns.
std::string view(const SqliteTable& table, const SqliteTable* parent)
{
    ViewColumns columns(table);
    addEnvelope(columns, table);
    const std::string id = "d." + quoted(table.messageId);
    std::string joins =
        " LEFT JOIN messages m ON m.id = " + id + " LEFT JOIN inputs i ON i.id = m.input_id";
    if (parent != nullptr) {
        columns.add("d." + quoted(table.position), "position");
    }
    addOwn(columns, table);
    if (parent != nullptr) {
        for (const SqliteColumn& column : parent->columns) {
            columns.add("p." + quoted(column.name), column.name);
        }
        joins += " LEFT JOIN " + quoted(parent->name) + " p ON p." + quoted(parent->messageId) +
                 " = " + id;
    }
    return "CREATE VIEW IF NOT EXISTS " + quoted(table.view) + " AS SELECT " + columns.text() +
           " FROM " + quoted(table.name) + " d" + joins + ";";
}

std::string indexOf(const SqliteTable& table)
{
    const SqliteColumn* const satellite = table.satellite();
    return satellite == nullptr
               ? std::string()
               : "CREATE INDEX IF NOT EXISTS " + quoted(table.name + "_by_satellite") + " ON " +
                     quoted(table.name) + " (" + quoted(satellite->name) + ");";
}

std::string insertMessage()
{
    std::string names;
    std::size_t count = std::size(messageBegin) + envelopeFields().size() + std::size(messageEnd);
    for (const char* const name : messageBegin) {
        names += std::string(name) + ", ";
    }
    for (const EnvelopeField& field : envelopeFields()) {
        names += quoted(field.name) + ", ";
    }
    for (const char* const name : messageEnd) {
        names += std::string(name) + ", ";
    }
    names.resize(names.size() - 2);
    return "INSERT INTO messages (" + names + ") VALUES (" + parameters(count) + ")";
}

std::string insertInto(const SqliteTable& table)
{
    std::string names = quoted(table.messageId);
    if (table.elements != nullptr) {
        names += ", " + quoted(table.position);
    }
    for (const SqliteColumn& column : table.columns) {
        names += ", " + quoted(column.name);
    }
    const std::size_t own = table.elements != nullptr ? 2 : 1;
    return "INSERT INTO " + quoted(table.name) + " (" + names + ") VALUES (" +
           parameters(own + table.columns.size()) + ")";
}

}    // namespace sqliteSql
