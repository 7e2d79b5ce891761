#include "viewer/window/DocumentView.h"

#include "viewer/panes/DetailPane.h"

#include "filter/FilterError.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int mostEvents = 1000;
constexpr int mostOfType = 32;    // letters

// Leaves a little room between columns.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& cell) const override
    {
        QStyledItemDelegate::initStyleOption(option, cell);
        const bool isRight = option->displayAlignment.testFlag(Qt::AlignRight);
        option->text.insert(isRight ? option->text.size() : 0, QLatin1Char(' '));
    }
};

QString padded(const char* sample)
{
    return QString::fromLatin1(sample) + QStringLiteral("   ");
}

}    // namespace

DocumentView::DocumentView(const FormatModel& format, Input input)
    : shown(format, std::move(input)), readings(shown), reading(shown, readings), timeline(shown),
      filterLine(new FilterLine(format)), table(new MessageList), events(new QListWidget),
      paneRow(new QSplitter(Qt::Horizontal))
{
    buildSearchBar();
    shown.start();
    rereader = std::make_unique<Rereader>(format, shown.again(), shown.index());
    model = std::make_unique<MessageModel>(shown, *rereader);
    following = shown.comesSlowly();
    buildTable();
    events->hide();
    events->setMaximumHeight(fontMetrics().height() * 6);
    events->setAccessibleName(QStringLiteral("Events"));
    paneRow->setChildrenCollapsible(false);
    addPane(new DetailPane);

    buildOverviews();
    auto* const parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(overviews);
    parts->addWidget(paneRow);
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 0);
    layout->addWidget(filterLine);
    layout->addWidget(parts, 1);
    layout->addWidget(events);
    connectAll();
}

void DocumentView::buildOverviews()
{
    auto* const list = new QWidget;
    auto* const layout = new QVBoxLayout(list);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(table);
    layout->addWidget(searchBar);
    list->setFocusProxy(table);
    lanesPane = new LanesPane(timeline);
    plotPane = new PlotPane(timeline);
    overviews = new QTabWidget;
    overviews->setDocumentMode(true);
    overviews->addTab(list, QStringLiteral("List"));
    overviews->addTab(lanesPane, QStringLiteral("Lanes"));
    overviews->addTab(plotPane, QStringLiteral("Plot"));
}

void DocumentView::showOverview(Overview which)
{
    overviews->setCurrentIndex(static_cast<int>(which));
    overviews->currentWidget()->setFocus();
}

// What works for the pictures reads the document, which is gone before the parts of the window are.
DocumentView::~DocumentView()
{
    const QSignalBlocker blocker(overviews);
    delete lanesPane;
    delete plotPane;
}

void DocumentView::buildTable()
{
    table->setModel(model.get());
    table->setAccessibleName(QStringLiteral("Messages"));
    table->setTabKeyNavigation(false);
    QHeaderView& header = table->header();
    const QFontMetrics metrics(table->font());
    constexpr std::array<const char*, MessageModel::type> samples = {
        "00000000", "0000000000", "2026-01-01T00:00:00.000000Z", "00:00.0", "Station", "000000000"};
    for (int column = 0; column < MessageModel::type; ++column) {
        header.resizeSection(column,
                             metrics.horizontalAdvance(padded(samples[std::size_t(column)])));
    }
    int widest = 0;
    for (const auto& kind : format().kinds()) {
        widest = std::max(widest, kind->isMain ? metrics.horizontalAdvance(kindText(*kind)) : 0);
    }
    const int most = mostOfType * metrics.averageCharWidth();
    header.resizeSection(MessageModel::type,
                         std::min(widest, most) + metrics.horizontalAdvance(padded("")));
    table->setItemDelegate(new RowDelegate(table));
    header.setSectionHidden(MessageModel::received, shown.receiveTimes() == nullptr);
    header.setSectionHidden(MessageModel::sender, true);
}

