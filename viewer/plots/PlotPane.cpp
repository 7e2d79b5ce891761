#include "viewer/plots/PlotPane.h"

#include "viewer/colours/Ground.h"
#include "viewer/plots/PointTable.h"

#include "base/Output.h"
#include "pictures/SvgCanvas.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QImage>
#include <QPainter>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int collectAfter = 150;    // milliseconds
constexpr int growEvery = 500;
constexpr int watchEvery = 100;
constexpr int pictureScale = 2;
constexpr int permille = 1000;

// The field that gives the line its value; none where the message has no such value.
FieldPlace placeOf(const std::vector<FollowedFields>& followed, const Found& found,
                   const PlotView::Near& point)
{
    for (const FollowedFields& fields : followed) {
        const auto element =
            fields.kind == found.kind
                ? FieldCurves::elementWith(fields, found.record, point.key, point.point.y)
                : std::nullopt;
        if (element) {
            const FieldPath& path = fields.values.front();
            return path.part == nullptr ? FieldPlace{path.field->index}
                                        : FieldPlace{path.field->index, static_cast<int>(*element),
                                                     path.part->index};
        }
    }
    return {};
}

}    // namespace

PlotPane::PlotPane(Timeline& timeline)
    : document(timeline.document()), times(timeline.times()), window(timeline.window()),
      boxes(new FieldBoxes(document.format())), view(new PlotView(window)),
      list(new LineList(*view)), jumpButton(new QPushButton(tr("Next &jump"))),
      saveButton(new QPushButton(tr("&Save..."))), cancelButton(new QPushButton(tr("Cancel"))),
      progress(new QProgressBar), line(new QLabel), collector(document, times)
{
    build();
    connectAll();
    connect(&timeline, &Timeline::grown, this, &PlotPane::grow);
    view->setProblem(tr("Nothing to plot yet."));
    grow();
}

void PlotPane::build()
{
    jumpButton->setToolTip(tr("To the greatest step of a line that is shown, then to the next "
                              "smaller one (J)"));
    saveButton->setToolTip(tr("What is shown, as a picture (PNG, SVG) or as values (CSV)"));
    progress->setRange(0, permille);
    progress->setTextVisible(false);
    progress->setMaximumWidth(160);
    line->setTextFormat(Qt::PlainText);
    line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* const top = new QHBoxLayout;
    top->addWidget(boxes, 1);
    top->addWidget(jumpButton);
    top->addWidget(saveButton);
    auto* const bottom = new QHBoxLayout;
    bottom->addWidget(line, 1);
    bottom->addWidget(progress);
    bottom->addWidget(cancelButton);
    auto* const parts = new QSplitter;
    parts->addWidget(view);
    parts->addWidget(list);
    parts->setStretchFactor(0, 1);
    parts->setSizes({700, 190});
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(parts, 1);
    layout->addLayout(bottom);
    setFocusProxy(view);
    showProgress();
}

void PlotPane::connectAll()
{
    later.setSingleShot(true);
    watch.setInterval(watchEvery);
    connect(&later, &QTimer::timeout, this, &PlotPane::collect);
    connect(&watch, &QTimer::timeout, this, &PlotPane::showProgress);
    connect(boxes, &FieldBoxes::changed, this, &PlotPane::follow);
    connect(view, &PlotView::pointChosen, this, &PlotPane::choose);
    connect(view, &PlotView::jumpWanted, this, &PlotPane::jump);
    connect(jumpButton, &QPushButton::clicked, this, &PlotPane::jump);
    connect(saveButton, &QPushButton::clicked, this, &PlotPane::save);
    connect(cancelButton, &QPushButton::clicked, this, &PlotPane::cancel);
    connect(&collector, &CurveCollector::came, this, &PlotPane::take);
    connect(&collector, &CurveCollector::failed, this, &PlotPane::say);
    connect(&window, &TimeWindow::shownChanged, this, [this] {
        if (window.showsAll() && showsWhole) {
            return;
        }
        if (window.showsAll() && collector.whole() != nullptr) {
            showsWhole = true;
            collector.cancel();
            view->setData(collector.whole());
            list->refresh();
            grow();
        } else {
            later.start(collectAfter);
        }
    });
}

void PlotPane::grow()
{
    boxes->setTypes(times.types());
    if (window.showsAll() && !later.isActive() && !isCancelled) {
        later.start(growEvery);
    }
}

