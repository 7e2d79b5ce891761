#include "viewer/plots/Timeline.h"

Timeline::Timeline(const Document& of) : source(of), indexTimes(of.index())
{
    connect(&source, &Document::grown, this, &Timeline::grow);
    connect(&timeWindow, &TimeWindow::stretchMarked, this, &Timeline::tellStretch);
    grow();
}

void Timeline::grow()
{
    const std::size_t before = indexTimes.size();
    indexTimes.update();
    if (indexTimes.range()) {
        timeWindow.setWhole(*indexTimes.range());
    }
    if (indexTimes.size() != before) {
        Q_EMIT grown();
    }
}

void Timeline::showEntry(quint64 place)
{
    const std::optional<double> time = indexTimes.timeAt(place);
    if (time) {
        timeWindow.reveal(*time);
    }
    timeWindow.setChosen(time);
}

void Timeline::tellStretch()
{
    const auto& stretch = timeWindow.stretch();
    const IndexTimes::Places places =
        stretch ? indexTimes.placesIn({stretch->from, stretch->to}) : IndexTimes::Places{};
    Q_EMIT stretchChosen(places.from, places.until);
}

// Compiled here instead of on its own.
#include "moc_Timeline.cpp"
