#include "viewer/plots/LatestTask.h"

LatestTask::LatestTask()
{
    pass.begin([this] { run(); });
}

LatestTask::~LatestTask()
{
    {
        const std::lock_guard lock(mutex);
        pass.cancel();
        ++latest;
    }
    canWork.notify_one();
    pass.end();
}

void LatestTask::begin(Work work)
{
    const std::lock_guard lock(mutex);
    waiting = std::move(work);
    ++latest;
    hasWork = true;
    canWork.notify_one();
}

void LatestTask::cancel()
{
    const std::lock_guard lock(mutex);
    waiting = nullptr;
    ++latest;
}

void LatestTask::run()
{
    std::unique_lock lock(mutex);
    while (canWork.wait(lock, [this] { return pass.isAskedToEnd() || waiting; }),
           !pass.isAskedToEnd()) {
        const Work work = std::exchange(waiting, nullptr);
        const unsigned number = latest;
        lock.unlock();
        work([this, number] { return latest != number; });
        lock.lock();
        hasWork = waiting != nullptr;
    }
}
