#include "viewer/plots/TimePicture.h"

#include "pictures/Colours.h"
#include "viewer/colours/Ground.h"

#include <QFontInfo>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double pictureFont = 12;    // pixels for which pictures are made
constexpr double wheelStep = 120;     // of a notch
constexpr double zoomOfNotch = 0.8;
constexpr double shareOfMove = 0.1;    // of what is shown
constexpr double pixelsOfDrag = 4;

}    // namespace

TimePicture::TimePicture(TimeWindow& timeWindow) : window(timeWindow)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    connect(&window, &TimeWindow::shownChanged, this, &TimePicture::redraw);
    connect(&window, &TimeWindow::marksChanged, this, qOverload<>(&QWidget::update));
}

double TimePicture::scale() const
{
    return std::max(1.0, QFontInfo(font()).pixelSize() / pictureFont);
}

void TimePicture::redraw()
{
    picture = QPixmap();
    update();
}

double TimePicture::secondsPerPixel() const
{
    return window.shown().length() / std::max(1.0, framePlace.width);
}

double TimePicture::timeAt(double x) const
{
    return window.shown().low + (x - framePlace.left) * secondsPerPixel();
}

double TimePicture::xAt(double seconds) const
{
    return framePlace.left + (seconds - window.shown().low) / secondsPerPixel();
}

void TimePicture::drawPicture()
{
    const qreal ratio = devicePixelRatioF();
    picture = QPixmap(size() * ratio);
    picture.setDevicePixelRatio(ratio);
    QPainter painter(&picture);
    painter.setFont(font());
    painter.scale(scale(), scale());
    const Box box{0, 0, width() / scale(), height() / scale()};
    PainterCanvas canvas(painter, isDark(palette()));
    canvas.fill(box);
    framePlace = frameIn(canvas, box);
    draw(canvas, box);
    groups = canvas.groups();
}

void TimePicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!window.hasTime() || !emptyText().isEmpty()) {
        painter.fillRect(rect(), palette().base());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
                         emptyText());
        return;
    }
    if (picture.isNull()) {
        drawPicture();
    }
    painter.drawPixmap(0, 0, picture);
    painter.setFont(font());
    painter.scale(scale(), scale());
    drawMarks(painter, framePlace);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
        painter.drawRect(QRectF(0.5, 0.5, width() / scale() - 1, height() / scale() - 1));
    }
}

void TimePicture::drawUpright(QPainter& painter, double seconds, const QPen& pen) const
{
    const double x = xAt(seconds);
    if (x >= framePlace.left && x <= framePlace.right()) {
        painter.setPen(pen);
        painter.drawLine(QPointF(x, framePlace.top), QPointF(x, framePlace.bottom()));
    }
}

void TimePicture::drawMarks(QPainter& painter, const Box& frame)
{
    QColor highlight = palette().color(QPalette::Highlight);
    if (window.chosen()) {
        drawUpright(painter, *window.chosen(), QPen(highlight, 2));
    }
    if (window.stretch()) {
        const double left = std::clamp(xAt(window.stretch()->from), frame.left, frame.right());
        const double right = std::clamp(xAt(window.stretch()->to), frame.left, frame.right());
        highlight.setAlpha(60);
        painter.fillRect(QRectF(left, frame.top, right - left, frame.height), highlight);
    }
}

void TimePicture::resizeEvent(QResizeEvent*)
{
    redraw();
}

void TimePicture::changeEvent(QEvent* event)
{
    redraw();
    QWidget::changeEvent(event);
}

bool TimePicture::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        const QPointF at = inPicture(help->pos());
        const auto group = std::find_if(groups.begin(), groups.end(), [&](const auto& each) {
            return each.place.adjusted(-3, -3, 3, 3).contains(at);
        });
        QToolTip::showText(help->globalPos(), group != groups.end() ? group->title : QString(),
                           this);
        return true;
    }
    return QWidget::event(event);
}

// Sideways wheels move, as does a wheel with shift; with control they are left to others.
void TimePicture::wheelEvent(QWheelEvent* event)
{
    const QPoint turned = event->angleDelta();
    const bool isSideways = std::abs(turned.x()) > std::abs(turned.y());
    const double notches = (isSideways ? turned.x() : turned.y()) / wheelStep;
    if (isSideways || event->modifiers().testFlag(Qt::ShiftModifier)) {
        window.move(-notches * shareOfMove * window.shown().length());
    } else {
        window.zoom(std::pow(zoomOfNotch, notches), timeAt(inPicture(event->position()).x()));
    }
    event->accept();
}

void TimePicture::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    pressed = inPicture(event->position());
    shownWhenPressed = window.shown();
    isDragged = false;
    marksStretch = event->modifiers().testFlag(Qt::ShiftModifier);
}

void TimePicture::drag(const QPointF& position)
{
    isDragged = isDragged || std::abs(position.x() - pressed->x()) >= pixelsOfDrag;
    if (!isDragged) {
        return;
    }
    if (marksStretch) {
        const double from = timeAt(pressed->x());
        const double to = timeAt(position.x());
        window.setStretch(Stretch{std::min(from, to), std::max(from, to)});
    } else {
        const double moved = (pressed->x() - position.x()) * secondsPerPixel();
        window.show({shownWhenPressed.low + moved, shownWhenPressed.high + moved});
    }
}

void TimePicture::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF position = inPicture(event->position());
    if (pressed) {
        drag(position);
    }
    pointedAt(position);
    update();
}

void TimePicture::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && pressed) {
        pressed.reset();
        if (isDragged && marksStretch) {
            window.endStretch();
        }
        if (!isDragged) {
            pressedAt(inPicture(event->position()));
        }
    }
}

void TimePicture::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

void TimePicture::leaveEvent(QEvent*)
{
    pointedAt(std::nullopt);
    update();
}

void TimePicture::keyPressEvent(QKeyEvent* event)
{
    const Range& shown = window.shown();
    const double middle = window.chosen().value_or((shown.low + shown.high) / 2);
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        window.zoom(zoomOfNotch, middle);
        break;
    case Qt::Key_Minus:
        window.zoom(1 / zoomOfNotch, middle);
        break;
    case Qt::Key_Left:
        window.move(-shareOfMove * shown.length());
        break;
    case Qt::Key_Right:
        window.move(shareOfMove * shown.length());
        break;
    case Qt::Key_PageUp:
        window.move(-shown.length());
        break;
    case Qt::Key_PageDown:
        window.move(shown.length());
        break;
    case Qt::Key_Home:
        window.move(window.whole().low - shown.low);
        break;
    case Qt::Key_End:
        window.move(window.whole().high - shown.high);
        break;
    case Qt::Key_0:
        window.showAll();
        break;
    case Qt::Key_Z:
        if (window.stretch()) {
            window.show({window.stretch()->from, window.stretch()->to});
        }
        break;
    case Qt::Key_Escape:
        window.setStretch(std::nullopt);
        window.endStretch();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

// Compiled here instead of on its own.
#include "moc_TimePicture.cpp"
