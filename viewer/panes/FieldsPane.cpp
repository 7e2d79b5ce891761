#include "viewer/panes/FieldsPane.h"

#include "viewer/panes/PaneActions.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int widestColumn = 220;

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

// Why there is nothing to show, or not all.
QString troubleOf(const MessageDetail* detail)
{
    if (detail == nullptr) {
        return FieldsPane::tr("No message is chosen");
    }
    if (!detail->text.empty()) {
        const bool isPart = detail->record != nullptr && detail->what != Found::What::message &&
                            detail->what != Found::What::unreported &&
                            detail->what != Found::What::unknownType;
        return QString::fromStdString(detail->text) +
               (isPart ? FieldsPane::tr(". Shown is what came whole.") : QString());
    }
    return detail->isShort ? FieldsPane::tr("Fewer words came than the message declares")
           : detail->record == nullptr ? FieldsPane::tr("Nothing that could be decoded")
                                       : QString();
}

}    // namespace

FieldsPane::FieldsPane(QWidget* parent)
    : MessagePane(parent), fields(new FieldTreeModel(this)), elements(new ElementTableModel(this)),
      sorted(new QSortFilterProxyModel(this)), splitter(new QSplitter(Qt::Vertical)),
      trouble(new QLabel), tree(new QTreeView), table(new QTableView)
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
    layout->addWidget(trouble);
    layout->addWidget(splitter);
    trouble->setTextFormat(Qt::PlainText);
    trouble->setTextInteractionFlags(Qt::TextSelectableByMouse);
    trouble->setWordWrap(true);
    trouble->setMargin(4);
    QFont bold = trouble->font();
    bold.setBold(true);
    trouble->setFont(bold);
    auto* const actions = new PaneActions({tree, table}, this);
    actions->add(tr("Copy rows"), QKeySequence::Copy, [this] { copy(); });
    FieldsPane::show(nullptr);
}

void FieldsPane::makeTree()
{
    tree->setModel(fields);
    tree->setUniformRowHeights(true);
    tree->setAlternatingRowColors(true);
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tree->setAccessibleName(tr("Fields"));
    connect(tree, &QTreeView::expanded, this, &FieldsPane::widenColumns);
    connectChoice(*tree, [](const QModelIndex& cell) { return FieldTreeModel::placeOf(cell); });
}

void FieldsPane::makeTable()
{
    sorted->setSourceModel(elements);
    sorted->setSortRole(ElementTableModel::sortRole);
    table->setModel(sorted);
    table->setSortingEnabled(true);
    table->sortByColumn(-1, Qt::AscendingOrder);    // as they came, until a column is chosen
    table->setAlternatingRowColors(true);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->setAccessibleName(tr("Elements"));
    connectChoice(*table, [this](const QModelIndex& cell) {
        return elements->placeOf(sorted->mapToSource(cell));
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
    trouble->setText(troubleOf(detail));
    trouble->setVisible(!trouble->text().isEmpty());
    isFollowing = false;
    expandArrays();
    if (shownKind != before) {
        fitColumns();
    }
    const bool isThere = detail != nullptr && spotOf(*detail, selected).kind != nullptr;
    selectField(isThere && shownKind == before ? selected : FieldPlace());
}

void FieldsPane::expandArrays()
{
    for (int row = 0; row < fields->rowCount(); ++row) {
        tree->expand(fields->index(row, 0));
    }
}

void FieldsPane::fitColumns()
{
    for (int column = 0; column < FieldTreeModel::columns; ++column) {
        tree->setColumnWidth(column, 0);
    }
    widenColumns();
    table->resizeColumnsToContents();
}

// So that what is seen is seen whole, but for long texts.
void FieldsPane::widenColumns()
{
    for (int column = 0; column < FieldTreeModel::columns; ++column) {
        const int before = tree->columnWidth(column);
        tree->resizeColumnToContents(column);
        tree->setColumnWidth(
            column, std::clamp(tree->columnWidth(column), before, std::max(before, widestColumn)));
    }
}

void FieldsPane::selectField(const FieldPlace& place)
{
    selected = place;
    isFollowing = true;
    showInTree();
    showInTable();
    isFollowing = false;
}

// A field is chosen when its cell is both the current one and selected. Keys select it first, the
// mouse makes it current first, and a view that gets the keys goes to its first row by itself
// without selecting it.
void FieldsPane::connectChoice(const QAbstractItemView& view, const PlaceOfCell& placeOf)
{
    const QItemSelectionModel& selection = *view.selectionModel();
    const auto choose = [this, &selection, placeOf] {
        const QModelIndex cell = selection.currentIndex();
        const FieldPlace place = placeOf(cell);
        if (!isFollowing && !place.isNone() && selection.isSelected(cell)) {
            selectField(place);
            Q_EMIT fieldSelected(place);
        }
    };
    connect(&selection, &QItemSelectionModel::currentChanged, this, choose);
    connect(&selection, &QItemSelectionModel::selectionChanged, this, choose);
}

void FieldsPane::showInTree()
{
    const QModelIndex index = fields->indexOf(selected);
    const bool isShown = index.isValid() && index == tree->currentIndex().siblingAtColumn(0) &&
                         tree->selectionModel()->isSelected(index);
    if (!isShown) {
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
        const auto whole =
            selected.part < 0 ? QItemSelectionModel::Rows : QItemSelectionModel::NoUpdate;
        table->selectionModel()->setCurrentIndex(index,
                                                 QItemSelectionModel::ClearAndSelect | whole);
        table->scrollTo(index);
    }
}

QString FieldsPane::selectedText() const
{
    const QAbstractItemView* const view =
        table->hasFocus() ? static_cast<const QAbstractItemView*>(table) : tree;
    QModelIndexList indexes = view->selectionModel()->selectedIndexes();
    std::sort(indexes.begin(), indexes.end(), [this](const auto& a, const auto& b) {
        const FieldPlace left = FieldTreeModel::placeOf(a);
        return a.model() == fields && left != FieldTreeModel::placeOf(b)
                   ? left < FieldTreeModel::placeOf(b)
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
