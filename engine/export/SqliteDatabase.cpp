#include "export/SqliteDatabase.h"

#include "base/Interrupt.h"

#include <cstring>
#include <new>
#include <thread>

#include <sqlite3.h>

namespace {

// SQLite's own words are for programmers where it is people who can do something about it.
std::string reasonOf(sqlite3* database)
{
    switch (sqlite3_errcode(database)) {
    case SQLITE_NOTADB:
        return "it is no SQLite database";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "another program has locked it";
    case SQLITE_READONLY:
        return "it may not be written";
    default:
        break;
    }
    const int systemError = sqlite3_system_errno(database);
    return sqlite3_errmsg(database) +
           (systemError != 0 ? std::string(": ") + std::strerror(systemError) : std::string());
}

}    // namespace

void SqliteDatabase::Close::operator()(sqlite3* database) const
{
    sqlite3_close_v2(database);
}

// An answer of 0 gives up.
int SqliteDatabase::waitForLock(void* database, int waits)
{
    constexpr std::chrono::milliseconds oneWait(50);
    if (interrupt::requested() ||
        waits * oneWait >= static_cast<SqliteDatabase*>(database)->longestWait) {
        return 0;
    }
    std::this_thread::sleep_for(oneWait);
    return 1;
}

void SqliteDatabase::open(const std::string& path, const std::string& shownName)
{
    name = shownName;
    sqlite3* opened = nullptr;
    const int result =
        sqlite3_open_v2(path.c_str(), &opened,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle.reset(opened);
    check(result);
    sqlite3_busy_handler(opened, waitForLock, this);
}

void SqliteDatabase::execute(const std::string& sql) const
{
    check(sqlite3_exec(get(), sql.c_str(), nullptr, nullptr, nullptr));
}

std::int64_t SqliteDatabase::number(const std::string& sql) const
{
    SqliteStatement statement(*this, sql);
    return statement.next() ? statement.number(0) : 0;
}

std::string SqliteDatabase::text(const std::string& sql) const
{
    SqliteStatement statement(*this, sql);
    return statement.next() ? statement.text(0) : std::string();
}

std::int64_t SqliteDatabase::lastId() const
{
    return sqlite3_last_insert_rowid(get());
}

void SqliteDatabase::heedInterrupts() const
{
    constexpr int instructions = 100'000;
    sqlite3_progress_handler(
        get(), instructions, [](void*) { return interrupt::requested() ? 1 : 0; }, nullptr);
}

void SqliteDatabase::restoreJournal(const std::string& mode) const
{
    sqlite3_busy_handler(get(), nullptr, nullptr);
    sqlite3_exec(get(), ("PRAGMA journal_mode = " + mode).c_str(), nullptr, nullptr, nullptr);
}

void SqliteDatabase::fail(int result) const
{
    static_assert(success == SQLITE_OK);
    constexpr int withoutDetails = 0xFF;
    if (handle == nullptr || (result & withoutDetails) == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    throw SqliteError{"cannot write " + name + ": " + reasonOf(get())};
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(const SqliteDatabase& of, const std::string& sql) : database(&of)
{
    sqlite3_stmt* prepared = nullptr;
    const int result = sqlite3_prepare_v3(of.get(), sql.c_str(), static_cast<int>(sql.size()) + 1,
                                          SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    handle.reset(prepared);
    of.check(result);
}

void SqliteStatement::bindNull(int parameter)
{
    database->check(sqlite3_bind_null(handle.get(), parameter));
}

void SqliteStatement::bind(int parameter, std::int64_t value)
{
    database->check(sqlite3_bind_int64(handle.get(), parameter, value));
}

void SqliteStatement::bind(int parameter, double value)
{
    database->check(sqlite3_bind_double(handle.get(), parameter, value));
}

void SqliteStatement::bind(int parameter, std::string_view text)
{
    database->check(sqlite3_bind_text(handle.get(), parameter, text.data(),
                                      static_cast<int>(text.size()), SQLITE_STATIC));
}

void SqliteStatement::bind(int parameter, std::span<const std::uint8_t> bytes)
{
    // Without an address these would be NULL.
    const void* const begin = bytes.empty() ? "" : static_cast<const void*>(bytes.data());
    database->check(sqlite3_bind_blob(handle.get(), parameter, begin,
                                      static_cast<int>(bytes.size()), SQLITE_STATIC));
}

bool SqliteStatement::next()
{
    const int result = sqlite3_step(handle.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        database->check(result);
    }
    return result == SQLITE_ROW;
}

void SqliteStatement::run()
{
    const int result = sqlite3_step(handle.get());
    if (result != SQLITE_DONE) {
        database->check(result);
    }
    sqlite3_reset(handle.get());
}

std::int64_t SqliteStatement::number(int column) const
{
    return sqlite3_column_int64(handle.get(), column);
}

std::string SqliteStatement::text(int column) const
{
    const unsigned char* const text = sqlite3_column_text(handle.get(), column);
    return text != nullptr ? reinterpret_cast<const char*>(text) : std::string();
}
