#include "format/FormatModel.h"

#include "base/Names.h"

#include "FieldInfo.h"
#include "FormatInfo.h"
#include "Message.h"
#include "MessageInfo.h"

#include <algorithm>

const FieldModel* KindModel::field(std::string_view nameOrIdentifier) const
{
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const FieldModel& candidate) {
        return sameName(candidate.name, nameOrIdentifier);
    });
    return found != fields.end() ? &*found : nullptr;
}

FormatModel::FormatModel(const FormatInfo* format) : formatName(format->getName().toStdString())
{
    for (const MessageInfo* info : format->getMessageInfos()) {
        addKind(info);
    }
    for (const MessageInfo* info : format->getSubMessageInfos()) {
        addKind(info);
    }
    for (const auto& kind : allKinds) {
        addFields(*kind);
    }
}

const KindModel* FormatModel::kindOf(const Message& message) const
{
    return kindOf(message.getMessageInfo());
}

const KindModel* FormatModel::kind(std::string_view nameOrNumber) const
{
    const auto found = std::find_if(allKinds.begin(), allKinds.end(), [&](const auto& candidate) {
        return sameName(candidate->name, nameOrNumber) ||
               (candidate->typeNumber >= 0 &&
                std::to_string(candidate->typeNumber) == nameOrNumber);
    });
    return found != allKinds.end() ? found->get() : nullptr;
}

void FormatModel::addKind(const MessageInfo* info)
{
    auto kind = std::make_unique<KindModel>();
    kind->info = info;
    kind->name = info->getName().toStdString();
    kind->text = info->getShortDescriptiveText().toStdString();
    kind->isMain = info->isMain();
    for (const MessageInfo::Discriminant& discriminant : info->getDiscriminantValues()) {
        kind->typeNumber = static_cast<int>(discriminant.second.toUnsigned());
    }
    byInfo.insert(info, kind.get());
    allKinds.push_back(std::move(kind));
}

void FormatModel::addFields(KindModel& kind) const
{
    for (const FieldInfo* info : kind.info->getFieldInfos()) {
        FieldModel field;
        field.info = info;
        field.index = static_cast<int>(kind.fields.size());
        field.name = info->getName().toStdString();
        field.identifier = identifierOf(field.name);
        field.unit = info->getUnit().toStdString();
        field.type = info->getType().getKind();
        field.repeated = info->isRepeated();
        field.optional = info->isOptional();
        field.element = kindOf(info->getType().getSubMessageInfo());
        field.hasTexts = !info->getSymbolicValues().isEmpty() || info->hasDoNotUseValue();
        kind.fields.push_back(std::move(field));
    }
}
