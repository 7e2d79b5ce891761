#include "viewer/panes/FieldTreeModel.h"

#include "viewer/panes/FieldCells.h"
#include "viewer/panes/PaneColours.h"

namespace {

// What an index holds of its parent: the field and the element that it is in, each plus 1.
constexpr int elementShift = 16;
constexpr quintptr fieldMask = (quintptr{1} << elementShift) - 1;

quintptr idInside(int field, int element)
{
    return static_cast<quintptr>(field + 1) | static_cast<quintptr>(element + 1) << elementShift;
}

bool isDerived(const FieldSpot& spot)
{
    const RTCM2_role_enum role = spot.field != nullptr ? spot.field->row->role : RTCM2_ROLE_ARRAY;
    return role == RTCM2_ROLE_COUNT || role == RTCM2_ROLE_LOOKUP;
}

}    // namespace

void FieldTreeModel::show(const MessageDetail* shown, const BitMap* map)
{
    beginResetModel();
    detail = shown;
    bitMap = map;
    endResetModel();
}

FieldPlace FieldTreeModel::placeOf(const QModelIndex& index)
{
    if (!index.isValid()) {
        return {};
    }
    const int field = static_cast<int>(index.internalId() & fieldMask) - 1;
    const int element = static_cast<int>(index.internalId() >> elementShift) - 1;
    if (field < 0) {
        return {index.row()};
    }
    return element < 0 ? FieldPlace{field, index.row()} : FieldPlace{field, element, index.row()};
}

QModelIndex FieldTreeModel::indexOf(const FieldPlace& place, int column) const
{
    QModelIndex found = index(place.field, place.element < 0 ? column : 0);
    if (found.isValid() && place.element >= 0) {
        found = index(place.element, place.part < 0 ? column : 0, found);
    }
    return found.isValid() && place.part >= 0 ? index(place.part, column, found) : found;
}

QModelIndex FieldTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    const FieldPlace above = placeOf(parent);
    return createIndex(row, column, idInside(above.field, above.element));
}

QModelIndex FieldTreeModel::parent(const QModelIndex& child) const
{
    const FieldPlace place = placeOf(child);
    if (place.element < 0) {
        return {};
    }
    return place.part < 0 ? createIndex(place.field, 0, idInside(-1, -1))
                          : createIndex(place.element, 0, idInside(place.field, -1));
}

int FieldTreeModel::rowCount(const QModelIndex& parent) const
{
    if (detail == nullptr || detail->record == nullptr || parent.column() > 0) {
        return 0;
    }
    if (!parent.isValid()) {
        return static_cast<int>(detail->kind->fields.size());
    }
    const FieldPlace place = placeOf(parent);
    const FieldSpot spot = spotOf(*detail, place);
    if (spot.field == nullptr) {
        return spot.kind != nullptr ? static_cast<int>(spot.kind->fields.size()) : 0;
    }
    const bool hasElements = place.element < 0 && spot.field->element != nullptr;
    return hasElements ? static_cast<int>(spot.field->count(spot.record)) : 0;
}

int FieldTreeModel::columnCount(const QModelIndex&) const
{
    return columns;
}

QVariant FieldTreeModel::data(const QModelIndex& index, int role) const
{
    const FieldPlace place = placeOf(index);
    if (place.isNone()) {
        return {};
    }
    const FieldSpot spot = spotOf(*detail, place);
    switch (role) {
    case Qt::DisplayRole:
        return cell(place, index.column());
    case Qt::ToolTipRole:
        return toolTip(place, spot);
    case Qt::ForegroundRole:
        return PaneColours::textOf(spot);
    default:
        return {};
    }
}

QVariant FieldTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{tr("Field"), tr("Value"), tr("Text"), tr("Quantity"),
                                    tr("Bits")};
    const bool isTitle = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isTitle && section < columns ? QVariant(titles.at(section)) : QVariant();
}

QString FieldTreeModel::cell(const FieldPlace& place, int column) const
{
    const FieldSpot spot = spotOf(*detail, place);
    const FieldModel* const field = spot.field;
    switch (column) {
    case name:
        return field != nullptr ? QString::fromStdString(field->name) : nameOf(*detail, place);
    case number:
        return field != nullptr && !field->isPresent(spot.record) ? tr("absent") : numberOf(spot);
    case meaning:
        return field != nullptr && field->element != nullptr
                   ? QString::fromStdString(field->element->name)
                   : meaningOf(spot);
    case quantity:
        return quantityOf(spot);
    default:
        return bitsText(place, spot);
    }
}

// Where it stands and how wide it is.
QString FieldTreeModel::bitsText(const FieldPlace& place, const FieldSpot& spot) const
{
    const BitRange range = bitMap->bitsOf(place);
    if (range.count == 0) {
        return {};
    }
    const QString where = range.count == 1 ? QString::number(range.first)
                                           : tr("%1 to %2").arg(range.first).arg(range.end() - 1);
    return isDerived(spot) ? tr("from %1").arg(where) : tr("%1 (%2)").arg(where).arg(range.count);
}

QString FieldTreeModel::toolTip(const FieldPlace& place, const FieldSpot& spot) const
{
    QString text = nameOf(*detail, place);
    if (spot.field == nullptr || !spot.field->isPresent(spot.record)) {
        return spot.field == nullptr ? text : tr("%1: not in this message").arg(text);
    }
    text += QStringLiteral(": ") + valueOf(spot);
    const RTCM2_member_s& row = *spot.field->row;
    if (!concernsMessage(spot)) {
        text += tr("\nMeans something with %1 only").arg(QString::fromUtf8(row.system->name));
    }
    if (isDerived(spot)) {
        const auto source = static_cast<std::size_t>(row.of - spot.kind->row->members);
        text += tr("\nNot in the message, but follows from %1")
                    .arg(QString::fromStdString(spot.kind->fields[source].name));
    }
    return text;
}

// Compiled here instead of on its own.
#include "moc_FieldTreeModel.cpp"
