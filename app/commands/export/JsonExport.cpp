#include "commands/export/JsonExport.h"

#include "base/Characters.h"
#include "format/PackedText.h"

namespace {

void appendMember(Text& text, const char* key, std::string_view plain)
{
    text.append(key);
    text.append(plain);
    text.append('"');
}

}    // namespace

JsonExport::JsonExport(Output& out, JsonOptions jsonOptions,
                       const std::vector<const KindModel*>& kinds)
    : output(out), options(std::move(jsonOptions)),
      plans(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    for (const KindModel* kind : kinds) {
        plans[kind->number()] = {(options.asArray ? ",\n" : "") + std::string("{\"kind\":") +
                                     jsonString(kind->name) + ",\"number\":",
                                 JsonPlan(chosenFields(*kind, options.fields))};
    }
}

void JsonExport::print(const Batch& batch, Text& text) const
{
    const std::string input =
        options.withInput ? ",\"input\":" + jsonString(*batch.input) : std::string();
    for (const Found& found : batch.found) {
        if (found.what == Found::What::message) {
            printMessage(found, input, text);
        }
    }
}

void JsonExport::printMessage(const Found& found, const std::string& input, Text& text) const
{
    const KindPlan& plan = plans[found.kind->number()];
    text.append(plan.head);
    appendUnsigned(text, found.number);
    text.append(",\"byte\":");
    appendUnsigned(text, found.begin);
    text.append(input);
    text.append(",\"fields\":");
    plan.fields.appendValues(text, found.record);
    if (options.withTexts) {
        text.append(",\"texts\":");
        plan.fields.appendTexts(text, found.record);
    }
    std::string bits;
    appendUnusualFill(bits, found.packed(), found.bits);
    if (!bits.empty()) {
        appendMember(text, ",\"fill\":\"", bits);
    }
    if (options.withHex) {
        std::string digits;
        appendHex(digits, found.packed());
        appendMember(text, ",\"hex\":\"", digits);
    }
    text.append(options.asArray ? "}" : "}\n");
}

// In an array each object begins with a comma, but for the first one.
void JsonExport::take(const Batch&, Text& printed)
{
    if (options.asArray && isFirst && !printed.isEmpty()) {
        printed.replace(0, '[');
    }
    isFirst = isFirst && printed.isEmpty();
    output.write(printed.view());
}

void JsonExport::finish()
{
    if (options.asArray) {
        output << (isFirst ? "[]\n" : "\n]\n");
    }
}
