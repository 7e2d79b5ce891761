#include "session/Pipeline.h"

Pipeline::Pipeline(Sink& target) : sink(target), done(target.isDone()) {}

Pipeline::~Pipeline()
{
    {
        const Lock lock(mutex);
        isEnding = true;
    }
    changed.notify_all();
    if (worker.joinable()) {
        worker.join();
    }
}

void Pipeline::add(const std::string& input)
{
    Slot& slot = filling();
    if (slot.count == 0) {
        slot.batch = {.input = &input, .kindBefore = lastKind, .found = {}};
    }
    if (slot.found[slot.count].kind != nullptr) {
        lastKind = slot.found[slot.count].kind;
    }
    if (++slot.count == batchSize) {
        submit();
    }
}

void Pipeline::flush()
{
    if (filling().count > 0) {
        submit();
    }
    Lock lock(mutex);
    while (taken < submitted && failure == nullptr) {
        if (!printNext(lock)) {
            changed.wait(lock);
        }
    }
    rethrow();
}

// Afterwards a batch is free to be filled.
void Pipeline::submit()
{
    Slot& full = filling();
    full.batch.found = std::span(full.found).first(full.count);
    full.isPrinted = false;
    Lock lock(mutex);
    ++submitted;
    changed.notify_all();
    if (submitted == 2 && std::thread::hardware_concurrency() > 1) {
        worker = std::thread(&Pipeline::work, this);
    }
    while (failure == nullptr &&
           (submitted - taken == slotCount || (submitted > taken && !worker.joinable()))) {
        if (!printNext(lock)) {
            changed.wait(lock);
        }
    }
    rethrow();
    filling().count = 0;
}

void Pipeline::work()
{
    Lock lock(mutex);
    while (!isEnding && failure == nullptr) {
        if (!printNext(lock)) {
            changed.wait(lock);
        }
    }
}

// Prints a batch that nobody has begun and lets the sink take what is printed. False when there is
// no such batch.
bool Pipeline::printNext(Lock& lock)
{
    if (claimed == submitted) {
        return false;
    }
    Slot& next = slot(claimed++);
    lock.unlock();
    std::exception_ptr problem;
    try {
        next.text.clear();
        sink.print(next.batch, next.text);
    } catch (...) {
        problem = std::current_exception();
    }
    lock.lock();
    next.isPrinted = true;
    if (problem != nullptr) {
        failure = problem;
        changed.notify_all();
    } else {
        takePrinted(lock);
    }
    return true;
}

void Pipeline::takePrinted(Lock& lock)
{
    while (!isTaking && failure == nullptr && taken < claimed && slot(taken).isPrinted) {
        isTaking = true;
        Slot& next = slot(taken);
        lock.unlock();
        std::exception_ptr problem;
        try {
            sink.take(next.batch, next.text);
            done.store(sink.isDone(), std::memory_order_relaxed);
        } catch (...) {
            problem = std::current_exception();
        }
        lock.lock();
        isTaking = false;
        failure = problem != nullptr ? problem : failure;
        ++taken;
        changed.notify_all();
    }
}

void Pipeline::rethrow()
{
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}
