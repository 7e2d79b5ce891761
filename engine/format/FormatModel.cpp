#include "format/FormatModel.h"

#include "base/Names.h"
#include "framing/Header.h"

#include "FormatInfo.h"
#include "MessageInfo.h"

#include <algorithm>

namespace {

// A name in code as people would write it.
std::string wordsOf(const char* name)
{
    std::string words = identifierOf(name);
    std::replace(words.begin(), words.end(), '_', ' ');
    return words;
}

bool standsInHeader(const FieldModel& field)
{
    constexpr int bitsOfHeader = static_cast<int>(framing::headerBytes) * 8;
    const RTCM2_member_s& row = *field.row;
    return row.role == RTCM2_ROLE_WIRE && row.first_bit >= 0 &&
           row.first_bit + row.bits <= bitsOfHeader;
}

}    // namespace

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

bool KindModel::decidesPresence(const FieldModel& field) const
{
    return std::any_of(fields.begin(), fields.end(), [&](const FieldModel& other) {
        const RTCM2_member_s* const when = other.row->when;
        return when == field.row || (when != nullptr && when->of == field.row);
    });
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
    for (std::int32_t number = 1; number <= RTCM2_last_kind(); ++number) {
        addKind(*RTCM2_kind(number));
    }
    for (const MessageInfo* info : format->getMessageInfos()) {
        const RTCM2_kind_s* const row = RTCM2_find_kind(info->getName().toUtf8().constData());
        byNumber[static_cast<std::size_t>(row->kind)]->info = info;
    }
    std::stable_sort(allKinds.begin(), allKinds.end(), [](const auto& a, const auto& b) {
        return a->isMain != b->isMain ? a->isMain : a->typeNumber < b->typeNumber;
    });
    for (const auto& kind : allKinds) {
        addFields(*kind);
        addQuantities(*kind);
    }
    describeUnknown();
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

void FormatModel::addKind(const RTCM2_kind_s& row)
{
    auto kind = std::make_unique<KindModel>();
    const bool isDescribed = *row.display != '\0';
    kind->row = &row;
    kind->name = isDescribed ? row.display : wordsOf(row.name);
    kind->isMain = row.type >= 0;
    kind->typeNumber = row.type;
    if (kind->isMain) {
        kind->text = *row.text != '\0' ? row.text : row.family;
        describedKind = describedKind == nullptr && isDescribed ? &row : describedKind;
    }
    byNumber[static_cast<std::size_t>(row.kind)] = kind.get();
    allKinds.push_back(std::move(kind));
}

void FormatModel::addFields(KindModel& kind) const
{
    for (std::uint32_t i = 0; i < kind.row->member_count; ++i) {
        kind.fields.push_back(fieldOf(kind.row->members[i]));
        kind.fields.back().index = static_cast<int>(i);
    }
}

// Kinds without names have the names of others where they share a member with them.
FieldModel FormatModel::fieldOf(const RTCM2_member_s& row) const
{
    const RTCM2_member_s* named = &row;
    if (*row.display == '\0' && describedKind != nullptr) {
        named = RTCM2_find_member(describedKind, row.name);
    }
    FieldModel field;
    field.row = &row;
    RTCM2_compile_reader(&row, &field.reader);
    field.name = named != nullptr && *named->display != '\0' ? named->display : wordsOf(row.name);
    field.identifier = identifierOf(field.name);
    field.unit = row.unit;
    field.element = modelOf(row.elements);
    return field;
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

void FormatModel::describeUnknown()
{
    const KindModel& like = *allKinds.front();
    unknown.row = like.row;
    unknown.name = "Unknown Type";
    unknown.isUnknown = true;
    std::copy_if(like.fields.begin(), like.fields.end(), std::back_inserter(unknown.fields),
                 standsInHeader);
    addQuantities(unknown);
}
