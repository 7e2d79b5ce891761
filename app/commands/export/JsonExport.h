// Messages as JSON objects.
#pragma once

#include "base/JsonText.h"
#include "base/Output.h"
#include "format/CodedTexts.h"
#include "format/FieldChoice.h"
#include "session/Session.h"

#include <map>
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

    void message(const Place& place, const Decoded& decoded) override;
    void finish() override;
    void pause() override;
    bool isDone() const override { return output.failed(); }

private:
    // How a field is written, resolved once.
    struct Plan {
        const FieldInfo* info;
        JsonKey key;
        FieldType::Kind type;
        bool single;    // exactly one value in every message
        bool repeated;
        bool optional;
        bool isText;
        CodedTexts codedTexts;
        bool hasTexts;    // it or fields of its elements can have texts
        std::vector<Plan> parts{};
    };
    using Plans = std::vector<Plan>;

    struct KindPlan {
        std::string head;    // the object up to the message's number
        Plans fields;
    };

    static Plan planFor(const ChosenField& chosen);
    static Plans plansFor(const std::vector<ChosenField>& fields);

    void writePlace(const KindPlan& kind, const Place& place);
    const std::string& nameOf(const std::string& input);
    void writeFields(const Plans& plans, const Message& message);
    void writeField(const Plan& plan, const Message& message);
    void writeArray(const Plan& plan, const Message& message, unsigned count);
    void writeValue(const Plan& plan, const FieldValue& value);
    void writeTexts(Plans& plans, const Message& message);
    void writeTextsOf(Plan& plan, const Message& message);
    void writeElementTexts(Plan& plan, const Message& message, unsigned count);
    void writeCodedTexts(Plan& plan, const Message& message, unsigned count);
    void writePacked(const Place& place, const Decoded& decoded);
    void writeString(std::string_view characters);
    void writeOut();

    Output& output;
    JsonOptions options;
    std::map<const KindModel*, KindPlan> kindPlans;
    JsonText text;
    std::string characters;
    std::string utf8;
    std::string lastInput;
    std::string lastInputUtf8;
    bool isFirst = true;
};
