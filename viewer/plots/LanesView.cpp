#include "viewer/plots/LanesView.h"

#include "viewer/plots/StationName.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

constexpr std::size_t mostShortGaps = 300;    // that are seen beside each other
constexpr double pixelsAroundTick = 6;        // of the pointer in which a message is meant

}    // namespace

LanesView::LanesView(const FormatModel& model, const MessageIndex& read,
                     const IndexTimes& timesOfIt, TimeWindow& timeWindow)
    : TimePicture(timeWindow), format(model), index(read), indexTimes(timesOfIt),
      whole(std::make_shared<LaneData>(Range{})), shown(whole)
{
}

void LanesView::setData(std::shared_ptr<const LaneData> all, std::shared_ptr<const LaneData> part)
{
    whole = std::move(all);
    shown = std::move(part);
    listLanes();
    fitHeight();
    redraw();
}

void LanesView::listLanes()
{
    std::set<Traffic::Key> known;
    std::set<StationId> senders;
    bool hasDamage = false;
    for (const LaneData* some : {whole.get(), shown.get()}) {
        for (const auto& [key, lane] : some->traffic().lanes()) {
            known.insert(key);
            senders.insert(key.station);
        }
        hasDamage = hasDamage || some->traffic().damage().count() > 0;
    }
    keys.assign(known.begin(), known.end());
    if (hasDamage) {
        keys.emplace_back();
    }
    stations = senders.size();
    current = std::min(current, keys.empty() ? 0 : keys.size() - 1);
}

std::string LanesView::labelOf(const Traffic::Key& key) const
{
    const KindModel* const kind =
        format.modelOf(RTCM2_kind_of_type(static_cast<std::int32_t>(key.type)));
    return (stations > 1 ? shortNameOf(key.station) + ": " : std::string()) +
           std::to_string(key.type) + " " +
           (kind == nullptr      ? "(unknown type)"
            : kind->text.empty() ? kind->name
                                 : kind->text);
}

std::string LanesView::title() const
{
    if (stations == 1 && keys.front()) {
        return "Messages of " + keys.front()->station.text() + " by type";
    }
    return "Messages by station and type";
}

Lane LanesView::laneFor(const LaneKey& key, const TimeScale& times) const
{
    if (!key) {
        return {.label = "Damaged", .faulty = &shown->traffic().damage()};
    }
    Lane lane{.label = labelOf(*key)};
    const auto known = shown->traffic().lanes().find(*key);
    if (known != shown->traffic().lanes().end()) {
        lane.messages = &known->second.messages();
        lane.faulty = &known->second.faulty();
        addGaps(lane, *key, *shown, times);
    }
    if (whole != shown) {
        addGaps(lane, *key, *whole, times);    // that are longer than what is shown
    }
    if (const Density* const ends = shown->gapEnds(*key)) {
        for (const Density::Column& column : ends->columns(times.range, mostShortGaps)) {
            lane.gaps.push_back({column.bin.first, column.bin.first});
        }
    }
    return lane;
}

void LanesView::addGaps(Lane& lane, const Traffic::Key& key, const LaneData& known,
                        const TimeScale& times) const
{
    const auto traffic = known.traffic().lanes().find(key);
    if (traffic == known.traffic().lanes().end()) {
        return;
    }
    for (Stretch each : traffic->second.gapsAbove(whole->shortestGap(key))) {
        each = {std::max(each.from, times.range.low), std::min(each.to, times.range.high)};
        if (each.to > each.from) {
            lane.gaps.push_back(each);
        }
    }
}

Lanes LanesView::lanesNow(const TimeScale& times) const
{
    Lanes lanes{.title = title(), .times = &times};
    for (const LaneKey& key : keys) {
        lanes.lanes.push_back(laneFor(key, times));
    }
    return lanes;
}

void LanesView::draw(PainterCanvas& canvas, const Box& box)
{
    const TimeScale times(0, false, window.shown());
    drawLanes(canvas, box, lanesNow(times));
}

Box LanesView::frameIn(PainterCanvas& canvas, const Box& box)
{
    const TimeScale times(0, false, window.shown());
    return frameOf(canvas, box, lanesNow(times));
}

// As high as all lanes need it.
void LanesView::fitHeight()
{
    QPixmap none(1, 1);
    QPainter painter(&none);
    painter.setFont(font());
    PainterCanvas canvas(painter, false);
    const TimeScale times(0, false, window.shown());
    const double height = heightOf(canvas, lanesNow(times), width() / scale());
    setMinimumHeight(static_cast<int>(std::ceil(height * scale())) + 4);
}

