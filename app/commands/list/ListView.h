// One line a message.
#pragma once

#include "base/Output.h"
#include "format/FieldPath.h"
#include "session/Sink.h"

#include <string>
#include <vector>

struct ListOptions {
    bool interpreted = false;
    bool position = false;    // message number and byte before the fields
    std::string separator = ";";
    std::vector<std::string> fields;    // names or identifiers; empty for all of the kind
};

class ListView : public Sink {
public:
    // `kinds` are those that may occur; the header line names the columns that they share.
    ListView(Output& out, const ListOptions& listOptions,
             const std::vector<const KindModel*>& kinds);

    void print(const Batch& batch, Text& text) const override;
    void take(const Batch&, Text& printed) override { output.write(printed.view()); }
    void pause() override { output.flush(); }
    bool isDone() const override { return output.failed(); }

private:
    // The fields that make up the line of a kind; without field where the kind lacks a chosen one.
    using Columns = std::vector<FieldPath>;

    void writeHeader(const std::vector<const KindModel*>& kinds);
    Columns columnsOf(const KindModel& kind) const;
    void printLine(const Found& found, Text& text) const;

    Output& output;
    ListOptions options;
    std::vector<Columns> columns;    // by the number of the kind
};
