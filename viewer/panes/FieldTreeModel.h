// The fields of one message as a tree: beneath a field of elements these, and beneath each element
// its fields.
#pragma once

#include "viewer/panes/BitMap.h"

#include <QAbstractItemModel>

class FieldTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { name, number, meaning, quantity, bits, columns };

    using QAbstractItemModel::QAbstractItemModel;

    // Both stay until the next call; a null pointer for no message.
    void show(const MessageDetail* shown, const BitMap* map);

    static FieldPlace placeOf(const QModelIndex& index);
    QModelIndex indexOf(const FieldPlace& place, int column = name) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString cell(const FieldPlace& place, int column) const;
    QString bitsText(const FieldPlace& place, const FieldSpot& spot) const;
    QString toolTip(const FieldPlace& place, const FieldSpot& spot) const;

    const MessageDetail* detail = nullptr;
    const BitMap* bitMap = nullptr;
};
