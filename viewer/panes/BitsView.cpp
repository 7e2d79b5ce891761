#include "viewer/panes/BitsView.h"

#include <QFontDatabase>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr int margin = 6;
constexpr int rowRoom = 2;      // between letters of two rows
constexpr int cellRoom = 1;     // between letters of a row
constexpr int columnGap = 2;    // in letters

int longest(const std::vector<BitRow>& rows, QString BitRow::*text, int least)
{
    qsizetype length = least;
    for (const BitRow& row : rows) {
        length = std::max(length, (row.*text).size());
    }
    return static_cast<int>(length);
}

}    // namespace

BitsView::BitsView(BitSelection& selected, QWidget* parent) : QWidget(parent), selection(selected)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    measure();
    connect(&selection, &BitSelection::changed, this, [this] {
        update();
        if (const QRect place = rectOf(selection.cursor()); !place.isEmpty()) {
            Q_EMIT wanted(place.adjusted(0, -place.height(), 0, place.height()));
        }
    });
}

void BitsView::setTable(BitTable newTable)
{
    table = std::move(newTable);
    const BitMap& map = selection.map();
    isOdd.assign(map.size(), false);
    for (std::uint32_t bit = 1; bit < map.size(); ++bit) {
        isOdd[bit] = isOdd[bit - 1] != (map.at(bit) != map.at(bit - 1));
    }
    measure();
    const auto bad = std::find_if(table.rows.begin(), table.rows.end(),
                                  [](const BitRow& row) { return row.isBad; });
    Q_EMIT wanted(
        rectOf({bad != table.rows.end() ? static_cast<int>(bad - table.rows.begin()) : 0, 0}));
}

void BitsView::measure()
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const QFontMetrics metrics(font());
    letter = {metrics.horizontalAdvance('0'), metrics.height() + rowRoom};
    const auto behind = [this](int left, int letters) {
        return left + (letters + columnGap) * letter.width();
    };
    byteLeft = behind(margin, 4);
    hexLeft = behind(byteLeft, longest(table.rows, &BitRow::byte, 4));
    bitsLeft = behind(hexLeft, longest(table.rows, &BitRow::hex, 5));
    noteLeft = bitsLeft + columns() * (letter.width() + cellRoom) + letter.width();
    updateGeometry();
    resize(BitsView::sizeHint().expandedTo(size()));
    update();
}

int BitsView::bitsIn(int row) const
{
    return table.rows[static_cast<std::size_t>(row)].count;
}

int BitsView::columns() const
{
    int most = 0;
    for (const BitRow& row : table.rows) {
        most = std::max(most, table.columnOf(row, row.count - 1) + 1);
    }
    return most;
}

// Below the head.
int BitsView::topOf(int row) const
{
    return margin + (row + 1) * letter.height();
}

QSize BitsView::sizeHint() const
{
    const int note = longest(table.rows, &BitRow::note, 0);
    const int rows = static_cast<int>(table.rows.size()) + 1;    // and the head
    return {noteLeft + note * letter.width() + margin, rows * letter.height() + 2 * margin};
}

QRect BitsView::rectOf(WordBit bit) const
{
    const bool exists = !bit.isNone() && bit.word < static_cast<int>(table.rows.size()) &&
                        bit.bit >= 0 && bit.bit < bitsIn(bit.word);
    if (!exists) {
        return {};
    }
    const int cell = letter.width() + cellRoom;
    const int column = table.columnOf(table.rows[static_cast<std::size_t>(bit.word)], bit.bit);
    return {bitsLeft + column * cell, topOf(bit.word), cell, letter.height() - 1};
}

WordBit BitsView::bitAt(const QPoint& point) const
{
    const int word = (point.y() - margin) / letter.height() - 1;
    if (point.y() < margin || word < 0 || word >= static_cast<int>(table.rows.size())) {
        return {};
    }
    for (int bit = 0; bit < bitsIn(word); ++bit) {
        if (rectOf({word, bit}).contains(point.x(), rectOf({word, bit}).center().y())) {
            return {word, bit};
        }
    }
    return {};
}

