// The frames of an input, batch by batch; those of a long one from a second thread that runs ahead.
#pragma once

#include "session/FrameBatch.h"

#include <array>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

class FrameQueue {
public:
    // Fills an empty batch with the frames that come next; it stays empty at the end of the input.
    // Called by one thread at a time.
    using Source = std::function<void(FrameBatch&)>;

    // `ahead`: the source may run on a second thread, which begins with the second batch, since
    // most inputs are small. Sources that wait for their bytes must not run ahead.
    FrameQueue(Source framesOf, bool ahead);
    ~FrameQueue();
    FrameQueue(const FrameQueue&) = delete;
    FrameQueue& operator=(const FrameQueue&) = delete;

    // The next batch, until the following call; empty at the end. Throws what the source throws.
    const FrameBatch& next();

private:
    static constexpr std::size_t batchCount = 64;
    // A thread that had to wait is woken when there is work for a while: to wake one takes longer
    // than to fill a batch.
    static constexpr std::size_t sparedWakes = batchCount / 2;

    FrameBatch& batch(std::size_t number) { return (*batches)[number % batchCount]; }
    const FrameBatch& fillHere();
    void startWorker();
    void fillAhead();

    Source source;
    bool mayRunAhead;
    std::unique_ptr<std::array<FrameBatch, batchCount>> batches;

    std::mutex mutex;    // protects what follows, but for the worker
    std::condition_variable canFill;
    std::condition_variable canGive;
    std::size_t filled = 0;    // batches
    std::size_t given = 0;     // of those, batches that the reader has or had
    bool isClosing = false;
    std::exception_ptr failure;
    std::thread worker;
};