void DocumentView::buildSearchBar()
{
    searchBar = new QWidget;
    searchLine = new QLineEdit;
    searchLine->setPlaceholderText(QStringLiteral("Search in contents and types"));
    searchLine->setAccessibleName(QStringLiteral("Search"));
    searchState = new QLabel;
    auto* const layout = new QHBoxLayout(searchBar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(searchLine);
    layout->addWidget(searchState);
    searchBar->hide();
}

void DocumentView::connectAll()
{
    connect(&shown, &Document::grown, this, &DocumentView::showNew);
    connect(&shown, &Document::told, this, &DocumentView::addEvent);
    connect(&shown, &Document::ended, this, [this] { showNew(); });
    connect(rereader.get(), &Rereader::detailCame, this, &DocumentView::showDetail);
    connect(model.get(), &MessageModel::sendersCame, this,
            [this] { table->header().setSectionHidden(MessageModel::sender, false); });
    connect(table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &DocumentView::choose);
    connect(table->verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] {
        const QScrollBar& bar = *table->verticalScrollBar();
        setFollowing(shown.comesSlowly() && bar.sliderPosition() == bar.maximum());
    });
    connect(lanesPane, &LanesPane::entryChosen, this, &DocumentView::chooseEntry);
    connect(plotPane, &PlotPane::entryChosen, this, &DocumentView::chooseValue);
    connect(&timeline, &Timeline::stretchChosen, this, [this](quint64 from, quint64 until) {
        marked = {from, until};
    });
    connect(filterLine, &FilterLine::changed, this, &DocumentView::applyFilter);
    connect(filterLine, &FilterLine::left, table, qOverload<>(&QWidget::setFocus));
    connect(searchLine, &QLineEdit::returnPressed, this, &DocumentView::searchNext);
    auto* const closeSearch =
        new QShortcut(Qt::Key_Escape, searchBar, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    connect(closeSearch, &QShortcut::activated, this, [this] {
        searchBar->hide();
        table->setFocus();
    });
    auto* const back = new QShortcut(Qt::SHIFT | Qt::Key_Return, searchBar, nullptr, nullptr,
                                     Qt::WidgetWithChildrenShortcut);
    connect(back, &QShortcut::activated, this, &DocumentView::searchBack);
    connect(events, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        goTo(std::max<qulonglong>(item->data(Qt::UserRole).toULongLong(), 1) - 1);
    });
    connect(&readings, &Readings::choiceChanged, this, &DocumentView::showChoice);
    connect(&readings, &Readings::went, this, &DocumentView::showNew);
    connect(&readings, &Readings::searchEnded, this, &DocumentView::showFound);
}

void DocumentView::addPane(MessagePane* pane)
{
    panes.push_back(pane);
    paneRow->addWidget(pane);
    pane->show(detail.get());
}

void DocumentView::showNew()
{
    reading.measure();
    if (readings.isSearching()) {
        searchState->setText(
            QStringLiteral("%1 messages searched").arg(grouped(readings.messagesSearched())));
    }
    if (!paused) {
        const bool isFirst = model->rowCount() == 0;
        model->refresh();
        if (isFirst && !shown.comesSlowly()) {
            goTo(0);
        }
        if (following) {
            showLast();
        }
    }
    Q_EMIT stateChanged();
}

void DocumentView::applyFilter()
{
    const QString where = filterLine->text();
    if (where == filterText && filterLine->wantsTroubles() == filterTroubles) {
        filterLine->clearError();
        return;
    }
    try {
        if (where.trimmed().isEmpty()) {
            readings.dropFilter();
        } else {
            readings.filter(where.toStdString(), filterLine->wantsTroubles());
        }
        filterText = where.trimmed().isEmpty() ? QString() : where;
        filterTroubles = filterLine->wantsTroubles();
        filterLine->clearError();
    } catch (const FilterError& error) {
        filterLine->showError(error);
    }
    Q_EMIT stateChanged();
}

void DocumentView::openSearch()
{
    searchBar->show();
    searchLine->setFocus(Qt::ShortcutFocusReason);
    searchLine->selectAll();
}

void DocumentView::search(bool backwards)
{
    if (searchLine->text().isEmpty()) {
        openSearch();
        return;
    }
    const int row = table->currentIndex().row();
    const std::size_t start = row >= 0 ? model->placeOf(row) : backwards ? 0 : shown.index().size();
    readings.search(
        {.text = searchLine->text().toStdString(), .start = start, .backwards = backwards});
}

