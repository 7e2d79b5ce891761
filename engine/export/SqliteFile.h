// The file of a database, from its opening to its end.
#pragma once

#include "base/NewFile.h"
#include "export/SqliteDatabase.h"

#include <chrono>
#include <string>

// What a finite input gives is written as a whole: a new database gets its name when it is
// complete, and an older one gets one transaction. What live inputs give is kept from second to
// second.
//
// All functions throw as those of SqliteDatabase do. What was not committed is gone when the file
// is given up or opened again.
class SqliteFile {
public:
    SqliteFile(std::string fileName, bool areInputsLive)
        : name(std::move(fileName)), live(areInputsLive)
    {
    }

    // Opens the database, which has the common tables then, and begins a transaction.
    void open();

    SqliteDatabase& database() { return opened; }
    const std::string& fileName() const { return name; }
    bool isLive() const { return live; }
    // Whether the common tables have just been made.
    bool isNew() const { return fresh; }

    // For live inputs: keeps the transaction, and makes the changes from now on in a log, so that
    // nobody who reads the database has to wait or is waited for.
    void letOthersRead();
    // For live inputs: begins a transaction unless there is one.
    void begin();
    // For live inputs: commits what came, once a second.
    void commitNowAndThen();

    // Commits and closes. No statement may be left.
    void keep();
    // Closes and takes back what was not committed. No statement may be left. Throws nothing.
    void giveUp();

private:
    void openBeside();
    void requireNoRemains() const;
    void makeCommonTables();
    void commit();
    void takeBack();
    [[noreturn]] void fail(const std::string& reason) const;

    std::string name;
    bool live;
    bool fresh = false;
    bool inTransaction = false;
    std::chrono::steady_clock::time_point begun;
    std::string journalMode;    // to be restored
    NewFile newFile;
    SqliteDatabase opened;
};
