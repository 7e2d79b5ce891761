#include "viewer/panes/ElementTableModel.h"

#include "viewer/panes/FieldCells.h"
#include "viewer/panes/PaneColours.h"

#include <algorithm>

void ElementTableModel::show(const MessageDetail* shown)
{
    beginResetModel();
    detail = shown != nullptr && shown->record != nullptr ? shown : nullptr;
    arrayField = -1;
    shownFields.clear();
    if (detail != nullptr) {
        const auto& fields = detail->kind->fields;
        const auto array = std::find_if(fields.begin(), fields.end(),
                                        [](const auto& field) { return field.element != nullptr; });
        if (array != fields.end()) {
            arrayField = array->index;
            for (const FieldModel& field : array->element->fields) {
                shownFields.push_back(&field);
                if (const FieldModel* const quantity = array->element->quantityOf(field)) {
                    shownFields.push_back(quantity);
                }
            }
        }
    }
    endResetModel();
}

FieldPlace ElementTableModel::placeOf(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return {};
    }
    return {arrayField, index.row(), shownFields[static_cast<std::size_t>(index.column())]->index};
}

QModelIndex ElementTableModel::indexOf(const FieldPlace& place) const
{
    if (place.field != arrayField || place.element < 0) {
        return {};
    }
    const auto shown = std::find_if(shownFields.begin(), shownFields.end(), [&](const auto* field) {
        return field->index == std::max(place.part, 0);
    });
    return index(place.element, static_cast<int>(shown - shownFields.begin()));
}

int ElementTableModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() || arrayField < 0) {
        return 0;
    }
    const FieldSpot array = spotOf(*detail, {arrayField});
    return static_cast<int>(array.field->count(array.record));
}

int ElementTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(shownFields.size());
}

QVariant ElementTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const FieldSpot spot = spotAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return meaningOf(spot).isEmpty() ? numberOf(spot) : meaningOf(spot);
    case Qt::ToolTipRole:
        return nameOf(*detail, placeOf(index)) + QStringLiteral(": ") +
               valueOf(spotOf(*detail, placeOf(index)));
    case Qt::ForegroundRole:
        return PaneColours::textOf(spot);
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignVCenter |
                                (meaningOf(spot).isEmpty() ? Qt::AlignRight : Qt::AlignLeft));
    case sortRole:
        return sortKeyOf(spot);
    default:
        return {};
    }
}

QVariant ElementTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return section + 1;
    }
    const FieldModel& field = *shownFields.at(static_cast<std::size_t>(section));
    if (field.isScaled()) {
        const auto& whole = detail->kind->fields[static_cast<std::size_t>(arrayField)];
        return QStringLiteral("%1, %2").arg(
            QString::fromStdString(
                whole.element->fields[static_cast<std::size_t>(field.index)].name),
            QString::fromStdString(field.unit));
    }
    return QString::fromStdString(field.name);
}

FieldSpot ElementTableModel::spotAt(const QModelIndex& index) const
{
    const FieldSpot element = spotOf(*detail, {arrayField, index.row()});
    return {element.kind, shownFields[static_cast<std::size_t>(index.column())], element.record};
}

// Compiled here instead of on its own.
#include "moc_ElementTableModel.cpp"
