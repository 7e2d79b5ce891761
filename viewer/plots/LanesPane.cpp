#include "viewer/plots/LanesPane.h"

#include <QScrollArea>
#include <QVBoxLayout>

#include <limits>

namespace {

constexpr int collectEvery = 400;    // milliseconds
constexpr Range always{-std::numeric_limits<double>::infinity(),
                       std::numeric_limits<double>::infinity()};

QString hint()
{
    return QObject::tr("Click: choose a message. Wheel or + and -: zoom. Drag or arrows: move. "
                       "Shift and drag: mark a stretch.");
}

}    // namespace

LanesPane::LanesPane(Timeline& timeline)
    : document(timeline.document()), times(timeline.times()), window(timeline.window()),
      view(new LanesView(document.format(), document.index(), times, window)),
      line(new QLabel(hint())), whole(std::make_shared<LaneData>(always)), part(whole)
{
    auto* const scrolled = new QScrollArea;
    scrolled->setWidgetResizable(true);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setFocusProxy(view);
    scrolled->setWidget(view);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scrolled, 1);
    layout->addWidget(line);
    line->setTextFormat(Qt::PlainText);
    line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setFocusProxy(view);
    connect(view, &LanesView::entryChosen, this, &LanesPane::entryChosen);
    connect(view, &LanesView::entryPointed, this,
            [this](const QString& text) { line->setText(text.isEmpty() ? hint() : text); });
    connect(&timeline, &Timeline::grown, this, &LanesPane::grow);
    later.setSingleShot(true);
    connect(&later, &QTimer::timeout, this, &LanesPane::collect);
    connect(&window, &TimeWindow::shownChanged, this, [this] {
        if (!window.showsAll()) {
            later.start(0);
        } else if (part != whole) {
            part = whole;
            view->setData(whole, part);
            grow();
        }
    });
    grow();
}

void LanesPane::grow()
{
    if (!later.isActive()) {
        later.start(collectEvery);
    }
}

void LanesPane::collect()
{
    if (window.showsAll()) {
        if (task.isBusy()) {
            later.start(collectEvery);
        } else {
            collectWhole(times);
        }
    } else {
        collectPart(times);
    }
}

// Goes on from what is known: of a long input, that is nearly all.
void LanesPane::collectWhole(const IndexTimes& now)
{
    task.begin([this, before = whole, now](const LatestTask::Stop& stop) {
        const auto lanes = std::make_shared<LaneData>(*before);
        lanes->add(document.index(), now, stop);
        QMetaObject::invokeMethod(this, [this, lanes] { take(lanes, true); });
    });
}

// What is beside the range shown will be wanted next.
void LanesPane::collectPart(const IndexTimes& now)
{
    const Range& shown = window.shown();
    const Range range{shown.low - shown.length() / 2, shown.high + shown.length() / 2};
    task.begin([this, range, now](const LatestTask::Stop& stop) {
        const auto lanes = std::make_shared<LaneData>(range);
        lanes->add(document.index(), now, stop);
        if (!stop()) {
            QMetaObject::invokeMethod(this, [this, lanes] { take(lanes, false); });
        }
    });
}

void LanesPane::take(const std::shared_ptr<const LaneData>& lanes, bool isWhole)
{
    whole = isWhole ? lanes : whole;
    if (isWhole == window.showsAll()) {
        part = lanes;
    }
    view->setData(whole, part);
    if (whole == part && whole->seen() < times.size()) {
        grow();
    }
}

// Compiled here instead of on its own.
#include "moc_LanesPane.cpp"
