// The program writing a database, against a loop that inserts the same rows into the same tables
// and does nothing else.
#include "TemporaryFile.h"
#include "Workload.h"

#include <benchmark/benchmark.h>

#include <sqlite3.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace bench {

namespace {

constexpr std::size_t streamSize = 5'000'000;

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
struct FreeValue {
    void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;
using Value = std::unique_ptr<sqlite3_value, FreeValue>;

Database openDatabase(const std::filesystem::path& path)
{
    sqlite3* opened = nullptr;
    sqlite3_open(path.c_str(), &opened);
    return Database(opened);
}

Statement prepare(const Database& database, const std::string& sql)
{
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(database.get(), sql.c_str(), -1, &prepared, nullptr);
    return Statement(prepared);
}

std::string textOf(const Statement& statement, int column)
{
    return reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column));
}

bool exportInto(const std::filesystem::path& database, const std::filesystem::path& capture)
{
    const std::string command = quotedPath(RTCM2_BENCH_PROGRAM) +
                                " export --format sqlite --output " + quotedPath(database) + " " +
                                quotedPath(capture);
    return std::system(command.c_str()) == 0;
}

// The rows of one table, of which the first column is the id of their message.
struct Rows {
    std::string name;
    std::size_t columns = 0;
    std::vector<std::vector<Value>> values{};

    std::string insert() const
    {
        std::string sql = "INSERT INTO \"" + name + "\" VALUES (?";
        for (std::size_t i = 1; i < columns; ++i) {
            sql += ",?";
        }
        return sql + ")";
    }
};

// What the program makes of the sample.
struct Exported {
    Exported()
    {
        const TemporaryFile file("sample.db");
        if (!exportInto(file.path(), RTCM2_BENCH_SAMPLE)) {
            return;
        }
        const Database database = openDatabase(file.path());
        const Statement all =
            prepare(database, "SELECT type, name, sql FROM sqlite_master WHERE sql IS NOT NULL");
        while (sqlite3_step(all.get()) == SQLITE_ROW) {
            const std::string type = textOf(all, 0);
            (type == "index" ? indexes : tables) += textOf(all, 2) + ";";
            const std::string name = textOf(all, 1);
            if (type == "table" && (name == "messages" || name.ends_with("_table"))) {
                read(database, name);
            }
        }
    }

    void read(const Database& database, const std::string& name)
    {
        const Statement select = prepare(database, "SELECT * FROM \"" + name + "\"");
        const int columns = sqlite3_column_count(select.get());
        rows.push_back({.name = name, .columns = static_cast<std::size_t>(columns)});
        while (sqlite3_step(select.get()) == SQLITE_ROW) {
            std::vector<Value> row;
            for (int i = 0; i < columns; ++i) {
                row.emplace_back(sqlite3_value_dup(sqlite3_column_value(select.get(), i)));
            }
            rows.back().values.push_back(std::move(row));
        }
        count += rows.back().values.size();
        messages += name == "messages" ? rows.back().values.size() : 0;
    }

    std::string tables;
    std::string indexes;
    std::vector<Rows> rows;
    std::size_t count = 0;
    std::size_t messages = 0;
};

const Exported& exported()
{
    static const Exported made;
    return made;
}

struct Capture {
    Capture()
    {
        const auto messages = messagesOfFile(RTCM2_BENCH_SAMPLE);
        const auto stream = streamOf(messages, streamSize);
        rounds = stream.size() / streamOf(messages, 1).size();
        std::ofstream(file.path(), std::ios::binary)
            .write(reinterpret_cast<const char*>(stream.data()),
                   static_cast<std::streamsize>(stream.size()));
    }

    TemporaryFile file{"rows"};
    std::size_t rounds = 0;
};

const Capture& capture()
{
    static const Capture made;
    return made;
}

void countRows(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(exported().count * capture().rounds));
}

void program(benchmark::State& state)
{
    for (auto _ : state) {
        const TemporaryFile file("export.db");
        if (exported().count == 0 || !exportInto(file.path(), capture().file.path())) {
            state.SkipWithError("the program failed");
            return;
        }
    }
    countRows(state);
}

// False when a row could not be inserted.
bool insertRound(const std::vector<Statement>& inserts, std::int64_t firstId)
{
    for (std::size_t table = 0; table < inserts.size(); ++table) {
        sqlite3_stmt* const insert = inserts[table].get();
        for (const std::vector<Value>& row : exported().rows[table].values) {
            sqlite3_bind_int64(insert, 1, firstId + sqlite3_value_int64(row[0].get()));
            for (std::size_t i = 1; i < row.size(); ++i) {
                sqlite3_bind_value(insert, static_cast<int>(i) + 1, row[i].get());
            }
            if (sqlite3_step(insert) != SQLITE_DONE) {
                return false;
            }
            sqlite3_reset(insert);
        }
    }
    return true;
}

bool insertAll(const std::filesystem::path& path)
{
    const Database database = openDatabase(path);
    const auto execute = [&](const std::string& sql) {
        return sqlite3_exec(database.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    };
    if (!execute("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -65536;"
                 "BEGIN;" +
                 exported().tables)) {
        return false;
    }
    std::vector<Statement> inserts;
    for (const Rows& rows : exported().rows) {
        inserts.push_back(prepare(database, rows.insert()));
    }
    for (std::size_t round = 0; round < capture().rounds; ++round) {
        if (!insertRound(inserts, static_cast<std::int64_t>(round * exported().messages))) {
            return false;
        }
    }
    return execute(exported().indexes + "COMMIT");
}

void insertAlone(benchmark::State& state)
{
    for (auto _ : state) {
        const TemporaryFile file("bare.db");
        if (!insertAll(file.path())) {
            state.SkipWithError("the loop failed");
            return;
        }
    }
    countRows(state);
}

const bool registered = [] {
    const auto add = [](const char* name, auto run) {
        benchmark::RegisterBenchmark(name, run)->UseRealTime()->Unit(benchmark::kMillisecond);
    };
    add("database/rtcm2 export --format sqlite/rtcm2", program);
    add("database/rtcm2 export --format sqlite/insert", insertAlone);
    return true;
}();

}    // namespace

}    // namespace bench
