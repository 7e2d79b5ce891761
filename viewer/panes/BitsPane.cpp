#include "viewer/panes/BitsPane.h"

#include "viewer/document/AirWords.h"
#include "viewer/panes/BitsLegend.h"
#include "viewer/panes/PaneActions.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

BitsPane::BitsPane(QWidget* parent)
    : MessagePane(parent), splitter(new QSplitter), packed(makePart()), air(makePart()),
      status(new QLabel)
{
    splitter->setChildrenCollapsible(false);
    status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    status->setTextFormat(Qt::PlainText);
    status->setMinimumWidth(1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter, 1);
    layout->addWidget(status);
    layout->addWidget(new BitsLegend);
    auto* const actions = new PaneActions({packed.view, air.view}, this);
    const auto addCopy = [&](const QString& text, const QKeySequence& keys, auto what) {
        actions->add(text, keys,
                     [this, what] { QGuiApplication::clipboard()->setText((selection.*what)()); });
    };
    addCopy(tr("Copy bits"), QKeySequence::Copy, &BitSelection::bitText);
    addCopy(tr("Copy bits as hexadecimal"), Qt::CTRL | Qt::ALT | Qt::Key_C, &BitSelection::hexText);
    connect(&selection, &BitSelection::changed, this, &BitsPane::describe);
    connect(&selection, &BitSelection::fieldFound, this, &BitsPane::fieldSelected);
    connect(&selection, &BitSelection::bitsFound, this, &BitsPane::bitsSelected);
    BitsPane::show(nullptr);
}

BitsPane::Part BitsPane::makePart()
{
    const Part part{new BitsView(selection), new QLabel, new QWidget};
    auto* const area = new QScrollArea;
    area->setWidget(part.view);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setBackgroundRole(QPalette::Base);
    connect(part.view, &BitsView::wanted, area, [area](const QRect& place) {
        area->ensureVisible(place.center().x(), place.center().y(), place.width(), place.height());
    });
    QFont bold = part.title->font();
    bold.setBold(true);
    part.title->setFont(bold);
    auto* const layout = new QVBoxLayout(part.whole);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(part.title);
    layout->addWidget(area, 1);
    splitter->addWidget(part.whole);
    return part;
}

void BitsPane::fill(const Part& part, const QString& title, const BitTable& table)
{
    part.title->setText(title);
    part.view->setAccessibleName(title);
    part.view->setTable(table);
    part.whole->setVisible(!table.rows.empty());
}

// Where a form has no words, those are shown in which the message would be sent.
void BitsPane::show(const MessageDetail* shown)
{
    std::vector<AirWord> words = shown != nullptr ? shown->words : std::vector<AirWord>();
    const bool isReceived = !words.empty();
    if (shown != nullptr && !isReceived) {
        words = wordsToSend(shown->packed);
    }
    selection.setMessage(shown, words);
    fill(packed, tr("Packed message"),
         shown != nullptr ? packedTable(*shown, selection.map()) : BitTable());
    fill(air, isReceived ? tr("As received") : tr("As it would be sent; the input has no parity"),
         airTable(words));
    arrange();
}

void BitsPane::resizeEvent(QResizeEvent* event)
{
    MessagePane::resizeEvent(event);
    arrange();
    describe();
}

// Beside each other where there is room.
void BitsPane::arrange()
{
    const int room = 24;    // around a view, with a scroll bar
    const int wide = packed.view->sizeHint().width() + room;
    const bool isBeside = width() >= wide + air.view->sizeHint().width() + room;
    splitter->setOrientation(isBeside ? Qt::Horizontal : Qt::Vertical);
    packed.whole->setMinimumWidth(isBeside ? wide : 0);
    packed.whole->setMaximumWidth(isBeside ? wide : QWIDGETSIZE_MAX);
}

void BitsPane::describe()
{
    const QString text = selection.description();
    status->setText(status->fontMetrics().elidedText(text, Qt::ElideRight, width() - 8));
    status->setToolTip(text);
}

// Compiled here instead of on its own.
#include "moc_BitsPane.cpp"
