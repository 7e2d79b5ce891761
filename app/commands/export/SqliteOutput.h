// The output of `export` that is a database.
#pragma once

#include "commands/ReadingOptions.h"
#include "export/SqliteWriter.h"

// Reads what the options name into the database that is their output, and tells on standard error
// what ended it. `kinds` may occur. Throws UsageError where the output can be no database.
ExitStatus exportToDatabase(Host& host, const ReadingOptions& reading, const SqliteOptions& options,
                            const std::vector<const KindModel*>& kinds);
