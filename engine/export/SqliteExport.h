// Messages into a SQLite database.
#pragma once

#include "export/SqliteWriter.h"
#include "session/Sink.h"

#include <optional>

// The first failure ends the session; the one who owns `failure` says so.
class SqliteExport : public Sink {
public:
    // All of them belong to the caller.
    SqliteExport(SqliteFile& target, SqliteWriter& messageWriter,
                 std::optional<SqliteError>& writeFailure)
        : file(target), writer(messageWriter), failure(writeFailure)
    {
    }

    void beginInput(const std::string& name) override;
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void take(const Found& found) override;
    void pause() override;
    void idle() override { pause(); }
    bool isDone() const override { return failure.has_value(); }
    bool writesAlong() const override { return false; }

private:
    template <class Work>
    void attempt(Work work);

    SqliteFile& file;
    SqliteWriter& writer;
    std::optional<SqliteError>& failure;
};
