// The elements of a message as a table: a row an element, a column a field or a quantity.
#pragma once

#include "viewer/panes/FieldPlace.h"

#include <QAbstractTableModel>

class ElementTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    static constexpr int sortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    // The message's first field of elements. The detail stays until the next call; null for no
    // message.
    void show(const MessageDetail* shown);
    bool hasElements() const { return rowCount() > 0; }

    FieldPlace placeOf(const QModelIndex& index) const;
    QModelIndex indexOf(const FieldPlace& place) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    FieldSpot spotAt(const QModelIndex& index) const;

    const MessageDetail* detail = nullptr;
    int arrayField = -1;
    std::vector<const FieldModel*>
        shownFields;    // of the elements, each with its quantity behind it
};
