#include "viewer/plots/PlotView.h"

#include "viewer/plots/StationName.h"

#include "pictures/Legend.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double pixelsAround = 12;    // of the pointer in which a value is meant
constexpr double lineWidth = 1.4;
constexpr std::size_t mostLabels = 40;    // at the ends of lines

LegendEntry legendEntry(const PlotView::Line& line)
{
    const Pen pen = line.pen;
    return {line.name, [pen](Canvas& on, const Box& sign) {
                const double middle = sign.top + sign.height / 2;
                on.line({sign.left, middle}, {sign.right(), middle}, pen);
            }};
}

}    // namespace

PlotView::PlotView(TimeWindow& timeWindow) : TimePicture(timeWindow) {}

void PlotView::setTexts(const Texts& wanted)
{
    texts = wanted;
    redraw();
}

void PlotView::setProblem(const QString& text)
{
    problem = text;
    redraw();
}

void PlotView::setData(std::shared_ptr<const FieldCurves> collected)
{
    curves = std::move(collected);
    listLines();
    redraw();
}

void PlotView::forgetLines()
{
    curves.reset();
    all.clear();
    numbers.clear();
    hiddenKeys.clear();
    nearPointer.reset();
    redraw();
}

std::string PlotView::title() const
{
    const std::string station =
        all.empty() || hasSeveralStations ? std::string() : ", " + all.front().key.station.text();
    std::string by = texts.key;
    if (hasSeveralStations || by.empty()) {
        by += by.empty() ? "station" : " and station";
    }
    return texts.field + " by " + by + station;
}

std::string PlotView::note() const
{
    return texts.issue.empty() ? std::string() : "lines break where " + texts.issue + " changes";
}

std::string PlotView::nameOf(const Key& key, const FieldTrack& track) const
{
    const std::string station = shortNameOf(key.station);
    return track.name.empty()   ? station
           : hasSeveralStations ? track.name + " " + station
                                : track.name;
}

void PlotView::listLines()
{
    all.clear();
    const auto& tracks = curves->tracks();
    hasSeveralStations =
        !tracks.empty() && tracks.begin()->first.station != tracks.rbegin()->first.station;
    for (const auto& [key, track] : tracks) {
        const Curve& curve = track.values.front();
        if (!curve.isEmpty()) {
            const auto number = static_cast<unsigned>(numbers.size());
            all.push_back({key, nameOf(key, track),
                           seriesPen(numbers.emplace(key, number).first->second, lineWidth),
                           &curve});
        }
    }
}

void PlotView::setHidden(const std::set<Key>& keys)
{
    hiddenKeys = keys;
    redraw();
}

Range PlotView::valuesShown() const
{
    std::optional<Range> values;
    for (const Line& line : all) {
        if (isSeen(line.key)) {
            line.curve->eachPoint(window.shown(), [&](const Point& point) {
                values =
                    values ? Range{std::min(values->low, point.y), std::max(values->high, point.y)}
                           : Range{point.y, point.y};
            });
        }
    }
    return withRoom(values.value_or(Range{0, 1}));
}

Plot PlotView::plotNow(const TimeScale& times) const
{
    Plot plot{.title = title(),
              .note = note(),
              .unit = texts.unit,
              .times = &times,
              .values = valuesShown(),
              .hasTimeTitle = true,
              .showsBreaks = all.size() - hiddenKeys.size() == 1};
    for (const Line& line : all) {
        if (isSeen(line.key)) {
            plot.curves.push_back(
                {line.curve, line.pen, all.size() > mostLabels ? std::string() : line.name});
        }
    }
    return plot;
}

void PlotView::draw(PainterCanvas& canvas, const Box& box)
{
    const TimeScale times(0, false, window.shown());
    drawPlot(canvas, box, plotNow(times));
}

Box PlotView::frameIn(PainterCanvas& canvas, const Box& box)
{
    const TimeScale times(0, false, window.shown());
    const Plot plot = plotNow(times);
    axis = plot.values;
    return frameOf(canvas, box, plot);
}

void PlotView::drawWhole(Canvas& canvas, const Box& box) const
{
    std::vector<LegendEntry> entries;
    for (const Line& line : all) {
        if (isSeen(line.key)) {
            entries.push_back(legendEntry(line));
        }
    }
    constexpr double edge = 12;
    const double legend = heightOfLegend(canvas, entries, box.width - 2 * edge);
    const Box above{box.left + edge, box.top + edge, box.width - 2 * edge,
                    box.height - legend - 3 * edge};
    const TimeScale times(0, false, window.shown());
    drawPlot(canvas, above, plotNow(times));
    drawLegend(canvas, {above.left, above.bottom() + edge, above.width, legend}, entries);
}

QPointF PlotView::placeOf(const Point& point) const
{
    return {xAt(point.x), frame().bottom() - frame().height * axis.share(point.y)};
}

