// Messages as JSON objects.
#pragma once

#include "base/Output.h"
#include "commands/export/JsonPlan.h"
#include "session/Sink.h"

#include <string>
#include <vector>

struct JsonOptions {
    bool asArray = false;                 // all objects in one array, instead of an object a line
    bool withTexts = false;               // what coded values mean, beside the values
    bool withHex = false;                 // the packed message
    bool withInput = false;               // the input's name
    std::vector<std::string> fields{};    // names; empty for all
};

class JsonExport : public Sink {
public:
    // `kinds` are those that may occur.
    JsonExport(Output& out, JsonOptions jsonOptions, const std::vector<const KindModel*>& kinds);

    void print(const Batch& batch, Text& text) const override;
    void take(const Batch& batch, Text& printed) override;
    void finish() override;
    void pause() override { output.flush(); }
    bool isDone() const override { return output.failed(); }

private:
    struct KindPlan {
        std::string head;    // the object up to the message's number
        JsonPlan fields;
    };

    void printMessage(const Found& found, const std::string& input, Text& text) const;

    Output& output;
    JsonOptions options;
    std::vector<KindPlan> plans;    // by the number of the kind
    bool isFirst = true;
};
