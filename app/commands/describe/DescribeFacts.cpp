#include "commands/describe/DescribeFacts.h"

#include "format/FieldText.h"

namespace describe {

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
    return result;
}

}    // namespace describe