void BitsView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().base());
    const PaneColours::Bits colours(palette());
    paintHead(painter);
    for (int row = 0; row < static_cast<int>(table.rows.size()); ++row) {
        const int top = topOf(row);
        if (top <= event->rect().bottom() && top + letter.height() >= event->rect().top()) {
            paintRow(painter, colours, row);
        }
    }
}

void BitsView::paintHead(QPainter& painter) const
{
    const auto write = [&](int left, const QString& text) {
        painter.drawText(QRect(left, margin, width(), letter.height()), Qt::AlignVCenter, text);
    };
    painter.setPen(PaneColours::Bits(palette()).faintText);
    if (!table.rows.empty()) {
        write(margin, tr("Word"));
        write(byteLeft, tr("Byte"));
        write(hexLeft, tr("Bytes"));
        write(bitsLeft, tr("Bits"));
    }
}

void BitsView::paintRow(QPainter& painter, const PaneColours::Bits& colours, int row) const
{
    const BitRow& shown = table.rows[static_cast<std::size_t>(row)];
    const int top = topOf(row);
    const int base = top + rowRoom / 2 + QFontMetrics(font()).ascent();
    painter.setPen(colours.faintText);
    painter.drawText(QRect(margin, top, 4 * letter.width(), letter.height()),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(row + 1));
    painter.drawText(byteLeft, base, shown.byte);
    painter.setPen(colours.text);
    painter.drawText(hexLeft, base, shown.hex);
    if (shown.isBad || shown.isInverted) {
        painter.fillRect(QRect(noteLeft - letter.width() / 2, top,
                               static_cast<int>(shown.note.size() + 1) * letter.width(),
                               letter.height() - 1),
                         shown.isBad ? colours.bad : colours.inverted);
    }
    painter.drawText(noteLeft, base, shown.note);
    for (int bit = 0; bit < shown.count; ++bit) {
        paintBit(painter, colours, {row, bit});
    }
}

void BitsView::paintBit(QPainter& painter, const PaneColours::Bits& colours, WordBit bit) const
{
    const QRect place = rectOf(bit);
    const bool isLit = selection.isLit(bit);
    painter.fillRect(place, isLit ? colours.selected : colourOf(colours, bit));
    const bool isFill = !bit.isParity() && selection.map().isFill(bit.packed());
    painter.setPen(isLit ? colours.selectedText : isFill ? colours.faintText : colours.text);
    const bool isSet = table.rows[static_cast<std::size_t>(bit.word)].at(bit.bit);
    painter.drawText(place, Qt::AlignCenter, isSet ? QStringLiteral("1") : QStringLiteral("0"));
    if (bit == selection.cursor()) {
        painter.setPen(hasFocus() ? colours.text : colours.faintText);
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
}

QColor BitsView::colourOf(const PaneColours::Bits& colours, WordBit bit) const
{
    const BitRow& row = table.rows[static_cast<std::size_t>(bit.word)];
    if (bit.isParity()) {
        return row.isBad ? colours.bad : colours.parity;
    }
    const std::uint32_t packed = bit.packed();
    const bool hasField = !selection.map().at(packed).isNone();
    const bool isOther = hasField && isOdd[packed];
    if (row.isInverted) {
        return isOther ? colours.otherInverted : colours.inverted;
    }
    if (!hasField) {
        return colours.noField;
    }
    return isOther ? colours.otherField : colours.field;
}

void BitsView::goTo(WordBit bit, bool isMarking)
{
    if (!bit.isNone() && !rectOf(bit).isEmpty()) {
        selection.moveTo(bit, isMarking);
    }
}

void BitsView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        goTo(bitAt(event->position().toPoint()), event->modifiers().testFlag(Qt::ShiftModifier));
    }
}

void BitsView::mouseMoveEvent(QMouseEvent* event)
{
    const WordBit bit = bitAt(event->position().toPoint());
    if (event->buttons().testFlag(Qt::LeftButton) && bit != selection.cursor()) {
        goTo(bit, true);
    }
}