// What is plotted has changed.
void PlotPane::follow()
{
    isCancelled = false;
    lastJump.reset();
    view->forgetLines();
    list->refresh();
    const PlotField* const field = boxes->field();
    followedKinds =
        field != nullptr ? followed(*field, boxes->key(), boxes->issue()) : FollowedKinds{};
    collector.follow(followedKinds);
    list->setField(field != nullptr ? &field->field() : nullptr);
    view->setProblem(tr("Collecting..."));
    showTexts();
    say({});
    later.start(0);
}

void PlotPane::collect()
{
    const bool isGrowing = window.showsAll() && collector.whole() != nullptr;
    if (followedKinds.empty() || (isGrowing && collector.seen() >= times.size())) {
        return;
    }
    if (isGrowing && collector.isBusy()) {
        later.start(growEvery);
        return;
    }
    // What is beside the range shown will be wanted next, and joins its lines to their ends.
    const Range& shown = window.shown();
    const double beside = shown.length() / 2;
    const Range wide{shown.low - beside, shown.high + beside};
    collector.collect(window.showsAll() ? std::nullopt : std::optional(wide));
    watch.start();
}

void PlotPane::take(const std::shared_ptr<const FieldCurves>& curves, bool isComplete)
{
    showsWhole = curves == collector.whole();
    view->setData(curves);
    if (isComplete && view->lines().empty()) {
        view->setProblem(tr("No message here has a value of this field."));
    }
    list->refresh();
    if (curves->others() > 0) {
        say(tr("More than %1 lines: the others are not shown.").arg(FieldCurves::mostTracks));
    }
    if (isComplete && showsWhole && collector.seen() < times.size()) {
        grow();
    }
}

void PlotPane::showTexts()
{
    const PlotField* const field = boxes->field();
    if (field == nullptr) {
        return;
    }
    const PlotField* const key = boxes->key();
    const PlotField* const issue = boxes->issue();
    view->setTexts({.field = field->name,
                    .key = key != nullptr ? key->field().name : std::string(),
                    .issue = issue != nullptr ? issue->field().name : std::string(),
                    .unit = field->unit});
}

void PlotPane::showProgress()
{
    const bool isWriting = writer.isBusy();
    const bool isBusy = isWriting || collector.isBusy();
    progress->setVisible(isBusy);
    cancelButton->setVisible(isBusy);
    progress->setValue(
        static_cast<int>(std::lround(permille * (isWriting ? written->load() : collector.done()))));
    if (!isBusy) {
        watch.stop();
    }
}

void PlotPane::cancel()
{
    if (writer.isBusy()) {
        writer.cancel();
        say(tr("Not saved."));
    } else if (collector.isBusy()) {
        collector.cancel();
        isCancelled = true;
        say(tr("Collecting was cancelled: not all values are shown."));
    }
}

QString PlotPane::lineName(const PlotView::Key& key) const
{
    const auto& lines = view->lines();
    const auto found =
        std::find_if(lines.begin(), lines.end(), [&](const auto& each) { return each.key == key; });
    return found != lines.end() ? QString::fromStdString(found->name) : QString();
}

void PlotPane::jump()
{
    const auto steps = view->greatestSteps();
    if (steps.empty()) {
        say(tr("No line that is shown makes a step here."));
        return;
    }
    const auto before = std::find_if(steps.begin(), steps.end(), [&](const auto& step) {
        return lastJump && step.first == lastJump->first && step.second.to.x == lastJump->second;
    });
    const bool isFirst = before == steps.end() || std::next(before) == steps.end();
    const auto& [key, step] = isFirst ? steps.front() : *std::next(before);
    lastJump = {key, step.to.x};
    window.reveal(step.to.x);
    view->setCursor(step.to.x);
    choose({key, step.to});
    say(tr("%1: from %2 to %3 at %4")
            .arg(lineName(key), numberText(step.from.y), numberText(step.to.y),
                 QString::fromStdString(TimeScale(0, false, window.whole()).text(step.to.x))));
}