void DocumentView::showFound(bool isFound, quint64 found)
{
    searchState->setText(isFound ? QString() : QStringLiteral("not found"));
    if (isFound) {
        goTo(found);
    }
}

void DocumentView::showChoice()
{
    const std::size_t place = wanted;
    model->choose(readings.chosen());
    if (place < shown.index().size()) {
        goTo(place);
    }
}

void DocumentView::cancel()
{
    if (readings.isSearching()) {
        readings.endSearch();
        searchState->setText(QStringLiteral("cancelled"));
    } else if (readings.isFiltering()) {
        filterLine->setText({});
        applyFilter();
    } else {
        shown.stop();
    }
    Q_EMIT stateChanged();
}

void DocumentView::goTo(std::size_t place)
{
    if (model->rowCount() == 0) {
        return;
    }
    setFollowing(false);
    const int row = std::min(model->rowFrom(place), model->rowCount() - 1);
    const QModelIndex cell = model->index(row, 0);
    table->setCurrentIndex(cell);
    table->scrollTo(cell, QAbstractItemView::EnsureVisible);
}

void DocumentView::choose()
{
    const int row = table->currentIndex().row();
    if (row < 0) {
        return;
    }
    wanted = model->placeOf(row);
    wantedField = {};
    rereader->fetch(wanted);
    timeline.showEntry(wanted);
    if (table->hasFocus() && row + 1 < model->rowCount()) {
        setFollowing(false);
    }
    Q_EMIT stateChanged();
}

// Also of what the filter keeps from the list.
void DocumentView::chooseEntry(quint64 place)
{
    goTo(place);
    if (wanted != place) {
        wanted = place;
        rereader->fetch(wanted);
        timeline.showEntry(wanted);
    }
}

void DocumentView::chooseValue(quint64 place, const FieldPlace& field)
{
    chooseEntry(place);
    wantedField = field;
    rereader->fetch(wanted);
}

void DocumentView::showDetail(quint64 place, const std::shared_ptr<const MessageDetail>& newDetail)
{
    if (place != wanted) {
        return;
    }
    const std::shared_ptr<const MessageDetail> old = detail;    // until no pane shows it
    detail = newDetail;
    for (MessagePane* const pane : panes) {
        pane->show(detail.get());
        if (!wantedField.isNone()) {
            pane->selectField(wantedField);
        }
    }
    wantedField = {};
}

void DocumentView::addEvent(const QString& text, quint64 after)
{
    auto* const item = new QListWidgetItem(
        after == 0 ? text : QStringLiteral("behind No. %1: %2").arg(grouped(after), text));
    item->setData(Qt::UserRole, after);
    events->addItem(item);
    if (events->count() > mostEvents) {
        delete events->takeItem(0);
    }
    events->show();
    events->scrollToBottom();
}

void DocumentView::setPaused(bool pauses)
{
    paused = pauses;
    if (!paused) {
        showNew();
    }
    Q_EMIT stateChanged();
}

void DocumentView::setFollowing(bool follows)
{
    if (following != follows) {
        following = follows;
        if (following) {
            showLast();
        }
        Q_EMIT stateChanged();
    }
}

void DocumentView::showLast()
{
    table->verticalScrollBar()->setValue(table->verticalScrollBar()->maximum());
}

QString DocumentView::state() const
{
    return reading.text(paused, model->held());
}

QString DocumentView::place() const
{
    if (wanted >= shown.index().size()) {
        return {};
    }
    const IndexEntry& entry = shown.index()[wanted];
    return QStringLiteral("No. %1, bytes %2 to %3")
        .arg(grouped(wanted + 1), grouped(entry.begin), grouped(entry.end() - 1));
}

std::vector<std::size_t> DocumentView::chosenPlaces(std::size_t most) const
{
    std::vector<std::size_t> places;
    for (const QItemSelectionRange& range : table->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom() && places.size() < most; ++row) {
            places.push_back(model->placeOf(row));
        }
    }
    std::sort(places.begin(), places.end());
    return places;
}

// Compiled here instead of on its own.
#include "moc_DocumentView.cpp"
