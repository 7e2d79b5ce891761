// Messages as separated values, one table a kind.
#pragma once

#include "base/Output.h"
#include "base/OutputFiles.h"
#include "export/CsvTable.h"
#include "session/Sink.h"

#include <map>
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

// Each kind of which there are messages goes to a file of its own in one directory.
class CsvFiles : public Sink {
public:
    // The caller closes the files.
    CsvFiles(OutputFiles& outputs, CsvTables kindTables, bool withTimes)
        : files(outputs), noColumns(withTimes), tables(std::move(kindTables))
    {
    }

    void beginInput(const std::string& name) override { input = name; }
    void take(const Found& found) override;
    void pause() override { files.flush(); }
    bool isDone() const override { return files.failed(); }

private:
    struct File {
        std::string name;
        EnvelopeColumns columns;
    };

    File& fileOf(const KindModel& kind, const Envelope& envelope);

    OutputFiles& files;
    EnvelopeColumns noColumns;
    CsvTables tables;
    std::map<const KindModel*, File> begun;
    std::string input;
    Text rows;
};