// Of several messages at one time it is the one with the value.
void PlotPane::choose(const PlotView::Near& point)
{
    const auto reading =
        std::make_shared<const FieldReading>(FieldReading{.format = document.format(),
                                                          .input = document.again(),
                                                          .index = document.index(),
                                                          .times = times,
                                                          .kinds = kindsOf(followedKinds),
                                                          .range = {point.point.x, point.point.x}});
    chooser.begin([this, reading, point, fields = followedKinds](const LatestTask::Stop& stop) {
        std::optional<std::size_t> chosen;
        FieldPlace field;
        std::atomic<double> done;
        const auto take = [&](const Found& found, std::size_t place, double) {
            const FieldPlace own = chosen ? FieldPlace() : placeOf(fields, found, point);
            if (!own.isNone()) {
                chosen = place;
                field = own;
            }
        };
        const std::string problem = reading->read(take, stop, done);
        QMetaObject::invokeMethod(this, [this, chosen, field, problem] {
            if (chosen) {
                Q_EMIT entryChosen(*chosen, field);
            } else if (!problem.empty()) {
                say(QString::fromStdString(problem));
            }
        });
    });
}

void PlotPane::save()
{
    const QString name = QFileDialog::getSaveFileName(
        this, tr("Save what is shown"), QString(),
        tr("Picture (*.png);;Drawing (*.svg);;All values in this time (*.csv)"));
    if (!name.isEmpty()) {
        saveAs(name);
    }
}

void PlotPane::saveAs(const QString& name)
{
    if (name.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        saveDrawing(name);
    } else if (name.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive)) {
        saveValues(name);
    } else if (name.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive)) {
        savePicture(name);
    } else {
        say(tr("Not saved: the name must end in .png, .svg or .csv."));
    }
}

void PlotPane::savePicture(const QString& name)
{
    QImage image(view->size() * pictureScale, QImage::Format_RGB32);
    image.setDotsPerMeterX(image.dotsPerMeterX() * pictureScale);
    image.setDotsPerMeterY(image.dotsPerMeterY() * pictureScale);
    QPainter painter(&image);
    painter.setFont(font());
    const double scale = pictureScale * view->scale();
    painter.scale(scale, scale);
    PainterCanvas canvas(painter, isDark(palette()));
    const Box box{0, 0, image.width() / scale, image.height() / scale};
    canvas.fill(box);
    view->drawWhole(canvas, box);
    painter.end();
    say(image.save(name, "PNG") ? tr("Saved %1.").arg(name)
                                : tr("Cannot write %1: choose another folder or name.").arg(name));
}

void PlotPane::saveDrawing(const QString& name)
{
    const double scale = view->scale();
    const Box box{0, 0, view->width() / scale, view->height() / scale};
    SvgCanvas canvas({.width = box.width,
                      .height = box.height,
                      .title = view->title(),
                      .description = view->note()},
                     true);
    view->drawWhole(canvas, box);
    Output out;
    const bool isOpen = out.open(name.toStdString());
    if (isOpen) {
        out.write(canvas.take());
    }
    say(isOpen && out.close() ? tr("Saved %1.").arg(name) : QString::fromStdString(out.problem()));
}

// Of the stretch that is marked, or of the time that is shown.
void PlotPane::saveValues(const QString& name)
{
    const PlotField* const field = boxes->field();
    if (field == nullptr) {
        say(tr("Not saved: there is nothing to plot."));
        return;
    }
    const auto& stretch = window.stretch();
    const auto reading = std::make_shared<const FieldReading>(
        FieldReading{.format = document.format(),
                     .input = document.again(),
                     .index = document.index(),
                     .times = times,
                     .kinds = kindsOf(followedKinds),
                     .range = stretch ? Range{stretch->from, stretch->to} : window.shown()});
    const PointTable table{
        followedKinds, boxes->key() != nullptr ? boxes->key()->name : std::string(), field->name};
    say(tr("Writing %1...").arg(name));
    writer.begin([this, reading, table, name](const LatestTask::Stop& stop) {
        Output out;
        const bool isOpen = out.open(name.toStdString());
        const std::string problem =
            isOpen ? table.write(*reading, stop, *written, out) : out.problem();
        const bool isGood = isOpen && problem.empty() && !stop() && out.close();
        const QString text =
            isGood ? tr("Saved %1.").arg(name)
                   : QString::fromStdString(problem.empty() ? out.problem() : problem);
        if (!stop()) {
            QMetaObject::invokeMethod(this, [this, text] { say(text); });
        }
    });
    watch.start();
}

// Compiled here instead of on its own.
#include "moc_PlotPane.cpp"
