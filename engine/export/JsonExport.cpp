#include "export/JsonExport.h"

#include "base/Characters.h"
#include "format/EnvelopeField.h"
#include "format/PackedText.h"
#include "forms/TimeStamp.h"

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
    : PrintingSink(out), options(std::move(jsonOptions)),
      plans(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    for (const KindModel* kind : kinds) {
        plans[kind->number()] = {(options.asArray ? ",\n" : "") + std::string("{\"kind\":") +
                                     (kind->isUnknown ? "null" : jsonString(kind->name)) +
                                     ",\"number\":",
                                 kind->isUnknown ? ",\"header\":" : ",\"fields\":",
                                 JsonPlan(chosenFields(*kind, options.fields, options.values))};
    }
}

void JsonExport::beginInput(const std::string& name)
{
    input = options.withInput ? ",\"input\":" + jsonString(name) : std::string();
}

// In an array each object begins with a comma, but for the first one.
void JsonExport::print(const Found& found, Text& target)
{
    const std::size_t begin = target.size();
    const KindPlan& plan = plans[found.kind->number()];
    target.append(plan.head);
    appendUnsigned(target, found.number);
    target.append(",\"byte\":");
    appendUnsigned(target, found.begin);
    target.append(input);
    if (options.withTimes || found.envelope->sender || found.isShort) {
        appendEnvelope(target, found);
    }
    target.append(plan.fieldsKey);
    plan.fields.appendValues(target, found.record);
    if (options.withTexts) {
        target.append(",\"texts\":");
        plan.fields.appendTexts(target, found.record);
    }
    std::string bits;
    appendUnusualFill(bits, found.bytes, found.bits);
    if (!bits.empty()) {
        appendMember(target, ",\"fill\":\"", bits);
    }
    if (options.withHex || found.kind->isUnknown) {
        std::string digits;
        appendHex(digits, found.bytes);
        appendMember(target, ",\"hex\":\"", digits);
    }
    target.append(options.asArray ? "}" : "}\n");
    if (options.asArray && isFirst) {
        target.replace(begin, '[');
    }
    isFirst = false;
}

void JsonExport::appendEnvelope(Text& target, const Found& found) const
{
    if (options.withTimes) {
        const auto& received = found.envelope->received;
        target.append(",\"received\":");
        target.append(received ? jsonString(timeText(*received)) : "null");
    }
    for (const EnvelopeField& field : envelopeFields()) {
        const std::string value = envelopeText(field, *found.envelope);
        if (!value.empty()) {
            target.append(field.jsonKey);
            target.append(value);
        }
    }
    if (found.isShort) {
        target.append(",\"short\":true");
    }
}

void JsonExport::finish()
{
    PrintingSink::finish();
    if (options.asArray) {
        output << (isFirst ? "[]\n" : "\n]\n");
    }
}
