// Hands what is found to a sink, in batches and with the help of a second thread.
#pragma once

#include "session/Sink.h"

#include <array>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

// The thread that finds messages fills batches; a second thread prints them, and whoever has
// printed the next one in turn lets the sink take it. When no batch is free, the first thread
// prints one, too, so that both work all the time, however the work is shared out. The second
// thread begins with the second batch, since most inputs are small, and where there is but one
// processor never.
//
// All functions are called by one thread.
class Pipeline {
public:
    explicit Pipeline(Sink& target);
    ~Pipeline();
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    // The place for what is found next, as something before left it; add() makes it count.
    Found& place() { return filling().found[filling().count]; }
    // `input` is the name of the input, valid until flush().
    void add(const std::string& input);

    // Returns when the sink has taken everything.
    void flush();

    bool isDone() const { return done.load(std::memory_order_relaxed); }

private:
    static constexpr std::size_t batchSize = 256;
    static constexpr std::size_t slotCount = 8;

    struct Slot {
        std::array<Found, batchSize> found;
        std::size_t count = 0;
        Batch batch;
        Text text;
        bool isPrinted = false;
    };
    using Lock = std::unique_lock<std::mutex>;

    Slot& slot(std::size_t number) { return slots[number % slotCount]; }
    Slot& filling() { return slot(submitted); }
    void submit();
    void work();
    bool printNext(Lock& lock);
    void takePrinted(Lock& lock);
    void rethrow();

    Sink& sink;
    std::array<Slot, slotCount> slots;
    const KindModel* lastKind = nullptr;

    std::mutex mutex;
    std::condition_variable changed;
    std::size_t submitted = 0;    // batches that were filled
    std::size_t claimed = 0;      // of those, batches whose printing has begun
    std::size_t taken = 0;        // of those, batches that the sink has taken
    bool isTaking = false;
    bool isEnding = false;
    std::exception_ptr failure;
    std::atomic<bool> done{false};
    std::thread worker;
};
