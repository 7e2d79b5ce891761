#include "format/FormatModel.h"

#include "base/Names.h"

#include "FieldInfo.h"
#include "FormatInfo.h"
#include "MessageInfo.h"

#include <algorithm>

const FieldModel* KindModel::field(std::string_view nameOrIdentifier) const
{
    for (const auto* const list : {&fields, &quantities}) {
        const auto found =
            std::find_if(list->begin(), list->end(), [&](const FieldModel& candidate) {
                return sameName(candidate.name, nameOrIdentifier);
            });
        if (found != list->end()) {
            return &*found;
        }
    }
    return nullptr;
}

const FieldModel* KindModel::field(RTCM2_meaning_enum meaning) const
{
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const FieldModel& candidate) {
        return candidate.row->meaning == meaning;
    });
    return found != fields.end() ? &*found : nullptr;
}

const FieldModel* KindModel::quantityOf(const FieldModel& field) const
{
    const auto found =
        std::find_if(quantities.begin(), quantities.end(),
                     [&](const FieldModel& candidate) { return candidate.row == field.row; });
    return found != quantities.end() ? &*found : nullptr;
}

FormatModel::FormatModel(const FormatInfo* format)
    : formatName(format->getName().toStdString()),
      byNumber(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    for (const MessageInfo* info : format->getMessageInfos()) {
        addKind(info);
    }
    for (const MessageInfo* info : format->getSubMessageInfos()) {
        addKind(info);
    }
    for (const auto& kind : allKinds) {
        addFields(*kind);
        addQuantities(*kind);
    }
}

const KindModel* FormatModel::kindOf(const void* record) const
{
    return modelOf(RTCM2_kind_of(record));
}

const KindModel* FormatModel::modelOf(const RTCM2_kind_s* row) const
{
    return row != nullptr ? byNumber[static_cast<std::size_t>(row->kind)] : nullptr;
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
    kind->row = RTCM2_find_kind(kind->name.c_str());
    kind->text = info->getShortDescriptiveText().toStdString();
    kind->isMain = info->isMain();
    kind->typeNumber = kind->row->type;
    byNumber[static_cast<std::size_t>(kind->row->kind)] = kind.get();
    allKinds.push_back(std::move(kind));
}

void FormatModel::addFields(KindModel& kind) const
{
    for (const FieldInfo* info : kind.info->getFieldInfos()) {
        FieldModel field;
        field.info = info;
        field.index = static_cast<int>(kind.fields.size());
        field.name = info->getName().toStdString();
        field.row = RTCM2_find_member(kind.row, field.name.c_str());
        RTCM2_compile_reader(field.row, &field.reader);
        field.identifier = identifierOf(field.name);
        field.unit = info->getUnit().toStdString();
        field.element = modelOf(field.row->elements);
        kind.fields.push_back(std::move(field));
    }
}

void FormatModel::addQuantities(KindModel& kind)
{
    for (const FieldModel& field : kind.fields) {
        const RTCM2_quantity_s* const row = field.row->quantity;
        if (row == nullptr) {
            continue;
        }
        FieldModel quantity = field;
        RTCM2_compile_quantity(field.row, &quantity.quantity.emplace());
        quantity.name = row->name;
        quantity.identifier = row->name;
        quantity.unit = row->unit;
        kind.quantities.push_back(std::move(quantity));
    }
}
