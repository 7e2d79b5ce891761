// One line a message, a column a field: as the decoder writes it, or chosen fields.
#pragma once

#include "format/EnvelopeColumns.h"
#include "format/FieldPath.h"
#include "session/Sink.h"

#include <string>
#include <vector>

struct ListOptions {
    bool interpreted = false;
    bool withInput = false;    // the input's name before everything
    bool position = false;     // message number and byte before the fields
    bool times = false;        // when messages were received
    std::string separator = ";";
    std::vector<std::string> fields;    // names or identifiers; empty for all of the kind
};

class ListView : public PrintingSink {
public:
    // `kinds` are those that may occur; the header line names the columns that they share.
    ListView(Output& out, const ListOptions& listOptions,
             const std::vector<const KindModel*>& kinds);

    void beginInput(const std::string& name) override;

private:
    // The fields that make up the line of a kind; without field where the kind lacks a chosen one.
    using Columns = std::vector<FieldPath>;

    void appendHeading(Text& target) const;
    Columns columnsOf(const KindModel& kind) const;
    void appendValues(const FieldPath& path, const void* record, Text& target) const;
    void print(const Found& found, Text& target) override;

    ListOptions options;
    EnvelopeColumns envelopes;
    bool hasHeading = false;
    std::vector<std::string> names;    // of the fields' columns
    std::string input;                 // as the first column
    std::vector<Columns> columns;      // by the number of the kind
};
