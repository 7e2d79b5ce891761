// A SQLite database and its statements.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

// What could not be done; the text is for people.
struct SqliteError {
    std::string text;
};

// All functions throw SqliteError, and std::bad_alloc where there is no memory.
class SqliteDatabase {
public:
    SqliteDatabase() = default;
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;

    // Opens a file for reading and writing, which is made if need be. People know it by another
    // name.
    void open(const std::string& path, const std::string& shownName);
    // How long others are waited for that have locked the database; at first five seconds.
    void setLongestWait(std::chrono::milliseconds time) { longestWait = time; }
    // Rolls back what was not committed. There must be no statement any more.
    void close() { handle.reset(); }

    void execute(const std::string& sql) const;
    // The first value of the first row.
    std::int64_t number(const std::string& sql) const;
    std::string text(const std::string& sql) const;

    // Of the row that was inserted last.
    std::int64_t lastId() const;
    // From now on statements end early when the program is asked to end.
    void heedInterrupts() const;

    // Unless others have it open, who then see to it.
    void restoreJournal(const std::string& mode) const;

    // Throws what the result of a function of SQLite means, unless it is success.
    void check(int result) const
    {
        if (result != success) {
            fail(result);
        }
    }
    sqlite3* get() const { return handle.get(); }

private:
    static constexpr int success = 0;

    struct Close {
        void operator()(sqlite3* database) const;
    };

    static int waitForLock(void* database, int waits);
    [[noreturn]] void fail(int result) const;

    std::unique_ptr<sqlite3, Close> handle;
    std::string name;
    std::chrono::milliseconds longestWait = std::chrono::seconds(5);
};

// Parameters are counted from 1. Texts and bytes stay where they are until the statement has run.
class SqliteStatement {
public:
    SqliteStatement(const SqliteDatabase& of, const std::string& sql);

    void bindNull(int parameter);
    void bind(int parameter, std::int64_t value);
    void bind(int parameter, double value);
    void bind(int parameter, std::string_view text);
    void bind(int parameter, std::span<const std::uint8_t> bytes);

    // Runs to the next row; false at the end.
    bool next();
    // Runs a statement that has no rows. It can be run again.
    void run();

    std::int64_t number(int column) const;
    std::string text(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    const SqliteDatabase* database;
    std::unique_ptr<sqlite3_stmt, Finalize> handle;
};