void BitsView::keyPressEvent(QKeyEvent* event)
{
    const WordBit from = rectOf(selection.cursor()).isEmpty() ? WordBit() : selection.cursor();
    const WordBit to = moved(from, *event);
    if (to.isNone()) {
        QWidget::keyPressEvent(event);
        return;
    }
    goTo(from.isNone() ? WordBit{0, 0} : to, event->modifiers().testFlag(Qt::ShiftModifier));
}

// Where a key leads; none for keys that lead nowhere.
WordBit BitsView::moved(WordBit from, const QKeyEvent& event) const
{
    const Qt::KeyboardModifiers with =
        event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (table.rows.empty() || (with != Qt::NoModifier && with != Qt::ControlModifier)) {
        return {};
    }
    return with == Qt::NoModifier ? movedNear(from, event.key()) : movedFar(from, event.key());
}

// The rows end where the message does.
WordBit BitsView::movedNear(WordBit from, int key) const
{
    const int last = static_cast<int>(table.rows.size()) - 1;
    const int page = std::max(1, visibleRegion().boundingRect().height() / letter.height() - 1);
    const auto row = [&](int step) {
        const int to = std::clamp(from.word + step, 0, last);
        return WordBit{to, std::min(from.bit, bitsIn(to) - 1)};
    };
    switch (key) {
    case Qt::Key_Left:
        return stepped(from, -1);
    case Qt::Key_Right:
        return stepped(from, 1);
    case Qt::Key_Up:
        return row(-1);
    case Qt::Key_Down:
        return row(1);
    case Qt::Key_PageUp:
        return row(-page);
    case Qt::Key_PageDown:
        return row(page);
    case Qt::Key_Home:
        return {std::max(from.word, 0), 0};
    case Qt::Key_End:
        return {std::max(from.word, 0), bitsIn(std::max(from.word, 0)) - 1};
    default:
        return {};
    }
}

// From field to field, or to the ends.
WordBit BitsView::movedFar(WordBit from, int key) const
{
    const int last = static_cast<int>(table.rows.size()) - 1;
    switch (key) {
    case Qt::Key_Left:
        return nextField(from, -1);
    case Qt::Key_Right:
        return nextField(from, 1);
    case Qt::Key_Home:
        return {0, 0};
    case Qt::Key_End:
        return {last, bitsIn(last) - 1};
    default:
        return {};
    }
}

WordBit BitsView::stepped(WordBit from, int step) const
{
    WordBit to{std::max(from.word, 0), from.bit + step};
    if (to.bit < 0 && to.word > 0) {
        --to.word;
        to.bit = bitsIn(to.word) - 1;
    } else if (to.bit >= bitsIn(to.word) && to.word + 1 < static_cast<int>(table.rows.size())) {
        to = {to.word + 1, 0};
    }
    return rectOf(to).isEmpty() ? from : to;
}

// The first bit of the next field, or of the one before.
WordBit BitsView::nextField(WordBit from, int step) const
{
    const BitMap& map = selection.map();
    const auto fieldAt = [&](WordBit bit) { return map.at(bit.packed()); };
    WordBit to = from;
    for (WordBit next = stepped(to, step); next != to; next = stepped(to, step)) {
        to = next;
        if (!to.isParity() && fieldAt(to) != fieldAt(from)) {
            const std::uint32_t first = map.bitsOf(fieldAt(to)).first;
            return fieldAt(to).isNone() ? to : WordBit::ofPacked(first);
        }
    }
    return to;
}

bool BitsView::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        const WordBit bit = bitAt(help->pos());
        const QString text = bit.isNone() ? QString() : selection.about(bit);
        QToolTip::showText(help->globalPos(), text, this, rectOf(bit));
        return true;
    }
    // Keys that lead somewhere are no shortcuts of the window.
    if (event->type() == QEvent::ShortcutOverride &&
        !moved({0, 0}, *static_cast<QKeyEvent*>(event)).isNone()) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void BitsView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::StyleChange) {
        measure();
    }
}

// Compiled here instead of on its own.
#include "moc_BitsView.cpp"
