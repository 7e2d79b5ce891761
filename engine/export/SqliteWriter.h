// Messages into the tables of a database.
#pragma once

#include "export/SqliteFile.h"
#include "export/SqliteLayout.h"
#include "export/SqliteRows.h"
#include "session/Found.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct SqliteOptions {
    std::string program;                  // with its version
    bool withPacked = false;              // the packed message, too
    std::vector<std::string> fields{};    // names; empty for all
    Values values = Values::both;         // of those that are not named
};

// Throws as SqliteDatabase does.
class SqliteWriter {
public:
    // Throws where the database has other columns for one of these kinds, which are those that may
    // occur.
    SqliteWriter(SqliteFile& target, const FormatModel& model,
                 const std::vector<const KindModel*>& kinds, SqliteOptions sqliteOptions);

    void beginInput(const std::string& name);
    void endInput(const std::string& form);
    void add(const Found& found);
    // Makes the indexes that were put off, since many rows are sorted faster at once.
    void finish();

private:
    // What is needed for messages of one kind.
    struct KindRows {
        std::optional<SqliteValue> type;
        std::optional<SqliteValue> station;
        std::optional<SqliteValue> time;
        std::vector<SqliteRows> tables;
    };

    void requireSameColumns(const SqliteKind& kind);
    void requireSameColumns(const SqliteTable& table);
    KindRows& rowsOf(const KindModel& kind);
    void makeTable(const SqliteTable& table, const SqliteTable* parent);
    void makeIndexes(const std::string& sql);
    void addCodedTexts(const SqliteTable& table);
    std::int64_t insertMessage(KindRows& rows, const Found& found);
    int bindEnvelope(int parameter, const Envelope& envelope);

    SqliteFile& file;
    SqliteDatabase& database;
    SqliteOptions options;
    SqliteLayout layout;
    SqliteStatement message;
    std::vector<std::unique_ptr<KindRows>> kindRows;    // by the number of the kind
    std::string indexes;                                // statements that were put off
    std::int64_t inputId = 0;
    std::string received;    // texts that are bound
    std::string fill;
};
