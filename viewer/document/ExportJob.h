// Writes the messages of an input that a filter takes to a file, in a thread of its own.
#pragma once

#include "viewer/document/Input.h"
#include "viewer/document/Pass.h"

#include "filter/MessageFilter.h"
#include "format/FieldPath.h"
#include "session/Session.h"

#include <atomic>
#include <string>

enum class ExportForm { ndjson, json, csv, sqlite, stream, packed, hex };

class ExportJob {
public:
    struct Options {
        ExportForm form = ExportForm::ndjson;
        std::string path{};     // of the file; of CSV, a folder that gets a file for each kind
        std::string where{};    // empty for all messages
        Values values = Values::raw;
        std::string program{};    // with its version, for databases
    };

    // Begins to write. The model belongs to the caller. Throws FilterError.
    ExportJob(const FormatModel& model, const Input& file, Options wanted);

    bool isFinished() const { return pass.isFinished(); }
    std::uint64_t bytesRead() const { return bytes; }
    void cancel() { pass.cancel(); }

    // Once it is finished: why nothing was written, for people; empty where something was.
    const std::string& problem() const { return problemText; }
    // How many messages were written.
    std::uint64_t count() const { return written; }

private:
    void work();
    void writeFile();
    void writeTables();
    void writeDatabase();
    std::unique_ptr<Sink> sinkInto(Output& output) const;
    bool run(Sink& sink);

    const FormatModel& formatModel;
    Input input;
    Options options;
    MessageFilter filter;
    std::atomic<std::uint64_t> bytes = 0;
    std::uint64_t written = 0;
    std::string problemText;
    Pass pass;
};
