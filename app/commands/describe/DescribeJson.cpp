#include "base/Names.h"
#include "commands/JsonWriter.h"
#include "commands/describe/DescribeView.h"

#include <limits>

namespace describe {

namespace {

void writeQuantity(JsonWriter& json, const KindModel& kind, const RTCM2_quantity_s& quantity)
{
    json.key("quantity");
    json.beginObject();
    json.member("name", quantity.name);
    json.member("unit", quantity.unit);
    if (quantity.is_satellite != 0) {
        json.member("satelliteOfZero", quantity.zero);
    } else {
        if (quantity.by != nullptr) {
            json.member("by", identifierOf(displayName(kind, quantity.by)));
        }
        json.objects("factors", std::span(quantity.factors, quantity.factor_count),
                     [&](const RTCM2_factor_s& factor) {
                         if (quantity.by != nullptr) {
                             json.member("value", factor.value);
                         }
                         json.number("factor", factorText(factor));
                     });
    }
    json.beginArray("none");
    for (std::uint32_t i = 0; i < quantity.none_count; ++i) {
        json.value(quantity.none[i]);
    }
    json.endArray();
    if (quantity.highest != std::numeric_limits<std::int64_t>::max()) {
        json.member("highest", quantity.highest);
    }
    json.endObject();
}

void writePoint(JsonWriter& json, const KindModel& kind, const RTCM2_point_s& point)
{
    json.member("name", point.name);
    json.beginArray("fields");
    for (const RTCM2_member_s* row : point.position) {
        json.value(identifierOf(displayName(kind, row)));
    }
    json.endArray();
    if (point.from != nullptr) {
        json.member("from", point.from);
    }
}

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
    if (const std::string meaning = meaningName(field); !meaning.empty()) {
        json.member("meaning", meaning);
    }
    if (field.row->system != nullptr) {
        json.member("system", field.row->system->name);
    }
    if (field.row->quantity != nullptr) {
        writeQuantity(json, kind, *field.row->quantity);
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
    if (kind.row->system != nullptr) {
        json.member("system", kind.row->system->name);
    }
    if (kind.row->system_member != nullptr) {
        json.member("systemField", identifierOf(displayName(kind, kind.row->system_member)));
    }
    json.objects("points", std::span(kind.row->points, kind.row->point_count),
                 [&](const RTCM2_point_s& point) { writePoint(json, kind, point); });
    json.member("unsettled", kind.row->is_unsettled != 0);
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
