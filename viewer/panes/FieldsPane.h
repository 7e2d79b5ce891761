// The fields of a message: all of them as a tree, and its elements as a table beneath.
#pragma once

#include "viewer/panes/ElementTableModel.h"
#include "viewer/panes/FieldTreeModel.h"
#include "viewer/panes/MessagePane.h"

#include <functional>

class QAbstractItemView;
class QLabel;
class QSortFilterProxyModel;
class QSplitter;
class QTableView;
class QTreeView;

class FieldsPane : public MessagePane {
    Q_OBJECT

public:
    explicit FieldsPane(QWidget* parent = nullptr);

    void show(const MessageDetail* shown) override;

    void selectField(const FieldPlace& place) override;
    FieldPlace selectedField() const { return selected; }

    // The rows that are selected in the tree or in the table, whichever has the keys: a line each,
    // cells apart by tabs.
    QString selectedText() const;

Q_SIGNALS:
    // The person chose a field.
    void fieldSelected(const FieldPlace& place);

private:
    using PlaceOfCell = std::function<FieldPlace(const QModelIndex&)>;

    void makeTree();
    void makeTable();
    void connectChoice(const QAbstractItemView& view, const PlaceOfCell& placeOf);
    void showInTree();
    void showInTable();
    void expandArrays();
    void fitColumns();
    void widenColumns();
    void copy() const;

    const MessageDetail* detail = nullptr;
    const KindModel* shownKind = nullptr;    // of the message, if it has fields to show
    BitMap bitMap;
    FieldTreeModel* fields;
    ElementTableModel* elements;
    QSortFilterProxyModel* sorted;
    QSplitter* splitter;
    QLabel* trouble;
    QTreeView* tree;
    QTableView* table;
    FieldPlace selected;
    bool isFollowing = false;    // a selection made by the program
};
