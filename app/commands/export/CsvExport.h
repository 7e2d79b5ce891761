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
// several, each begins anew where the kind of the messages changes.
class CsvExport : public Sink {
public:
    CsvExport(Output& out, CsvTables kindTables);

    void print(const Batch& batch, Text& text) const override;
    void take(const Batch&, Text& printed) override { output.write(printed.view()); }
    void pause() override { output.flush(); }
    bool isDone() const override { return output.failed(); }

private:
    Output& output;
    CsvTables tables;
};

// Each kind of which there are messages goes to a file of its own in one directory.
class CsvFiles : public Sink {
public:
    // `failure` gets what could not be written, for people; it stays empty when all was.
    CsvFiles(std::string path, CsvTables kindTables, std::string& failure);

    void take(const Batch& batch, Text& printed) override;
    void pause() override;
    void finish() override;
    bool isDone() const override;

private:
    Output& fileOf(const KindModel& kind);

    std::string directory;
    CsvTables tables;
    std::string& problem;
    std::map<const KindModel*, std::unique_ptr<Output>> files;
};
