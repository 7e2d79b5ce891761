#include "commands/export/JsonExport.h"

#include "FieldInfo.h"
#include "base/Characters.h"
#include "format/PackedText.h"

#include <algorithm>

namespace {

// The beginning of the objects of a kind.
std::string headOf(const KindModel& kind)
{
    JsonText head;
    head.append("{\"kind\":");
    head.string(kind.name);
    head.append(",\"number\":");
    return std::string(head.view());
}

}    // namespace

JsonExport::JsonExport(Output& out, JsonOptions jsonOptions,
                       const std::vector<const KindModel*>& kinds)
    : output(out), options(std::move(jsonOptions))
{
    for (const KindModel* kind : kinds) {
        kindPlans.emplace(kind,
                          KindPlan{headOf(*kind), plansFor(chosenFields(*kind, options.fields))});
    }
}

JsonExport::Plan JsonExport::planFor(const ChosenField& chosen)
{
    const FieldModel& field = *chosen.field;
    Plan plan{.info = field.info,
              .key = JsonKey(field.identifier),
              .type = field.type,
              .single = !field.repeated && !field.optional,
              .repeated = field.repeated,
              .optional = field.optional,
              .isText = field.isText(),
              .codedTexts = CodedTexts(field.info),
              .hasTexts = field.isText(),
              .parts = plansFor(chosen.parts)};
    plan.hasTexts = plan.hasTexts || !plan.codedTexts.isEmpty() ||
                    std::any_of(plan.parts.begin(), plan.parts.end(),
                                [](const Plan& part) { return part.hasTexts; });
    return plan;
}

JsonExport::Plans JsonExport::plansFor(const std::vector<ChosenField>& fields)
{
    Plans plans;
    for (const ChosenField& chosen : fields) {
        plans.push_back(planFor(chosen));
    }
    return plans;
}

void JsonExport::message(const Place& place, const Decoded& decoded)
{
    if (options.asArray) {
        text.append(isFirst ? "[\n" : ",\n");
    }
    isFirst = false;
    KindPlan& kind = kindPlans.at(&decoded.kind);
    writePlace(kind, place);
    text.append(",\"fields\":");
    writeFields(kind.fields, decoded.message);
    if (options.withTexts) {
        text.append(",\"texts\":");
        writeTexts(kind.fields, decoded.message);
    }
    writePacked(place, decoded);
    text.append(options.asArray ? "}" : "}\n");
    if (text.isLong()) {
        writeOut();
    }
}

void JsonExport::finish()
{
    writeOut();
    if (options.asArray) {
        output << (isFirst ? "[]\n" : "\n]\n");
    }
}

void JsonExport::pause()
{
    writeOut();
    output.flush();
}

void JsonExport::writePlace(const KindPlan& kind, const Place& place)
{
    text.append(kind.head);
    text.number(place.frame.number);
    text.append(",\"byte\":");
    text.number(place.frame.beginOffset);
    if (options.withInput) {
        text.append(",\"input\":");
        text.string(nameOf(place.input));
    }
}

// A file may be called anything; JSON must be valid UTF-8.
const std::string& JsonExport::nameOf(const std::string& input)
{
    if (input != lastInput) {
        lastInput = input;
        lastInputUtf8 = QString::fromStdString(input).toStdString();
    }
    return lastInputUtf8;
}

void JsonExport::writeFields(const Plans& plans, const Message& message)
{
    const std::size_t begin = text.begin();
    for (const Plan& plan : plans) {
        if (plan.single) {
            text.key(plan.key);
            writeValue(plan, plan.info->getValueUnchecked(&message, 0));
        } else {
            writeField(plan, message);
        }
    }
    text.end(begin, '{', '}');
}

void JsonExport::writeField(const Plan& plan, const Message& message)
{
    const unsigned count = plan.info->getCount(&message);
    if (plan.optional && count == 0) {
        return;
    }
    text.key(plan.key);
    if (plan.isText) {
        readCharacters(*plan.info, message, characters);
        writeString(withoutTerminator(characters));
    } else if (plan.repeated) {
        writeArray(plan, message, count);
    } else {
        writeValue(plan, plan.info->getValueUnchecked(&message, 0));
    }
}

