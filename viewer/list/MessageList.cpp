#include "viewer/list/MessageList.h"

#include <QApplication>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int betweenRows = 4;    // pixels

}    // namespace

MessageList::MessageList(QWidget* parent)
    : QAbstractItemView(parent), columns(new QHeaderView(Qt::Horizontal, this)),
      rowHeight(fontMetrics().height() + betweenRows)
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    columns->setSectionsClickable(false);
    columns->setHighlightSections(false);
    columns->setStretchLastSection(true);
    connect(columns, &QHeaderView::sectionResized, this, [this] {
        updateGeometries();
        viewport()->update();
    });
}

void MessageList::setModel(QAbstractItemModel* shown)
{
    QAbstractItemView::setModel(shown);
    columns->setModel(shown);
}

int MessageList::firstRow() const
{
    return verticalScrollBar()->value();
}

int MessageList::rowsOfPage() const
{
    return std::max(viewport()->height() / rowHeight, 1);
}

int MessageList::rowAt(int y) const
{
    return y < 0 ? firstRow() - 1 : firstRow() + y / rowHeight;
}

QRect MessageList::visualRect(const QModelIndex& cell) const
{
    if (!cell.isValid() || cell.row() < firstRow() || cell.row() > rowAt(viewport()->height())) {
        return {};
    }
    return {columns->sectionViewportPosition(cell.column()), (cell.row() - firstRow()) * rowHeight,
            columns->sectionSize(cell.column()), rowHeight};
}

void MessageList::scrollTo(const QModelIndex& cell, ScrollHint hint)
{
    const int page = rowsOfPage();
    const int row = cell.row();
    QScrollBar& bar = *verticalScrollBar();
    if (!cell.isValid()) {
        return;
    }
    if (hint == PositionAtCenter) {
        bar.setValue(row - page / 2);
    } else if (row < firstRow() || hint == PositionAtTop) {
        bar.setValue(row);
    } else if (row >= firstRow() + page || hint == PositionAtBottom) {
        bar.setValue(row - page + 1);
    }
}

QModelIndex MessageList::indexAt(const QPoint& point) const
{
    const int row = rowAt(point.y());
    const int column = columns->logicalIndexAt(point.x());
    return row >= 0 && row < rows() && column >= 0 ? model()->index(row, column) : QModelIndex();
}

QModelIndex MessageList::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    if (rows() == 0) {
        return {};
    }
    int row = currentIndex().isValid() ? currentIndex().row() : -1;
    switch (action) {
    case MoveUp:
    case MovePrevious:
        row -= 1;
        break;
    case MoveDown:
    case MoveNext:
        row += 1;
        break;
    case MovePageUp:
        row -= rowsOfPage();
        break;
    case MovePageDown:
        row += rowsOfPage();
        break;
    case MoveHome:
        row = 0;
        break;
    case MoveEnd:
        row = rows() - 1;
        break;
    case MoveLeft:
    case MoveRight:
        break;
    }
    return model()->index(std::clamp(row, 0, rows() - 1), 0);
}

int MessageList::horizontalOffset() const
{
    return columns->offset();
}

int MessageList::verticalOffset() const
{
    return firstRow();
}

bool MessageList::isIndexHidden(const QModelIndex& cell) const
{
    return columns->isSectionHidden(cell.column());
}

void MessageList::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command)
{
    const int last = rows() - 1;
    if (last < 0) {
        return;
    }
    const QRect area = rect.normalized();
    const int top = std::clamp(rowAt(area.top()), 0, last);
    const int bottom = std::clamp(rowAt(area.bottom()), 0, last);
    const bool isOutside = rowAt(area.top()) > last;
    const QItemSelection selection =
        isOutside ? QItemSelection()
                  : QItemSelection(model()->index(top, 0),
                                   model()->index(bottom, model()->columnCount() - 1));
    selectionModel()->select(selection, command);
}

QRegion MessageList::visualRegionForSelection(const QItemSelection& selection) const
{
    QRegion region;
    for (const QItemSelectionRange& range : selection) {
        const int top = std::max(range.top(), firstRow());
        const int bottom = std::min(range.bottom(), rowAt(viewport()->height()));
        if (top <= bottom) {
            region += QRect(0, (top - firstRow()) * rowHeight, viewport()->width(),
                            (bottom - top + 1) * rowHeight);
        }
    }
    return region;
}

void MessageList::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    const int last = std::min(rowAt(event->rect().bottom()), rows() - 1);
    for (int row = std::max(rowAt(event->rect().top()), 0); row <= last; ++row) {
        paintRow(painter, row);
    }
}

void MessageList::paintRow(QPainter& painter, int row)
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.state.setFlag(QStyle::State_Selected,
                         selectionModel()->isSelected(model()->index(row, 0)));
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && currentIndex().row() == row);
    option.rect = QRect(0, (row - firstRow()) * rowHeight, viewport()->width(), rowHeight);
    for (int column = 0; column < model()->columnCount(); ++column) {
        if (!columns->isSectionHidden(column)) {
            option.rect.setLeft(columns->sectionViewportPosition(column));
            option.rect.setWidth(columns->sectionSize(column));
            itemDelegate()->paint(&painter, option, model()->index(row, column));
        }
    }
}

void MessageList::resizeEvent(QResizeEvent* event)
{
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

void MessageList::updateGeometries()
{
    const int height = columns->sizeHint().height();
    setViewportMargins(0, height, 0, 0);
    const QRect inside = viewport()->geometry();
    columns->setGeometry(inside.left(), inside.top() - height, inside.width(), height);
    QScrollBar& vertical = *verticalScrollBar();
    vertical.setPageStep(rowsOfPage());
    vertical.setRange(0, std::max(rows() - rowsOfPage(), 0));
    QScrollBar& horizontal = *horizontalScrollBar();
    horizontal.setPageStep(inside.width());
    horizontal.setSingleStep(fontMetrics().averageCharWidth());
    horizontal.setRange(0, std::max(columns->length() - inside.width(), 0));
    QAbstractItemView::updateGeometries();
}

void MessageList::scrollContentsBy(int, int)
{
    columns->setOffset(horizontalScrollBar()->value());
    viewport()->update();
}

void MessageList::rowsInserted(const QModelIndex& parent, int first, int last)
{
    QAbstractItemView::rowsInserted(parent, first, last);
    updateGeometries();
    if (first <= rowAt(viewport()->height())) {
        viewport()->update();
    }
}

// Compiled here instead of on its own.
#include "moc_MessageList.cpp"
