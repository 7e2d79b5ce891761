// The statements that make tables, views and indexes, and that insert rows.
#pragma once

#include "export/SqliteLayout.h"

#include <string>

namespace sqliteSql {

// In the header of the database: it is one of ours ("RTC2"), and how its tables are made.
inline constexpr std::int64_t applicationId = 0x52544332;
inline constexpr std::int64_t layoutVersion = 1;

// The tables that every database has: inputs, messages, texts of coded values.
std::string commonTables();
std::string commonIndexes();

std::string table(const SqliteTable& table);
// Rows with what is known of their messages. `parent` is the table of the messages of which the
// rows are elements; null where the rows are messages.
std::string view(const SqliteTable& table, const SqliteTable* parent);
// Empty where none is of use.
std::string indexOf(const SqliteTable& table);

// With a parameter for each column: of messages as commonTables() has them, without the id; of a
// table message id, position where it has elements, and the columns.
std::string insertMessage();
std::string insertInto(const SqliteTable& table);

// A name in quotes, a text in quotes.
std::string quoted(const std::string& name);
std::string literal(const std::string& text);

}    // namespace sqliteSql
