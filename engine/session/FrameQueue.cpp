#include "session/FrameQueue.h"

#include "base/Interrupt.h"

#include <system_error>

FrameQueue::FrameQueue(Source framesOf, bool ahead)
    : source(std::move(framesOf)), mayRunAhead(ahead && std::thread::hardware_concurrency() > 1),
      batches(std::make_unique<std::array<FrameBatch, batchCount>>())
{
}

FrameQueue::~FrameQueue()
{
    {
        const std::lock_guard lock(mutex);
        isClosing = true;
    }
    canFill.notify_one();
    if (worker.joinable()) {
        worker.join();
    }
}

const FrameBatch& FrameQueue::next()
{
    if (!worker.joinable()) {
        return fillHere();
    }
    std::unique_lock lock(mutex);
    canGive.wait(lock, [this] { return given < filled || failure != nullptr; });
    if (given == filled) {
        std::rethrow_exception(failure);
    }
    if (filled - given == sparedWakes) {
        canFill.notify_one();
    }
    return batch(given++);
}

const FrameBatch& FrameQueue::fillHere()
{
    FrameBatch& only = batch(0);
    only.clear();
    source(only);
    if (mayRunAhead && only.isFull()) {
        startWorker();
    }
    return only;
}

void FrameQueue::startWorker()
{
    filled = 1;
    given = 1;
    try {
        worker = std::thread(&FrameQueue::fillAhead, this);
    } catch (const std::system_error&) {
        mayRunAhead = false;    // not allowed, or no memory for its stack: it goes without
    }
}

// Up to the batch that ends the input, which is empty. The one that was given last is in use.
void FrameQueue::fillAhead()
{
    interrupt::leaveToFirstThread();
    std::unique_lock lock(mutex);
    bool isAtEnd = false;
    while (!isAtEnd && failure == nullptr && !isClosing) {
        if (filled - given == batchCount - 1) {
            canFill.wait(lock, [this] { return isClosing || filled - given <= sparedWakes; });
            continue;
        }
        FrameBatch& next = batch(filled);
        lock.unlock();
        std::exception_ptr problem;
        try {
            next.clear();
            source(next);
        } catch (...) {
            problem = std::current_exception();
        }
        lock.lock();
        isAtEnd = next.isEmpty();
        failure = problem;
        filled += problem == nullptr ? 1 : 0;
        canGive.notify_one();
    }
}
