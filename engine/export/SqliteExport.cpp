#include "export/SqliteExport.h"

template <class Work>
void SqliteExport::attempt(Work work)
{
    if (failure) {
        return;
    }
    try {
        work();
    } catch (const SqliteError& error) {
        failure = error;
    }
}

void SqliteExport::beginInput(const std::string& name)
{
    attempt([&] { writer.beginInput(name); });
}

void SqliteExport::endOfInput(const std::string&, const ReaderCounters& counters)
{
    attempt([&] { writer.endInput(counters.form); });
}

void SqliteExport::take(const Found& found)
{
    if (found.hasRecord()) {
        attempt([&] { writer.add(found); });
    }
}

void SqliteExport::pause()
{
    attempt([&] { file.commitNowAndThen(); });
}