void JsonExport::writeArray(const Plan& plan, const Message& message, unsigned count)
{
    const std::size_t begin = text.begin();
    for (unsigned i = 0; i < count; ++i) {
        text.comma();
        writeValue(plan, plan.info->getValueUnchecked(&message, i));
    }
    text.end(begin, '[', ']');
}

void JsonExport::writeValue(const Plan& plan, const FieldValue& value)
{
    switch (plan.type) {
    case FieldType::Byte:
    case FieldType::Unsigned:
        text.number(value.toUnsigned());
        break;
    case FieldType::Signed:
        text.number(value.toSigned());
        break;
    case FieldType::Float64:
        text.real(value.toDouble());
        break;
    case FieldType::Character: {
        const char character = value.toCharacter();
        writeString({&character, 1});
        break;
    }
    case FieldType::SubMessage:
        writeFields(plan.parts, *value.toSubMessage());
        break;
    }
}

void JsonExport::writeTexts(Plans& plans, const Message& message)
{
    const std::size_t begin = text.begin();
    for (Plan& plan : plans) {
        if (plan.hasTexts) {
            writeTextsOf(plan, message);
        }
    }
    text.end(begin, '{', '}');
}

void JsonExport::writeTextsOf(Plan& plan, const Message& message)
{
    const unsigned count = plan.single ? 1 : plan.info->getCount(&message);
    if (count == 0) {
        return;
    }
    if (plan.isText) {
        text.key(plan.key);
        readCharacters(*plan.info, message, characters);
        writeString(upToFirstNul(characters));
    } else if (plan.type == FieldType::SubMessage) {
        text.key(plan.key);
        writeElementTexts(plan, message, count);
    } else {
        writeCodedTexts(plan, message, count);
    }
}

void JsonExport::writeElementTexts(Plan& plan, const Message& message, unsigned count)
{
    const std::size_t begin = text.begin();
    for (unsigned i = 0; i < count; ++i) {
        if (plan.repeated) {
            text.comma();
        }
        writeTexts(plan.parts, *plan.info->getValueUnchecked(&message, i).toSubMessage());
    }
    if (plan.repeated) {
        text.end(begin, '[', ']');
    }
}

// Nothing when no value has a text; beside values that have one stand nulls for the others.
void JsonExport::writeCodedTexts(Plan& plan, const Message& message, unsigned count)
{
    std::size_t begin = 0;
    bool began = false;
    for (unsigned i = 0; i < count; ++i) {
        const FieldValue value = plan.info->getValueUnchecked(&message, i);
        const std::string* meaning = plan.codedTexts.of(message, i, value);
        if (meaning != nullptr && !began) {
            began = true;
            text.key(plan.key);
            begin = text.begin();
            for (unsigned before = 0; before < i; ++before) {
                text.append(",null");
            }
        }
        if (began && plan.repeated) {
            text.comma();
        }
        if (began) {
            meaning != nullptr ? text.string(*meaning) : text.null();
        }
    }
    if (began && plan.repeated) {
        text.end(begin, '[', ']');
    }
}

void JsonExport::writePacked(const Place& place, const Decoded& decoded)
{
    characters.clear();
    appendUnusualFill(characters, place.frame.bytes(), static_cast<std::size_t>(decoded.bits));
    if (!characters.empty()) {
        text.append(",\"fill\":\"");
        text.append(characters);
        text.put('"');
    }
    if (options.withHex) {
        characters.clear();
        appendHex(characters, place.frame.bytes());
        text.append(",\"hex\":\"");
        text.append(characters);
        text.put('"');
    }
}

void JsonExport::writeString(std::string_view bytes)
{
    utf8.clear();
    appendUtf8(utf8, bytes);
    text.string(utf8);
}

void JsonExport::writeOut()
{
    output.write(text.view());
    text.clear();
}
