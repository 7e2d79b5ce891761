#include "viewer/panes/FieldsPane.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int widestColumn = 320;

QString linesOf(const QModelIndexList& indexes)
{
    QString text;
    int lastRow = -1;
    QModelIndex lastParent;
    for (const QModelIndex& index : indexes) {
        const bool isSameRow = index.row() == lastRow && index.parent() == lastParent;
        text += isSameRow ? QStringLiteral("\t") : QStringLiteral("\n");
        text += index.data().toString();
        lastRow = index.row();
        lastParent = index.parent();
    }
    return text.mid(1);
}

}    // namespace

FieldsPane::FieldsPane(QWidget* parent)
    : MessagePane(parent), fields(new FieldTreeModel(this)), elements(new ElementTableModel(this)),
      sorted(new QSortFilterProxyModel(this)), splitter(new QSplitter(Qt::Vertical)),
      tree(new QTreeView), table(new QTableView)
{
    makeTree();
    makeTable();
    splitter->addWidget(tree);
    splitter->addWidget(table);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    auto* const copying = new QAction(tr("Copy rows"), this);
    copying->setShortcut(QKeySequence::Copy);
    copying->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copying, &QAction::triggered, this, &FieldsPane::copy);
    addAction(copying);
    tree->addAction(copying);
    table->addAction(copying);
    show(nullptr);
}

void FieldsPane::makeTree()
{
    tree->setModel(fields);
    tree->setContextMenuPolicy(Qt::ActionsContextMenu);
    tree->setUniformRowHeights(true);
    tree->setAlternatingRowColors(true);
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tree->setAccessibleName(tr("Fields"));
    connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { choose(fields->placeOf(current)); });
}

void FieldsPane::makeTable()
{
    sorted->setSourceModel(elements);
    sorted->setSortRole(ElementTableModel::sortRole);
    table->setModel(sorted);
    table->setContextMenuPolicy(Qt::ActionsContextMenu);
    table->setSortingEnabled(true);
    table->sortByColumn(-1, Qt::AscendingOrder);    // as they came, until a column is chosen
    table->setAlternatingRowColors(true);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->setAccessibleName(tr("Elements"));
    connect(table->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                choose(elements->placeOf(sorted->mapToSource(current)));
            });
}

// The same field stays chosen from message to message of a kind.
void FieldsPane::show(const MessageDetail* shown)
{
    const KindModel* const before = shownKind;
    shownKind = shown != nullptr && shown->record != nullptr ? shown->kind : nullptr;
    isFollowing = true;
    bitMap = shown != nullptr ? BitMap(*shown) : BitMap();
    detail = shown;
    fields->show(detail, &bitMap);
    elements->show(detail);
    table->setVisible(elements->hasElements());
    isFollowing = false;
    if (shownKind != before) {
        fitColumns();
    }
    const bool isThere = detail != nullptr && spotOf(*detail, selected).kind != nullptr;
    selectField(isThere && shownKind == before ? selected : FieldPlace());
}

void FieldsPane::fitColumns()
{
    for (int column = 0; column < FieldTreeModel::columns; ++column) {
        tree->resizeColumnToContents(column);
        tree->setColumnWidth(column, std::min(tree->columnWidth(column), widestColumn));
    }
    table->resizeColumnsToContents();
}

void FieldsPane::selectField(const FieldPlace& place)
{
    selected = place;
    isFollowing = true;
    showInTree();
    showInTable();
    isFollowing = false;
}

void FieldsPane::choose(const FieldPlace& place)
{
    if (isFollowing || place.isNone()) {
        return;
    }
    selectField(place);
    Q_EMIT fieldSelected(place);
}

void FieldsPane::showInTree()
{
    const QModelIndex index = fields->indexOf(selected);
    if (index != tree->currentIndex().siblingAtColumn(0) || !index.isValid()) {
        tree->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                           QItemSelectionModel::Rows);
        tree->scrollTo(index);
    }
}

void FieldsPane::showInTable()
{
    const QModelIndex index = sorted->mapFromSource(elements->indexOf(selected));
    const FieldPlace before = elements->placeOf(sorted->mapToSource(table->currentIndex()));
    if (before != selected || !index.isValid()) {
        table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
        table->scrollTo(index);
    }
}

QString FieldsPane::selectedText() const
{
    const QAbstractItemView* const view =
        table->hasFocus() ? static_cast<const QAbstractItemView*>(table) : tree;
    QModelIndexList indexes = view->selectionModel()->selectedIndexes();
    std::sort(indexes.begin(), indexes.end(), [this](const auto& a, const auto& b) {
        const FieldPlace left = fields->placeOf(a);
        return a.model() == fields && left != fields->placeOf(b) ? left < fields->placeOf(b)
                                                                 : a < b;
    });
    return linesOf(indexes);
}

void FieldsPane::copy() const
{
    QGuiApplication::clipboard()->setText(selectedText());
}

// Compiled here instead of on its own.
#include "moc_FieldsPane.cpp"
