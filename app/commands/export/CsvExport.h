// Messages as comma-separated values, one table a kind.
#pragma once

#include "base/Output.h"
#include "commands/export/CsvTable.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// A file for each kind of which there are messages, in one directory.
class CsvFiles {
public:
    explicit CsvFiles(std::string path) : directory(std::move(path)) {}

    // The file of a kind, empty at first.
    Output& of(const KindModel& kind);
    void flush();
    bool failed() const;

    // Writes out and closes. False when anything could not be written; `problem` says what.
    [[nodiscard]] bool close(std::string& problem);

private:
    std::string directory;
    std::map<const KindModel*, std::unique_ptr<Output>> files;
};

class CsvExport : public Sink {
public:
    using Tables = std::map<const KindModel*, CsvTable>;

    // A table for each kind that may occur. They refer to the options. Throws FieldChoiceError.
    static Tables tablesFor(const std::vector<const KindModel*>& kinds, const CsvOptions& options);

    // Everything goes to one output. If there is one table, it has its header line in any case; of
    // several, each begins anew where the kind of the messages changes.
    CsvExport(Output& out, Tables kindTables);
    // Each kind goes to a file of its own.
    CsvExport(CsvFiles& kindFiles, Tables kindTables);

    void message(const Place& place, const Decoded& decoded) override;
    void pause() override;
    bool isDone() const override;

private:
    Output& outputFor(const KindModel& kind, const CsvTable& table);
    void beginPart(const KindModel& kind, const CsvTable& table);

    Output* output = nullptr;
    CsvFiles* files = nullptr;
    Tables tables;
    const KindModel* lastKind = nullptr;    // in the one output
    std::map<const KindModel*, Output*> begun;
    std::string rows;
};
