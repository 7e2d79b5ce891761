#include "commands/describe/DescribeFacts.h"

#include "format/Decimal.h"
#include "format/FieldText.h"

#include <array>
#include <limits>

namespace describe {

namespace {

// "the number times 0.02 where Scale Factor is 0x00, 0.32 where it is 0x01"
std::string productText(const KindModel& kind, const RTCM2_quantity_s& quantity)
{
    std::string text = "the number times ";
    if (quantity.by == nullptr) {
        return text + factorText(*quantity.factors);
    }
    const FieldModel& chooser = *kind.field(displayName(kind, quantity.by));
    for (std::uint32_t i = 0; i < quantity.factor_count; ++i) {
        text += (i > 0 ? ", " : "") + factorText(quantity.factors[i]) + " where " +
                (i > 0 ? "it" : chooser.name) + " is " +
                valueText(chooser, quantity.factors[i].value);
    }
    return text;
}

void appendSystem(std::vector<std::string>& result, const KindModel& kind)
{
    const std::string fixed = kind.row->system != nullptr ? kind.row->system->name : "";
    if (kind.row->system_member != nullptr) {
        result.push_back("Belongs to the system that " +
                         displayName(kind, kind.row->system_member) + " tells" +
                         (fixed.empty() ? "" : ", else to " + fixed));
    } else if (!fixed.empty()) {
        result.push_back("Belongs to " + fixed);
    }
}

void appendPoints(std::vector<std::string>& result, const KindModel& kind)
{
    for (std::uint32_t i = 0; i < kind.row->point_count; ++i) {
        const RTCM2_point_s& point = kind.row->points[i];
        std::vector<std::string> names;
        for (const RTCM2_member_s* row : point.position) {
            names.push_back(displayName(kind, row));
        }
        result.push_back(
            std::string("Tells the point '") + point.name + "' by " + joined(names) +
            (point.from != nullptr ? std::string(", from the point '") + point.from + "'" : ""));
    }
}

}    // namespace

Kinds allKinds(const FormatModel& format)
{
    Kinds kinds;
    for (const auto& kind : format.kinds()) {
        kinds.push_back(kind.get());
    }
    return kinds;
}

std::vector<Carrier> carriersOf(const FormatModel& format, const KindModel& kind)
{
    std::vector<Carrier> carriers;
    for (const KindModel* candidate : allKinds(format)) {
        for (const FieldModel& field : candidate->fields) {
            if (field.element == &kind) {
                carriers.push_back({candidate, &field});
            }
        }
    }
    return carriers;
}

std::vector<Discriminant> discriminantsOf(const KindModel& kind)
{
    const FieldModel* const type = kind.isMain ? kind.field(RTCM2_MEANS_TYPE) : nullptr;
    if (type == nullptr) {
        return {};
    }
    return {{type->name, static_cast<std::uint64_t>(kind.typeNumber)}};
}

std::string displayName(const KindModel& kind, const RTCM2_member_s* row)
{
    for (const KindModel* holder :
         {&kind, kind.row->array != nullptr ? kind.fields.back().element : nullptr}) {
        for (std::size_t i = 0; holder != nullptr && i < holder->fields.size(); ++i) {
            if (holder->fields[i].row == row) {
                return holder->fields[i].name;
            }
        }
    }
    return row->name;
}

const char* typeName(const FieldModel& field)
{
    // By the numbers of RTCM2_type_enum, which never change.
    constexpr const char* names[] = {"unsigned",  "signed", "byte",
                                     "character", "float",  "messages"};
    return names[field.row->type];
}

std::string typeText(const FieldModel& field)
{
    if (field.element != nullptr) {
        return field.element->name;
    }
    const bool widthVaries =
        field.row->type == RTCM2_TYPE_SIGNED || field.row->type == RTCM2_TYPE_UNSIGNED;
    return typeName(field) + (widthVaries ? " " + std::to_string(field.row->bits) : "");
}

bool isVirtual(const FieldModel& field)
{
    const RTCM2_role_enum role = field.row->role;
    return role == RTCM2_ROLE_COUNT || role == RTCM2_ROLE_LOOKUP || role == RTCM2_ROLE_CONSTANT;
}

std::string flagsText(const FieldModel& field)
{
    std::vector<std::string> flags;
    if (field.isOptional()) {
        flags.push_back("optional");
    }
    if (field.isRepeated()) {
        flags.push_back("repeated");
    }
    if (isVirtual(field)) {
        flags.push_back("virtual");
    }
    return joined(flags);
}

std::span<const RTCM2_text_s> codedValues(const FieldModel& field)
{
    return {field.row->texts, field.row->text_count};
}

std::string meaningName(const FieldModel& field)
{
    // By the numbers of RTCM2_meaning_enum, which never change.
    constexpr std::array names = {
        "",       "preamble",  "type",       "station", "time",  "sequence", "words",  "health",
        "system", "satellite", "correction", "rate",    "issue", "accuracy", "height", "text"};
    const auto number = static_cast<std::size_t>(field.row->meaning);
    return number < names.size() ? names[number] : "";
}

std::string factorText(const RTCM2_factor_s& factor)
{
    return textOf({factor.factor, factor.decimals});
}

std::vector<std::string> quantityTexts(const KindModel& kind, const FieldModel& field)
{
    std::vector<std::string> texts;
    if (field.row->system != nullptr) {
        texts.push_back(std::string("means something with ") + field.row->system->name + " only");
    }
    const RTCM2_quantity_s* const quantity = field.row->quantity;
    if (quantity == nullptr) {
        return texts;
    }
    const std::string name = quantity->name;
    if (quantity->is_satellite != 0) {
        texts.push_back(name + ": a satellite of the system; 0 is satellite " +
                        std::to_string(quantity->zero));
    } else {
        texts.push_back(name + ": " + productText(kind, *quantity) + ", in " + quantity->unit);
    }
    for (std::uint32_t i = 0; i < quantity->none_count; ++i) {
        texts.push_back("no " + name + " when " + valueText(field, quantity->none[i]));
    }
    if (quantity->highest != std::numeric_limits<std::int64_t>::max()) {
        texts.push_back("no " + name + " above " + valueText(field, quantity->highest));
    }
    return texts;
}

std::string valueText(const FieldModel& field, std::int64_t value)
{
    Text text;
    text.append(field.row->type == RTCM2_TYPE_BYTE ? "0x" : "");
    appendPlain(text, field, value);
    return std::string(text.view());
}

std::vector<std::string> partNames(const KindModel& kind, const FieldModel& field)
{
    std::vector<std::string> names;
    for (const FieldModel& part : kind.fields) {
        if (part.row->role == RTCM2_ROLE_SLICE && part.row->of == field.row) {
            names.push_back(part.name);
        }
    }
    return names;
}

std::string joined(const std::vector<std::string>& texts, const char* separator)
{
    std::string result;
    for (const std::string& text : texts) {
        result += (result.empty() ? "" : separator) + text;
    }
    return result;
}

std::string carriersText(const FormatModel& format, const KindModel& kind)
{
    std::vector<std::string> texts;
    for (const Carrier& carrier : carriersOf(format, kind)) {
        texts.push_back(carrier.kind->name + " (" + carrier.field->name + ")");
    }
    return joined(texts);
}

std::vector<std::string> statements(const FormatModel& format, const KindModel& kind)
{
    std::vector<std::string> result;
    for (const Discriminant& discriminant : discriminantsOf(kind)) {
        result.push_back("Identified by " + discriminant.field + " = " +
                         std::to_string(discriminant.value));
    }
    const std::string carriers = carriersText(format, kind);
    if (!carriers.empty()) {
        result.push_back("Part of " + carriers);
    }
    appendSystem(result, kind);
    appendPoints(result, kind);
    if (kind.row->is_unsettled != 0) {
        result.push_back("The units of its numbers are not settled: they stay raw where "
                         "they have no quantity");
    }
    return result;
}

}    // namespace describe
