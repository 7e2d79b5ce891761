// A reading of an input in a thread of its own, which can be ended at any time.
#pragma once

#include <atomic>
#include <functional>
#include <thread>

// What follows is for the thread that owns the pass; the work runs beside it.
class Pass {
public:
    Pass() = default;
    ~Pass() { end(); }
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    void begin(std::function<void()> work);
    // Asks the work to end.
    void cancel() { isCancelled = true; }
    // The same, and waits for it.
    void end();

    bool isFinished() const { return finished; }
    // For the work.
    bool isAskedToEnd() const { return isCancelled; }

private:
    std::atomic<bool> isCancelled = false;
    std::atomic<bool> finished = false;
    std::thread thread;
};
