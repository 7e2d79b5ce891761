// Work beside the window of which only the latest is wanted.
#pragma once

#include "viewer/document/Pass.h"

#include <condition_variable>
#include <functional>
#include <mutex>

class LatestTask {
public:
    using Stop = std::function<bool()>;
    // Ends soon when it is told to stop.
    using Work = std::function<void(const Stop& isAskedToStop)>;

    LatestTask();
    ~LatestTask();
    LatestTask(const LatestTask&) = delete;
    LatestTask& operator=(const LatestTask&) = delete;

    // Work in its thread is asked to end and what waits is forgotten: this comes in their place.
    void begin(Work work);
    // Only that.
    void cancel();
    bool isBusy() const { return hasWork; }

private:
    void run();

    std::mutex mutex;    // protects what waits
    std::condition_variable canWork;
    Work waiting;
    std::atomic<unsigned> latest = 0;    // number of the work that is wanted
    std::atomic<bool> hasWork = false;
    Pass pass;
};
