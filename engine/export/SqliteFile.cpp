#include "export/SqliteFile.h"

#include "export/SqliteSql.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

void SqliteFile::open()
{
    std::error_code unknown;    // opening the file fails then, and says why
    const bool exists = fs::exists(name, unknown);
    if (!exists) {
        requireNoRemains();
    }
    // The path is given as a whole, since some names mean something else to SQLite.
    exists || live ? opened.open(fs::absolute(name).string(), name) : openBeside();
    begin();
    makeCommonTables();
    // Later there is something to lose.
    opened.setLongestWait(std::chrono::minutes(1));
}

// Until it has its name nobody else knows of it, and it goes if anything fails: so there is nothing
// to be rolled back, and nothing that would have to survive a loss of power.
void SqliteFile::openBeside()
{
    constexpr mode_t permissionsOfDatabase = 0666;    // less what the user's mask takes
    const int descriptor = newFile.create(name, permissionsOfDatabase);
    if (descriptor < 0) {
        fail(std::strerror(errno));
    }
    ::close(descriptor);
    opened.open(newFile.path(), name);
    opened.execute("PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = OFF; "
                   "PRAGMA synchronous = OFF; PRAGMA cache_size = -16384");
}

// What SQLite would take for a part of the new database, and play back into it.
void SqliteFile::requireNoRemains() const
{
    for (const char* const suffix : {"-journal", "-wal"}) {
        std::error_code unknown;
        if (fs::exists(name + suffix, unknown)) {
            fail(name + suffix + " is left from another database of this name; move it away");
        }
    }
}

void SqliteFile::makeCommonTables()
{
    const std::int64_t application = opened.number("PRAGMA application_id");
    const std::int64_t version = opened.number("PRAGMA user_version");
    fresh = application == 0 && version == 0 &&
            opened.number("SELECT count(*) FROM sqlite_master") == 0;
    if (fresh) {
        opened.execute(sqliteSql::commonTables());
    } else if (application != sqliteSql::applicationId) {
        fail("it is a database of another program");
    } else if (version != sqliteSql::layoutVersion) {
        fail("its tables are those of version " + std::to_string(version) +
             ", and this program writes version " + std::to_string(sqliteSql::layoutVersion) +
             "; name another file");
    }
}

void SqliteFile::letOthersRead()
{
    commit();
    journalMode = opened.text("PRAGMA journal_mode");
    opened.execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
}

void SqliteFile::begin()
{
    if (!inTransaction) {
        opened.execute("BEGIN IMMEDIATE");
        inTransaction = true;
        begun = std::chrono::steady_clock::now();
    }
}

void SqliteFile::commitNowAndThen()
{
    if (live && inTransaction &&
        std::chrono::steady_clock::now() - begun >= std::chrono::seconds(1)) {
        commit();
    }
}

void SqliteFile::commit()
{
    if (inTransaction) {
        opened.execute("COMMIT");
        inTransaction = false;
    }
}

void SqliteFile::keep()
{
    commit();
    if (!journalMode.empty()) {
        opened.restoreJournal(journalMode);
    }
    opened.close();
    if (newFile.exists() && !newFile.takePlace()) {
        fail(std::strerror(errno));
    }
}

void SqliteFile::giveUp()
{
    try {
        takeBack();
    } catch (const SqliteError&) {    // whoever opens the file next will
    }
    opened.close();
    newFile.discard();
}

// After a failed write SQLite leaves the way back to whoever reads the file next.
void SqliteFile::takeBack()
{
    if (!inTransaction || newFile.exists()) {
        return;
    }
    opened.close();
    opened.open(fs::absolute(name).string(), name);
    opened.number("SELECT count(*) FROM sqlite_master");
    if (!journalMode.empty()) {
        opened.restoreJournal(journalMode);
    }
}

void SqliteFile::fail(const std::string& reason) const
{
    throw SqliteError{"cannot write " + name + ": " + reason};
}
