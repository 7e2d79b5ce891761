#include "viewer/plots/CurveCollector.h"

#include <QElapsedTimer>

#include <limits>

namespace {

constexpr std::size_t binsOfCurve = 1024;
constexpr qint64 showEvery = 500;    // milliseconds
constexpr Range anyTime{-std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::infinity()};

}    // namespace

std::vector<const KindModel*> kindsOf(const FollowedKinds& fields)
{
    std::vector<const KindModel*> kinds;
    for (const FollowedFields& each : fields) {
        kinds.push_back(each.kind);
    }
    return kinds;
}

CurveCollector::CurveCollector(const Document& read, const IndexTimes& timesOfIt)
    : document(read), times(timesOfIt)
{
}

void CurveCollector::follow(const FollowedKinds& wanted)
{
    cancel();
    fields = wanted;
    all.reset();
    next = 0;
}

void CurveCollector::cancel()
{
    ++latest;
    task.cancel();
}

void CurveCollector::collect(const std::optional<Range>& range)
{
    const bool goesOn = !range && all != nullptr;
    const auto job =
        std::make_shared<Job>(Job{.reading = {.format = document.format(),
                                              .input = document.again(),
                                              .index = document.index(),
                                              .times = times,
                                              .kinds = kindsOf(fields),
                                              .range = range.value_or(anyTime),
                                              .from = goesOn ? next : 0},
                                  .curves = goesOn ? *all : FieldCurves(fields, binsOfCurve),
                                  .number = ++latest,
                                  .isWhole = !range});
    task.begin([this, job](const LatestTask::Stop& stop) { run(*job, stop); });
}

void CurveCollector::run(Job& job, const LatestTask::Stop& stop)
{
    QElapsedTimer sinceShown;
    sinceShown.start();
    std::size_t upTo = job.reading.from;
    const auto take = [&](const Found& found, std::size_t place, double seconds) {
        if (found.what == Found::What::unknownType) {
            return;
        }
        job.curves.take(*found.kind, found.record,
                        {job.reading.index[place].station, *found.envelope}, seconds);
        upTo = place + 1;
        if (sinceShown.elapsed() > showEvery) {
            post(job, upTo, false);
            sinceShown.restart();
        }
    };
    const std::string problem = job.reading.read(take, stop, *share);
    if (!problem.empty()) {
        QMetaObject::invokeMethod(
            this, [this, problem] { Q_EMIT failed(QString::fromStdString(problem)); });
    }
    post(job, stop() ? upTo : job.reading.times.size(), true);
}

void CurveCollector::post(const Job& job, std::size_t upTo, bool isComplete)
{
    const auto curves = std::make_shared<const FieldCurves>(job.curves);
    const auto keep = [this, curves, upTo, isComplete, number = job.number, isWhole = job.isWhole] {
        if (number != latest) {
            return;
        }
        if (isWhole) {
            all = curves;
            next = upTo;
        }
        Q_EMIT came(curves, isComplete);
    };
    QMetaObject::invokeMethod(this, keep);
}

// Compiled here instead of on its own.
#include "moc_CurveCollector.cpp"
