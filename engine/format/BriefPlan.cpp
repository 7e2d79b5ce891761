#include "format/BriefPlan.h"

#include "format/FieldText.h"

#include <algorithm>
#include <span>

namespace {

bool standsInFront(const FieldModel& field)
{
    switch (field.row->meaning) {
    case RTCM2_MEANS_PREAMBLE:
    case RTCM2_MEANS_TYPE:
    case RTCM2_MEANS_STATION:
    case RTCM2_MEANS_TIME:
    case RTCM2_MEANS_SEQUENCE:
    case RTCM2_MEANS_WORDS:
    case RTCM2_MEANS_HEALTH:
        return true;
    default:
        return false;
    }
}

bool isOfPoint(const KindModel& kind, const RTCM2_member_s* row)
{
    const std::span points(kind.row->points, kind.row->point_count);
    return std::any_of(points.begin(), points.end(), [&](const RTCM2_point_s& point) {
        return std::find(std::begin(point.position), std::end(point.position), row) !=
               std::end(point.position);
    });
}

// Whether the field only tells how others are to be read, which they show themselves.
bool servesOthers(const KindModel& kind, const RTCM2_member_s* row)
{
    return row->role == RTCM2_ROLE_COUNT ||
           std::any_of(kind.fields.begin(), kind.fields.end(), [&](const FieldModel& other) {
               return other.row->length == row || other.row->when == row || other.row->of == row ||
                      (other.row->quantity != nullptr && other.row->quantity->by == row);
           });
}

const FieldModel& fieldOfRow(const KindModel& kind, const RTCM2_member_s* row)
{
    return *std::find_if(kind.fields.begin(), kind.fields.end(),
                         [&](const FieldModel& field) { return field.row == row; });
}

std::string unitBehind(const FieldModel& quantity)
{
    return quantity.unit.empty() ? "" : " " + quantity.unit;
}

}    // namespace

BriefPlan::BriefPlan(const KindModel& kind, bool all) : tellsAll(all)
{
    if (kind.row->array != nullptr && !kind.isUnknown) {
        addArray(fieldOfRow(kind, kind.row->array));
        return;
    }
    for (const FieldModel& field : kind.fields) {
        for (std::uint32_t i = 0; !kind.isUnknown && i < kind.row->point_count; ++i) {
            if (kind.row->points[i].position[0] == field.row) {
                addPoint(kind, kind.row->points[i]);
            }
        }
        if (!standsInFront(field) && !isOfPoint(kind, field.row) &&
            !servesOthers(kind, field.row)) {
            addField(kind, field);
        }
    }
}

void BriefPlan::addArray(const FieldModel& field)
{
    const KindModel& element = *field.element;
    Item item{.shape = Shape::elements, .field = &field};
    const FieldModel* const satellite = element.field(RTCM2_MEANS_SATELLITE);
    item.satellite = satellite != nullptr ? element.quantityOf(*satellite) : nullptr;
    if (item.satellite != nullptr) {
        item.shape = Shape::satellites;
        item.correction = element.field(RTCM2_MEANS_CORRECTION);
        item.scaled = item.correction != nullptr ? element.quantityOf(*item.correction) : nullptr;
        if (item.scaled != nullptr) {
            item.shape = Shape::corrections;
            item.unit = unitBehind(*item.scaled);
        }
    }
    items.push_back(std::move(item));
}

void BriefPlan::addPoint(const KindModel& kind, const RTCM2_point_s& point)
{
    Item item{.shape = Shape::point,
              .field = nullptr,
              .label = point.name + std::string(" "),
              .unit = {}};
    for (std::size_t i = 0; i < item.position.size(); ++i) {
        item.position[i] = kind.quantityOf(fieldOfRow(kind, point.position[i]));
    }
    item.field = item.position[0];
    item.unit = unitBehind(*item.field);
    items.push_back(std::move(item));
}

