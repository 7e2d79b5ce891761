// The lanes of a document, with what they need kept up to date beside the window.
#pragma once

#include "viewer/plots/LanesView.h"
#include "viewer/plots/LatestTask.h"
#include "viewer/plots/Timeline.h"

#include <QLabel>
#include <QTimer>
#include <QWidget>

class LanesPane : public QWidget {
    Q_OBJECT

public:
    // The time line must outlive the pane.
    explicit LanesPane(Timeline& timeline);

    // Whether what is shown is still being collected.
    bool isBusy() const { return later.isActive() || task.isBusy(); }

Q_SIGNALS:
    void entryChosen(quint64 place);

private:
    void grow();
    void collect();
    void collectWhole(const IndexTimes& now);
    void collectPart(const IndexTimes& now);
    void take(const std::shared_ptr<const LaneData>& lanes, bool isWhole);

    const Document& document;
    const IndexTimes& times;
    TimeWindow& window;
    LanesView* view;
    QLabel* line;
    std::shared_ptr<const LaneData> whole;
    std::shared_ptr<const LaneData> part;
    QTimer later;
    LatestTask task;
};
