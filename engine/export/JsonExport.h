// Messages as JSON objects.
#pragma once

#include "export/JsonPlan.h"
#include "session/Sink.h"

#include <string>
#include <vector>

struct JsonOptions {
    bool asArray = false;                 // all objects in one array, instead of an object a line
    bool withTexts = false;               // what coded values mean, beside the values
    bool withHex = false;                 // the packed message
    bool withInput = false;               // the input's name
    bool withTimes = false;               // when messages were received
    std::vector<std::string> fields{};    // names; empty for all
    Values values = Values::raw;          // of those that are not named
};

class JsonExport : public PrintingSink {
public:
    // `kinds` are those that may occur.
    JsonExport(Output& out, JsonOptions jsonOptions, const std::vector<const KindModel*>& kinds);

    void beginInput(const std::string& name) override;
    void finish() override;

private:
    struct KindPlan {
        std::string head;                // the object up to the message's number
        std::string_view fieldsKey{};    // with the comma before and the colon behind it
        JsonPlan fields;
    };

    void print(const Found& found, Text& target) override;
    void appendEnvelope(Text& target, const Found& found) const;

    JsonOptions options;
    std::vector<KindPlan> plans;    // by the number of the kind
    std::string input;              // as a member
    bool isFirst = true;
};
