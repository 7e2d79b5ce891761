#include "viewer/panes/BitsPane.h"

#include "viewer/document/AirWords.h"
#include "viewer/panes/BitsLegend.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

BitsPane::BitsPane(QWidget* parent)
    : MessagePane(parent), packed(new BitsView(selection, this)),
      air(new BitsView(selection, this)), splitter(new QSplitter), status(new QLabel)
{
    splitter->addWidget(areaOf(packed));
    splitter->addWidget(areaOf(air));
    splitter->setChildrenCollapsible(false);
    status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    status->setTextFormat(Qt::PlainText);
    status->setWordWrap(true);
    status->setMinimumHeight(2 * status->fontMetrics().lineSpacing());
    status->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter, 1);
    layout->addWidget(status);
    layout->addWidget(new BitsLegend);
    addCopy(tr("Copy bits"), QKeySequence::Copy, &BitSelection::bitText);
    addCopy(tr("Copy as hexadecimal"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
            &BitSelection::hexText);
    connect(&selection, &BitSelection::changed, this,
            [this] { status->setText(selection.description()); });
    connect(&selection, &BitSelection::fieldFound, this, &BitsPane::fieldSelected);
    connect(&selection, &BitSelection::bitsFound, this, &BitsPane::bitsSelected);
    show(nullptr);
}

QScrollArea* BitsPane::areaOf(BitsView* view)
{
    auto* const area = new QScrollArea;
    area->setWidget(view);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    connect(view, &BitsView::wanted, area, [area](const QRect& place) {
        area->ensureVisible(place.center().x(), place.center().y(), place.width(), place.height());
    });
    return area;
}

void BitsPane::addCopy(const QString& text, const QKeySequence& keys,
                       QString (BitSelection::*what)() const)
{
    auto* const copying = new QAction(text, this);
    copying->setShortcut(keys);
    copying->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copying, &QAction::triggered, this,
            [this, what] { QGuiApplication::clipboard()->setText((selection.*what)()); });
    addAction(copying);
    for (BitsView* const view : {packed, air}) {
        view->setContextMenuPolicy(Qt::ActionsContextMenu);
        view->addAction(copying);
    }
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
    packed->setTable(tr("Packed message"),
                     shown != nullptr ? packedTable(shown->packed) : BitTable());
    air->setTable(isReceived ? tr("As received")
                             : tr("As it would be sent; the input has no parity"),
                  airTable(words));
    air->parentWidget()->parentWidget()->setVisible(!air->isEmpty());
    arrange();
}

void BitsPane::resizeEvent(QResizeEvent* event)
{
    MessagePane::resizeEvent(event);
    arrange();
}

// Beside each other where there is room.
void BitsPane::arrange()
{
    const int needed = packed->sizeHint().width() + air->sizeHint().width() + 60;
    const auto orientation = width() >= needed ? Qt::Horizontal : Qt::Vertical;
    if (orientation != splitter->orientation()) {
        splitter->setOrientation(orientation);
        const int wide = packed->sizeHint().width();
        splitter->setSizes(orientation == Qt::Horizontal ? QList{wide, width() - wide}
                                                         : QList{height() / 2, height() / 2});
    }
}

// Compiled here instead of on its own.
#include "moc_BitsPane.cpp"
