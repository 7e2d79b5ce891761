// A plot of a field of a document: what is plotted is chosen here, and collected beside the window.
#pragma once

#include "viewer/panes/FieldPlace.h"
#include "viewer/plots/CurveCollector.h"
#include "viewer/plots/FieldBoxes.h"
#include "viewer/plots/LineList.h"
#include "viewer/plots/PlotView.h"
#include "viewer/plots/Timeline.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

class PlotPane : public QWidget {
    Q_OBJECT

public:
    // The time line must outlive the pane.
    explicit PlotPane(Timeline& timeline);

    PlotView& plot() { return *view; }
    bool isBusy() const { return collector.isBusy() || writer.isBusy() || later.isActive(); }

public Q_SLOTS:
    // Goes to the greatest step of a line that is seen, then to the next smaller one.
    void jump();
    // Asks for a file.
    void save();
    // A picture as PNG or SVG, or the values as CSV, by the end of the name.
    void saveAs(const QString& name);
    // What is collected or written ends.
    void cancel();

Q_SIGNALS:
    // A message, and the field of it whose value was chosen.
    void entryChosen(quint64 place, const FieldPlace& field);

private:
    void grow();
    void build();
    void connectAll();
    void follow();
    void collect();
    void take(const std::shared_ptr<const FieldCurves>& curves, bool isComplete);
    void showTexts();
    void showProgress();
    void choose(const PlotView::Near& point);
    void say(const QString& text) { line->setText(text); }
    void savePicture(const QString& name);
    void saveDrawing(const QString& name);
    void saveValues(const QString& name);
    QString lineName(const PlotView::Key& key) const;

    const Document& document;
    const IndexTimes& times;
    TimeWindow& window;
    FieldBoxes* boxes;
    PlotView* view;
    LineList* list;
    QPushButton* jumpButton;
    QPushButton* saveButton;
    QPushButton* cancelButton;
    QProgressBar* progress;
    QLabel* line;
    FollowedKinds followedKinds;
    std::optional<std::pair<PlotView::Key, double>> lastJump;
    bool isCancelled = false;
    bool showsWhole = true;    // the curves that are shown are those of all times
    std::shared_ptr<std::atomic<double>> written = std::make_shared<std::atomic<double>>(0);
    QTimer later;
    QTimer watch;    // of progress
    CurveCollector collector;
    LatestTask chooser;
    LatestTask writer;
};
