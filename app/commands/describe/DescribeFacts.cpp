#include "commands/describe/DescribeFacts.h"

#include "FieldInfo.h"
#include "MessageInfo.h"

namespace describe {

std::vector<Carrier> carriersOf(const FormatModel& format, const KindModel& kind)
{
    std::vector<Carrier> carriers;
    for (const auto& candidate : format.kinds()) {
        for (const FieldModel& field : candidate->fields) {
            if (field.element == &kind) {
                carriers.push_back({candidate.get(), &field});
            }
        }
    }
    return carriers;
}

const char* typeName(FieldType::Kind type)
{
    switch (type) {
    case FieldType::Byte:
        return "byte";
    case FieldType::Character:
        return "character";
    case FieldType::Float64:
        return "float";
    case FieldType::Signed:
        return "signed";
    case FieldType::Unsigned:
        return "unsigned";
    case FieldType::SubMessage:
        return "messages";
    }
    return "";
}

std::string typeText(const FieldModel& field)
{
    if (field.element != nullptr) {
        return field.element->name;
    }
    const FieldType::Kind type = field.info->getType().getKind();
    const std::string name = typeName(type);
    const bool widthVaries = type == FieldType::Signed || type == FieldType::Unsigned;
    return widthVaries ? name + " " + std::to_string(field.info->getType().getWidth()) : name;
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
    if (field.info->isVirtual()) {
        flags.push_back("virtual");
    }
    return joined(flags);
}

std::string valueText(const FieldValue& value)
{
    switch (value.getKind()) {
    case FieldType::Byte:
        return "0x" + QString::number(value.toUnsigned(), 16)
                          .rightJustified(2, QLatin1Char('0'))
                          .toStdString();
    case FieldType::Character:
        return QString(QLatin1Char(value.toCharacter())).toStdString();
    case FieldType::Float64:
        return QString::number(value.toDouble(), 'g', 17).toStdString();
    case FieldType::Signed:
        return std::to_string(value.toSigned());
    case FieldType::Unsigned:
        return std::to_string(value.toUnsigned());
    case FieldType::SubMessage:
        break;
    }
    return "";
}

std::vector<std::string> partNames(const FieldModel& field)
{
    std::vector<std::string> names;
    for (const FieldInfo* part : field.info->getSubFieldInfos()) {
        names.push_back(part->getName().toStdString());
    }
    return names;
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string result;
    for (const std::string& text : texts) {
        result += (result.empty() ? "" : ", ") + text;
    }
    return result;
}

std::string identification(const KindModel& kind)
{
    std::vector<std::string> conditions;
    for (const MessageInfo::Discriminant& discriminant : kind.info->getDiscriminantValues()) {
        conditions.push_back(discriminant.first->getName().toStdString() + " = " +
                             valueText(discriminant.second));
    }
    return joined(conditions);
}

std::string carriersText(const FormatModel& format, const KindModel& kind)
{
    std::vector<std::string> texts;
    for (const Carrier& carrier : carriersOf(format, kind)) {
        texts.push_back(carrier.kind->name + " (" + carrier.field->name + ")");
    }
    return joined(texts);
}

}    // namespace describe
