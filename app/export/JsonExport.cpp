#include "JsonExport.h"

#include "Characters.h"
#include "FieldInfo.h"
#include "PackedText.h"

#include <algorithm>

namespace {

constexpr std::size_t bytesAtOnce = 1 << 16;

}    // namespace

JsonExport::JsonExport(Output& out, JsonOptions jsonOptions,
                       const std::vector<const KindModel*>& kinds)
    : output(out), options(std::move(jsonOptions)), buffer(nullptr, 2 * bytesAtOnce)
{
    for (const KindModel* kind : kinds) {
        kindPlans.emplace(kind, plansFor(chosenFields(*kind, options.fields)));
    }
}

JsonExport::Plans JsonExport::plansFor(const std::vector<ChosenField>& fields)
{
    Plans plans;
    for (const ChosenField& chosen : fields) {
        const FieldModel& field = *chosen.field;
        Plan plan{.info = field.info,
                  .key = JsonWriter::preparedKey(field.identifier),
                  .type = field.type,
                  .repeated = field.repeated,
                  .optional = field.optional,
                  .isText = field.isText(),
                  .codedTexts = CodedTexts(field.info),
                  .hasTexts = field.isText() || !CodedTexts(field.info).isEmpty(),
                  .parts = plansFor(chosen.parts)};
        plan.hasTexts =
            plan.hasTexts || std::any_of(plan.parts.begin(), plan.parts.end(),
                                         [](const Plan& part) { return part.hasTexts; });
        plans.push_back(std::move(plan));
    }
    return plans;
}

void JsonExport::message(const Place& place, const Decoded& decoded)
{
    if (options.asArray) {
        for (const char character : std::string_view(isFirst ? "[\n" : ",\n")) {
            buffer.Put(character);
        }
    }
    isFirst = false;
    Plans& plans = kindPlans[&decoded.kind];
    beginObject(place, decoded);
    writer.Key("fields");
    writeFields(plans, decoded.message);
    if (options.withTexts) {
        writer.Key("texts");
        writeTexts(plans, decoded.message);
    }
    writePacked(place, decoded);
    writer.EndObject();
    if (!options.asArray) {
        buffer.Put('\n');
    }
    if (buffer.GetSize() >= bytesAtOnce) {
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

void JsonExport::beginObject(const Place& place, const Decoded& decoded)
{
    writer.Reset(buffer);
    writer.StartObject();
    writer.Key("kind");
    writer.String(decoded.kind.name);
    writer.Key("number");
    writer.Uint64(place.frame.number);
    writer.Key("byte");
    writer.Uint64(place.frame.beginOffset);
    if (options.withInput) {
        writer.Key("input");
        writer.String(nameOf(place.input));
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
    writer.StartObject();
    for (const Plan& plan : plans) {
        writeField(plan, message);
    }
    writer.EndObject();
}

void JsonExport::writeField(const Plan& plan, const Message& message)
{
    const unsigned count = plan.optional || plan.repeated ? plan.info->getCount(&message) : 1;
    if (plan.optional && count == 0) {
        return;
    }
    writer.key(plan.key);
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
    writer.StartArray();
    for (unsigned i = 0; i < count; ++i) {
        writeValue(plan, plan.info->getValueUnchecked(&message, i));
    }
    writer.EndArray();
}

void JsonExport::writeValue(const Plan& plan, const FieldValue& value)
{
    switch (plan.type) {
    case FieldType::Byte:
    case FieldType::Unsigned:
        writer.Uint64(value.toUnsigned());
        break;
    case FieldType::Signed:
        writer.Int64(value.toSigned());
        break;
    case FieldType::Float64:
        writer.real(value.toDouble());
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
    writer.StartObject();
    for (Plan& plan : plans) {
        if (plan.hasTexts) {
            writeTextsOf(plan, message);
        }
    }
    writer.EndObject();
}

void JsonExport::writeTextsOf(Plan& plan, const Message& message)
{
    const unsigned count = plan.info->getCount(&message);
    if (count == 0) {
        return;
    }
    if (plan.isText) {
        writer.key(plan.key);
        readCharacters(*plan.info, message, characters);
        writeString(upToFirstNul(characters));
    } else if (plan.type == FieldType::SubMessage) {
        writer.key(plan.key);
        if (plan.repeated) {
            writer.StartArray();
        }
        for (unsigned i = 0; i < count; ++i) {
            writeTexts(plan.parts, *plan.info->getValueUnchecked(&message, i).toSubMessage());
        }
        if (plan.repeated) {
            writer.EndArray();
        }
    } else {
        writeCodedTexts(plan, message, count);
    }
}

// Nothing when no value has a text; beside values that have one stand nulls for the others.
void JsonExport::writeCodedTexts(Plan& plan, const Message& message, unsigned count)
{
    bool began = false;
    for (unsigned i = 0; i < count; ++i) {
        const FieldValue value = plan.info->getValueUnchecked(&message, i);
        const std::string* text = plan.codedTexts.of(message, i, value);
        if (text != nullptr && !began) {
            began = true;
            writer.key(plan.key);
            if (plan.repeated) {
                writer.StartArray();
            }
            for (unsigned before = 0; before < i; ++before) {
                writer.Null();
            }
        }
        if (began) {
            text != nullptr ? writer.String(std::string_view(*text)) : writer.Null();
        }
    }
    if (began && plan.repeated) {
        writer.EndArray();
    }
}

void JsonExport::writePacked(const Place& place, const Decoded& decoded)
{
    characters.clear();
    appendUnusualFill(characters, place.frame.bytes(), static_cast<std::size_t>(decoded.bits));
    if (!characters.empty()) {
        writer.Key("fill");
        writer.String(std::string_view(characters));
    }
    if (options.withHex) {
        characters.clear();
        appendHex(characters, place.frame.bytes());
        writer.Key("hex");
        writer.String(std::string_view(characters));
    }
}

void JsonExport::writeString(std::string_view text)
{
    utf8.clear();
    appendUtf8(utf8, text);
    writer.String(std::string_view(utf8));
}

void JsonExport::writeOut()
{
    output.write({buffer.GetString(), buffer.GetSize()});
    buffer.Clear();
}