std::optional<Point> PlotView::valueAtCursor(const Line& line) const
{
    if (!cursorTime) {
        return std::nullopt;
    }
    const double farthest = std::max(line.curve->longestJoin(), secondsPerPixel() * 2);
    std::optional<Point> nearest;
    line.curve->eachPoint(
        {*cursorTime - farthest, *cursorTime + farthest}, [&](const Point& point) {
            if (!nearest || std::abs(point.x - *cursorTime) < std::abs(nearest->x - *cursorTime)) {
                nearest = point;
            }
        });
    return nearest;
}

std::optional<PlotView::Near> PlotView::nearest(const QPointF& position) const
{
    const double time = timeAt(position.x());
    const double around = pixelsAround * secondsPerPixel();
    std::optional<Near> found;
    double distance = pixelsAround;
    for (const Line& line : all) {
        if (!isSeen(line.key)) {
            continue;
        }
        line.curve->eachPoint({time - around, time + around}, [&](const Point& point) {
            const QPointF away = placeOf(point) - position;
            if (const double length = std::hypot(away.x(), away.y()); length < distance) {
                distance = length;
                found = Near{line.key, point};
            }
        });
    }
    return found;
}

std::vector<std::pair<PlotView::Key, Step>> PlotView::greatestSteps() const
{
    std::vector<std::pair<Key, Step>> steps;
    const Range& shown = window.shown();
    for (const Line& line : all) {
        for (const Step& step : line.curve->greatestSteps()) {
            if (isSeen(line.key) && step.to.x >= shown.low && step.to.x <= shown.high) {
                steps.emplace_back(line.key, step);
            }
        }
    }
    std::sort(steps.begin(), steps.end(), [](const auto& a, const auto& b) {
        const double difference = a.second.height() - b.second.height();
        return difference != 0 ? difference > 0 : a.second.to.x < b.second.to.x;
    });
    return steps;
}

void PlotView::setCursor(std::optional<double> seconds)
{
    cursorTime = seconds;
    Q_EMIT cursorMoved();
    update();
}

void PlotView::pressedAt(const QPointF& position)
{
    if (const auto near = nearest(position)) {
        Q_EMIT pointChosen(*near);
    }
}

void PlotView::pointedAt(const std::optional<QPointF>& position)
{
    nearPointer = position ? nearest(*position) : std::nullopt;
    QWidget::setCursor(nearPointer ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (position && position->x() >= frame().left && position->x() <= frame().right()) {
        setCursor(nearPointer ? nearPointer->point.x : timeAt(position->x()));
    }
}

void PlotView::drawMarks(QPainter& painter, const Box& frame)
{
    TimePicture::drawMarks(painter, frame);
    if (!cursorTime) {
        return;
    }
    const QColor colour = palette().color(QPalette::Text);
    drawUpright(painter, *cursorTime, QPen(colour, 1, Qt::DotLine));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.2));
    painter.setClipRect(QRectF(frame.left, frame.top, frame.width, frame.height));
    for (const Line& line : all) {
        const auto value = isSeen(line.key) ? valueAtCursor(line) : std::nullopt;
        if (value) {
            const bool isNear = nearPointer && nearPointer->key == line.key;
            painter.drawEllipse(placeOf(*value), isNear ? 5 : 2.5, isNear ? 5 : 2.5);
        }
    }
    painter.setClipping(false);
}

QString PlotView::emptyText() const
{
    if (!window.hasTime()) {
        return tr("No message has told a time yet: there is nothing to be drawn over time.");
    }
    return all.empty() ? problem : QString();
}

// The value before or behind the cursor, of any line that is seen.
std::optional<PlotView::Near> PlotView::neighbour(bool isLater) const
{
    const Range& shown = window.shown();
    const double at = cursorTime.value_or(isLater ? shown.low : shown.high);
    std::optional<Near> found;
    for (const Line& line : all) {
        if (!isSeen(line.key)) {
            continue;
        }
        line.curve->eachPoint(window.whole(), [&](const Point& point) {
            const bool isBehind = isLater ? point.x > at : point.x < at;
            if (isBehind && (!found || std::abs(point.x - at) < std::abs(found->point.x - at))) {
                found = Near{line.key, point};
            }
        });
    }
    return found;
}

void PlotView::chooseAtCursor()
{
    for (const Line& line : all) {
        const auto value = isSeen(line.key) ? valueAtCursor(line) : std::nullopt;
        if (value && value->x == *cursorTime) {
            Q_EMIT pointChosen({line.key, *value});
            return;
        }
    }
}

void PlotView::keyPressEvent(QKeyEvent* event)
{
    const bool isSideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (isSideways && event->modifiers().testFlag(Qt::ControlModifier)) {
        if (const auto near = neighbour(event->key() == Qt::Key_Right)) {
            window.reveal(near->point.x);
            setCursor(near->point.x);
        }
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        chooseAtCursor();
    } else if (event->key() == Qt::Key_J) {
        Q_EMIT jumpWanted();
    } else {
        TimePicture::keyPressEvent(event);
    }
}

// Compiled here instead of on its own.
#include "moc_PlotView.cpp"
