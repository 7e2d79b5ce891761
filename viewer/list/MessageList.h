// A list of any number of rows, all of one height: nothing in it grows with them, and to show more
// of them costs nothing.
#pragma once

#include <QAbstractItemView>
#include <QHeaderView>

class MessageList : public QAbstractItemView {
    Q_OBJECT

public:
    explicit MessageList(QWidget* parent = nullptr);

    // Before anything is shown.
    void setModel(QAbstractItemModel* model) override;
    // The columns.
    QHeaderView& header() { return *columns; }

    QRect visualRect(const QModelIndex& cell) const override;
    void scrollTo(const QModelIndex& cell, ScrollHint hint = EnsureVisible) override;
    QModelIndex indexAt(const QPoint& point) const override;
    // To search row by row would take any time.
    void keyboardSearch(const QString&) override {}

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex& cell) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

protected Q_SLOTS:
    void rowsInserted(const QModelIndex& parent, int first, int last) override;

private:
    int rows() const { return model() != nullptr ? model()->rowCount() : 0; }
    int firstRow() const;
    // Those that are seen as a whole, at least one.
    int rowsOfPage() const;
    int rowAt(int y) const;
    void paintRow(QPainter& painter, int row);

    QHeaderView* columns;
    int rowHeight;
};