void LanesView::resizeEvent(QResizeEvent* event)
{
    TimePicture::resizeEvent(event);
    fitHeight();
}

std::optional<std::size_t> LanesView::laneAt(double y) const
{
    const double share = (y - frame().top) / frame().height;
    if (keys.empty() || share < 0 || share >= 1) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(share * static_cast<double>(keys.size()));
}

// The nearest message of the lane.
std::optional<std::size_t> LanesView::entryAt(const QPointF& position) const
{
    const std::optional<std::size_t> number = laneAt(position.y());
    if (!number) {
        return std::nullopt;
    }
    const double time = timeAt(position.x());
    const double around = pixelsAroundTick * secondsPerPixel();
    std::optional<std::size_t> nearest;
    double distance = around;
    indexTimes.each({time - around, time + around}, 0, [&](std::size_t place, double seconds) {
        if (std::abs(seconds - time) < distance && isIn(keys[*number], place)) {
            nearest = place;
            distance = std::abs(seconds - time);
        }
        return true;
    });
    return nearest;
}

void LanesView::pressedAt(const QPointF& position)
{
    current = laneAt(position.y()).value_or(current);
    if (const auto place = entryAt(position)) {
        Q_EMIT entryChosen(*place);
    }
    update();
}

QString LanesView::textOf(std::size_t place) const
{
    const IndexEntry& entry = index[place];
    const double seconds = indexTimes.timeAt(place).value_or(0);
    const std::optional<Traffic::Key> key = laneOf(entry);
    const std::string what =
        key ? "type " + std::to_string(key->type) + " of " + key->station.text() : "damaged";
    return QString::fromStdString("Message " + std::to_string(place + 1) + ", " +
                                  TimeScale(0, false, window.whole()).text(seconds) + ", " + what);
}

void LanesView::pointedAt(const std::optional<QPointF>& position)
{
    pointed = position ? entryAt(*position) : std::nullopt;
    Q_EMIT entryPointed(pointed ? textOf(*pointed) : QString());
    setCursor(pointed ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void LanesView::drawMarks(QPainter& painter, const Box& frame)
{
    TimePicture::drawMarks(painter, frame);
    if (hasFocus() && !keys.empty()) {
        const double height = frame.height / static_cast<double>(keys.size());
        QColor highlight = palette().color(QPalette::Highlight);
        highlight.setAlpha(36);
        painter.fillRect(
            QRectF(0, frame.top + height * static_cast<double>(current), frame.right(), height),
            highlight);
    }
    if (pointed) {
        if (const auto time = indexTimes.timeAt(*pointed)) {
            drawUpright(painter, *time, QPen(palette().color(QPalette::Text), 1, Qt::DotLine));
        }
    }
}

QString LanesView::emptyText() const
{
    return window.hasTime() ? QString()
                            : tr("No message has told a time yet: there is nothing to be drawn "
                                 "over time.");
}

// The next message of the lane before or behind the one that is chosen.
std::optional<std::size_t> LanesView::neighbour(bool isLater) const
{
    if (keys.empty()) {
        return std::nullopt;
    }
    std::optional<std::size_t> found;
    const Range& seen = window.shown();
    const double at = window.chosen().value_or(isLater ? seen.low : seen.high);
    if (isLater) {
        indexTimes.each({at, window.whole().high}, 0, [&](std::size_t place, double seconds) {
            found =
                seconds > at && isIn(keys[current], place) ? std::optional(place) : std::nullopt;
            return !found;
        });
        return found;
    }
    for (std::size_t place = indexTimes.placesIn({at, at}).from; place > 0 && !found; --place) {
        found = isIn(keys[current], place - 1) ? std::optional(place - 1) : std::nullopt;
    }
    return found;
}

void LanesView::keyPressEvent(QKeyEvent* event)
{
    const bool isSideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        const std::size_t last = keys.empty() ? 0 : keys.size() - 1;
        current = event->key() == Qt::Key_Up ? current - std::min<std::size_t>(current, 1)
                                             : std::min(current + 1, last);
        update();
    } else if (isSideways && event->modifiers().testFlag(Qt::ControlModifier)) {
        if (const auto place = neighbour(event->key() == Qt::Key_Right)) {
            Q_EMIT entryChosen(*place);
        }
    } else {
        TimePicture::keyPressEvent(event);
    }
}

// Compiled here instead of on its own.
#include "moc_LanesView.cpp"
