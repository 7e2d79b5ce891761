#include "viewer/plots/PainterCanvas.h"

#include "pictures/Colours.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace {

QColor colour(const Ink& ink, bool isOnDark)
{
    return QColor(static_cast<QRgb>(colourOf(ink, isOnDark)));
}

QString stringOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QPointF pointOf(const Point& point)
{
    return {point.x, point.y};
}

QRectF rectangleOf(const Box& box)
{
    return {box.left, box.top, box.width, box.height};
}

constexpr std::size_t mostRoundDots = 500;

double lengthOf(const QPolygonF& polygon)
{
    double length = 0;
    for (qsizetype i = 1; i < polygon.size(); ++i) {
        const QPointF step = polygon[i] - polygon[i - 1];
        length += std::abs(step.x()) + std::abs(step.y());
    }
    return length;
}

// Goes up and down so much that nobody sees how.
bool isDense(const QPolygonF& polygon, const QRectF& place)
{
    constexpr double narrowest = 4;    // pixels
    constexpr double steepest = 12;    // up and down by so many times its width
    return place.width() < narrowest ||
           lengthOf(polygon) > steepest * place.width() + 2 * place.height();
}

}    // namespace

PainterCanvas::PainterCanvas(QPainter& target, bool onDark) : painter(target), isOnDark(onDark) {}

void PainterCanvas::fill(const Box& box)
{
    painter.fillRect(rectangleOf(box), QColor(static_cast<QRgb>(paperColour(isOnDark))));
}

// Upright and level lines are sharp when they are not smoothed.
void PainterCanvas::use(const Pen& pen, bool isSmooth)
{
    QPen with(colour(pen.ink, isOnDark), pen.width);
    with.setCapStyle(Qt::FlatCap);
    with.setJoinStyle(Qt::RoundJoin);
    if (pen.dash != Dash::solid) {
        const qreal length = pen.dash == Dash::dashed ? 6 : 2;
        with.setDashPattern({length / pen.width, 3 / pen.width});
    }
    painter.setPen(with);
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, isSmooth);
}

void PainterCanvas::line(const Point& from, const Point& to, const Pen& pen)
{
    use(pen, from.x != to.x && from.y != to.y);
    painter.drawLine(pointOf(from), pointOf(to));
    reach(QRectF(pointOf(from), pointOf(to)).normalized());
}

void PainterCanvas::polyline(std::span<const Point> points, const Pen& pen)
{
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(points.size()));
    for (const Point& point : points) {
        polygon.append(pointOf(point));
    }
    const QRectF place = polygon.boundingRect();
    if (isDense(polygon, place)) {
        drawDense(polygon, pen);
    } else {
        use(pen, true);
        painter.drawPolyline(polygon);
    }
    reach(place);
}

// Dashes and smooth edges of such a line take long, and nobody can see them.
void PainterCanvas::drawDense(const QPolygonF& polygon, const Pen& pen)
{
    use({.ink = pen.ink}, false);
    QPen thin = painter.pen();
    thin.setWidth(0);
    painter.setPen(thin);
    painter.drawPolyline(polygon);
}

void PainterCanvas::dots(std::span<const Point> points, const Pen& pen)
{
    const double radius = pen.width / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colour(pen.ink, isOnDark));
    painter.setPen(Qt::NoPen);
    for (const Point& point : points) {
        const QRectF place(point.x - radius, point.y - radius, pen.width, pen.width);
        if (++dotCount <= mostRoundDots) {
            painter.drawEllipse(place);
        } else {
            painter.fillRect(place, painter.brush());    // which takes much less time
        }
        reach(place);
    }
}

// All of one width on the screen, wherever they stand between its pixels.
void PainterCanvas::bars(std::span<const Bar> upright, const Pen& pen)
{
    const double scale = painter.deviceTransform().m11();
    const double width = std::max(1.0, std::round(pen.width * scale)) / scale;
    const QColor ink = colour(pen.ink, isOnDark);
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const Bar& bar : upright) {
        const double left = std::round((bar.x - width / 2) * scale) / scale;
        const QRectF place(left, bar.top, width, bar.bottom - bar.top);
        painter.fillRect(place, ink);
        reach(place);
    }
}

void PainterCanvas::rectangle(const Box& box, const Ink& fill)
{
    painter.fillRect(rectangleOf(box), colour(fill, isOnDark));
    reach(rectangleOf(box));
}

QFont PainterCanvas::fontOf(double size, bool isBold) const
{
    QFont font = painter.font();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    font.setBold(isBold);
    return font;
}

void PainterCanvas::text(const Point& at, std::string_view characters, const Lettering& how)
{
    const QString string = stringOf(characters);
    const QFont font = fontOf(how.size, how.isBold);
    const double width = QFontMetricsF(font).horizontalAdvance(string);
    const double shares[] = {0, 0.5, 1};
    const double left = at.x - width * shares[static_cast<std::size_t>(how.anchor)];
    painter.save();
    painter.setFont(font);
    painter.setPen(colour(how.ink, isOnDark));
    painter.drawText(QPointF(left, at.y), string);
    painter.restore();
    reach({left, at.y - how.size, width, how.size});
}

void PainterCanvas::beginGroup(std::string_view title)
{
    open = Group{.place = {}, .title = stringOf(title)};
}

void PainterCanvas::endGroup()
{
    if (open) {
        all.push_back(*std::exchange(open, std::nullopt));
    }
}

void PainterCanvas::reach(const QRectF& place)
{
    if (open) {
        open->place = open->place.isNull() ? place : open->place.united(place);
    }
}

void PainterCanvas::beginClip(const Box& box)
{
    painter.save();
    painter.setClipRect(rectangleOf(box));
}

double PainterCanvas::widthOf(std::string_view characters, double size) const
{
    return QFontMetricsF(fontOf(size, false)).horizontalAdvance(stringOf(characters));
}
