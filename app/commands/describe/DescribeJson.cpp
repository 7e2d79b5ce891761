#include "base/Names.h"
#include "commands/JsonWriter.h"
#include "commands/describe/DescribeView.h"

namespace describe {

namespace {

void writeField(JsonWriter& json, const KindModel& kind, const FieldModel& field)
{
    constexpr int byteWidth = 8;    // as the host has it, however few bits the message has
    json.member("index", field.index);
    json.member("name", field.name);
    json.member("identifier", field.identifier);
    json.member("type", typeName(field));
    json.member("width", field.row->type == RTCM2_TYPE_BYTE ? byteWidth : field.row->bits);
    if (field.element != nullptr) {
        json.member("kind", identifierOf(field.element->name));
    }
    json.member("unit", field.unit);
    json.member("optional", field.isOptional());
    json.member("repeated", field.isRepeated());
    json.member("virtual", isVirtual(field));
    json.beginArray("parts");
    for (const std::string& name : partNames(kind, field)) {
        json.value(identifierOf(name));
    }
    json.endArray();
    json.objects("texts", codedValues(field), [&](const RTCM2_text_s& coded) {
        json.member("value", coded.value);
        json.member("text", coded.text);
    });
    if (field.row->has_do_not_use != 0) {
        json.member("doNotUse", field.row->do_not_use);
    }
}

void writeKind(JsonWriter& json, const FormatModel& format, const KindModel& kind)
{
    json.member("name", kind.name);
    json.member("identifier", identifierOf(kind.name));
    json.member("text", kind.text);
    json.member("main", kind.isMain);
    if (kind.typeNumber >= 0) {
        json.member("number", kind.typeNumber);
    }
    json.objects("discriminants", discriminantsOf(kind), [&](const Discriminant& discriminant) {
        json.member("field", identifierOf(discriminant.field));
        json.member("value", discriminant.value);
    });
    json.objects("carriers", carriersOf(format, kind), [&](const Carrier& carrier) {
        json.member("kind", identifierOf(carrier.kind->name));
        json.member("field", carrier.field->identifier);
    });
    json.objects("fields", kind.fields,
                 [&](const FieldModel& field) { writeField(json, kind, field); });
}

}    // namespace

std::string json(const FormatModel& format, const Kinds& kinds)
{
    JsonWriter json;
    json.beginObject();
    json.member("format", format.name());
    json.objects("kinds", kinds, [&](const KindModel* kind) { writeKind(json, format, *kind); });
    json.endObject();
    return json.take();
}

}    // namespace describe
