// One line a message.
#pragma once

#include "base/Output.h"
#include "session/Session.h"

#include <QVector>

#include <map>
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

    void message(const Place& place, const Decoded& decoded) override;
    void pause() override { output.flush(); }
    bool isDone() const override { return output.failed(); }

private:
    // The fields that make up the line of a kind; null where the kind lacks a chosen one.
    using Columns = std::vector<const FieldModel*>;

    void writeHeader(const std::vector<const KindModel*>& kinds);
    const Columns& columnsOf(const KindModel& kind);
    std::string line(const Decoded& decoded);

    Output& output;
    ListOptions options;
    std::map<const KindModel*, Columns> columns;
};
