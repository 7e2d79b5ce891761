// Collects the curves of a field beside the window.
#pragma once

#include "viewer/document/Document.h"
#include "viewer/plots/FieldReading.h"
#include "viewer/plots/LatestTask.h"
#include "viewer/plots/PlotFields.h"

#include "curves/FieldCurves.h"

#include <QObject>

#include <memory>

// What is plotted: paths as FieldCurves has them.
using FollowedKinds = std::vector<FollowedFields>;
std::vector<const KindModel*> kindsOf(const FollowedKinds& fields);

class CurveCollector : public QObject {
    Q_OBJECT

public:
    // Everything given must outlive the collector.
    CurveCollector(const Document& read, const IndexTimes& timesOfIt);

    // Forgets everything and begins anew with other fields.
    void follow(const FollowedKinds& wanted);
    // Collects what is in the range; of all times where there is none, going on from what is known.
    void collect(const std::optional<Range>& range);
    void cancel();

    bool isBusy() const { return task.isBusy(); }
    // Of what is being read, from 0 to 1.
    double done() const { return *share; }
    // Of all times, as far as they were read; null as long as there are none.
    const std::shared_ptr<const FieldCurves>& whole() const { return all; }
    std::size_t seen() const { return next; }

Q_SIGNALS:
    // Curves have come; the last ones of a collecting are complete.
    void came(std::shared_ptr<const FieldCurves> curves, bool isComplete);
    void failed(const QString& problem);

private:
    struct Job {
        FieldReading reading;
        FieldCurves curves;
        unsigned number;
        bool isWhole;
    };
    void run(Job& job, const LatestTask::Stop& stop);
    void post(const Job& job, std::size_t upTo, bool isComplete);

    const Document& document;
    const IndexTimes& times;
    FollowedKinds fields;
    std::shared_ptr<const FieldCurves> all;
    std::size_t next = 0;
    unsigned latest = 0;    // number of the collecting that is wanted
    std::shared_ptr<std::atomic<double>> share = std::make_shared<std::atomic<double>>(0);
    LatestTask task;
};