void BriefPlan::addField(const KindModel& kind, const FieldModel& field)
{
    const FieldModel* const quantity = kind.quantityOf(field);
    const bool isCode = field.row->type == RTCM2_TYPE_BYTE;
    Item item{.shape = Shape::number, .field = &field, .label = field.name + " "};
    if (field.isText()) {
        item.shape = Shape::text;
        item.label = field.row->meaning == RTCM2_MEANS_TEXT ? "" : item.label;
    } else if (field.isRepeated()) {
        item.shape = Shape::bytes;
        item.label.clear();
    } else if (quantity != nullptr) {
        item.shape = Shape::quantity;
        item.field = quantity;
        item.unit = unitBehind(*quantity);
    } else if (field.hasTexts()) {
        item.shape = Shape::coded;
        item.label = field.row->meaning == RTCM2_MEANS_SYSTEM ? "" : item.label;
    } else if (isCode || field.isReal()) {
        return;    // nothing that it would tell without the others
    }
    items.push_back(std::move(item));
}

void BriefPlan::append(Text& text, const void* record) const
{
    for (const Item& item : items) {
        const std::size_t begin = text.size();
        if (item.shape <= Shape::elements) {
            appendElements(text, item, record);
        } else if (appendItem(text, item, record)) {
            text.append(", ");
        } else {
            text.cut(begin);
        }
    }
    if (text.view().ends_with(", ")) {
        text.cut(text.size() - 2);
    }
}

// False where the record has no such value.
bool BriefPlan::appendItem(Text& text, const Item& item, const void* record) const
{
    const FieldModel& field = *item.field;
    if (field.count(record) == 0 ||
        (!tellsAll && field.row->system != nullptr && !field.concerns(RTCM2_system_of(record)))) {
        return false;
    }
    text.append(item.label);
    switch (item.shape) {
    case Shape::point:
        return appendPoint(text, item, record);
    case Shape::text:
        text.append('"');
        appendRaw(text, field, record);
        text.append('"');
        return true;
    case Shape::bytes:
        appendBytes(text, item, record);
        return true;
    case Shape::quantity:
        if (!appendQuantity(text, field, record)) {
            return false;
        }
        text.append(item.unit);
        return true;
    default:
        appendInterpreted(text, field, record, true);
        return true;
    }
}

void BriefPlan::appendElements(Text& text, const Item& item, const void* record)
{
    const FieldModel& field = *item.field;
    const unsigned count = field.count(record);
    if (item.shape == Shape::elements || count == 0) {
        appendUnsigned(text, count);
        text.append(" x ");
        text.append(field.element->name);
        return;
    }
    field.eachElement(record, [&](const void* element) {
        if (item.shape == Shape::corrections) {
            appendCorrection(text, item, element);
        } else {
            text.end(putQuantity(text.room(RTCM2_QUANTITY_ROOM), *item.satellite, element));
            text.append(' ');
        }
    });
    text.cut(text.size() - (item.shape == Shape::corrections ? 2 : 1));
}

// "G06 -4.34 m, "
void BriefPlan::appendCorrection(Text& text, const Item& item, const void* element)
{
    constexpr std::string_view notToBeUsed = "do not use";
    char* out = text.room(2 * RTCM2_QUANTITY_ROOM + notToBeUsed.size() + item.unit.size() + 4);
    out = putQuantity(out, *item.satellite, element);
    *out++ = ' ';
    char* const behind = putQuantity(out, *item.scaled, element);
    const std::string_view rest = behind != out ? std::string_view(item.unit) : notToBeUsed;
    std::memcpy(behind, rest.data(), rest.size());
    std::memcpy(behind + rest.size(), ", ", 2);
    text.end(behind + rest.size() + 2);
}

bool BriefPlan::appendPoint(Text& text, const Item& item, const void* record)
{
    for (const FieldModel* coordinate : item.position) {
        if (!appendQuantity(text, *coordinate, record)) {
            return false;
        }
        text.append(' ');
    }
    text.cut(text.size() - 1);
    text.append(item.unit);
    return true;
}

// What the first one means, and how many they are.
void BriefPlan::appendBytes(Text& text, const Item& item, const void* record)
{
    const unsigned count = item.field->count(record);
    if (const char* const meaning =
            meaningOf(*item.field, RTCM2_reader_integer(&item.field->reader, record, 0))) {
        text.append(meaning);
        text.append(", ");
    }
    appendUnsigned(text, count);
    text.append(count == 1 ? " byte" : " bytes");
}
