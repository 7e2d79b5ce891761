// Messages as separated values, one table a kind.
#pragma once

#include "base/Output.h"
#include "commands/export/CsvTable.h"
#include "session/Sink.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// A table for each kind.
using CsvTables = std::map<const KindModel*, CsvTable>;

// They refer to the options. Throws FieldPathError.
CsvTables tablesFor(const std::vector<const KindModel*>& kinds, const CsvOptions& options);

// Everything goes to one output. If there is one table, it has its header line in any case; of
// several, each begins anew where the kind of the messages changes, and every table does where more
// columns are needed.
class CsvExport : public PrintingSink {
public:
    CsvExport(Output& out, CsvTables kindTables, bool withTimes);

    void beginInput(const std::string& name) override { input = name; }
    void finish() override;

private:
    void print(const Found& found, Text& target) override;

    CsvTables tables;
    EnvelopeColumns envelopes;
    std::string input;
    const KindModel* lastKind = nullptr;
};

using CsvOutputs = std::map<const KindModel*, std::unique_ptr<Output>>;

// What could not be written, for people; empty when all was.
[[nodiscard]] std::string closeAll(CsvOutputs& outputs);

// Each kind of which there are messages goes to a file of its own in one directory.
class CsvFiles : public Sink {
public:
    // `outputs` gets the files, which the caller closes.
    CsvFiles(std::string path, CsvTables kindTables, bool withTimes, CsvOutputs& outputs);

    void beginInput(const std::string& name) override { input = name; }
    void take(const Found& found) override;
    void pause() override;
    bool isDone() const override;

private:
    Output& fileOf(const KindModel& kind, const Envelope& envelope);
    bool open(const KindModel& kind, Output& file) const;

    std::string directory;
    EnvelopeColumns noColumns;
    std::map<const KindModel*, EnvelopeColumns> columns;
    CsvTables tables;
    CsvOutputs& files;
    std::string input;
    Text rows;
};
