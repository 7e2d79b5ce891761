#include "MemLeakTracer.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <numeric>
#include <utility>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace {

// Whether nobody else can be counting: then an addition costs no exchange with other processors.
bool hasOneThread()
{
#if __has_include(<sys/single_threaded.h>)
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}

// Counters stay when they return to zero: a class that comes and goes costs no allocation.
struct Counter {
    explicit Counter(const QString& counted)
        // A deep copy: the characters of a literal vanish with the library that holds it.
        : className(counted.constData(), counted.size())
    {
    }

    bool isOf(const QString& other) const
    {
        return className.size() == other.size() &&
               std::memcmp(className.constData(), other.constData(),
                           static_cast<std::size_t>(other.size()) * sizeof(QChar)) == 0;
    }

    void add(int difference)
    {
        if (hasOneThread()) {
            count.store(count.load(std::memory_order_relaxed) + difference,
                        std::memory_order_relaxed);
        } else {
            count.fetch_add(difference, std::memory_order_relaxed);
        }
    }

    const QString className;
    std::atomic<int> count = 0;
};

// Finds a class's counter by where the caller's name stands in memory, without a lock: names are
// literals, and a class always gives the same one. Where another name has come to stand there, the
// comparison tells.
class Shortcuts {
public:
    Counter* find(const QString& className) const
    {
        Counter* counter = placeOf(className).load(std::memory_order_acquire);
        return counter != nullptr && counter->isOf(className) ? counter : nullptr;
    }

    void remember(const QString& className, Counter* counter)
    {
        placeOf(className).store(counter, std::memory_order_release);
    }

private:
    static constexpr std::size_t placeCount = 512;
    using Places = std::array<std::atomic<Counter*>, placeCount>;

    const Places::value_type& placeOf(const QString& className) const
    {
        // Literals are further apart than 16 bytes.
        return places[reinterpret_cast<std::uintptr_t>(className.constData()) / 16 % placeCount];
    }
    Places::value_type& placeOf(const QString& className)
    {
        return const_cast<Places::value_type&>(std::as_const(*this).placeOf(className));
    }

    Places places{};
};

// There from the beginning, without a constructor that a call might have to wait for.
constinit Shortcuts shortcuts;

struct Ledger {
    std::mutex mutex;    // for counters
    // Not a QHash, which ends the process when there is no memory for an entry.
    std::map<QString, std::unique_ptr<Counter>> counters;
};

// Never destroyed: descriptors and messages report their destructors until the last library has
// been unloaded, after the destructors of this library's own static objects.
Ledger& ledger()
{
    static Ledger& instance = *new Ledger;
    return instance;
}

// The slow way, for a name that has not been seen where it stands; apart, so that the other way
// needs no room for it.
[[gnu::noinline]] Counter* lookUp(const QString& className)
{
    Ledger& book = ledger();
    const std::lock_guard<std::mutex> lock(book.mutex);
    auto entry = book.counters.find(className);
    if (entry == book.counters.end()) {
        auto counter = std::make_unique<Counter>(className);
        const QString key = counter->className;
        entry = book.counters.emplace(key, std::move(counter)).first;
    }
    shortcuts.remember(className, entry->second.get());
    return entry->second.get();
}

void change(const QString& className, int difference)
{
    Counter* counter = shortcuts.find(className);
    if (counter == nullptr) {
        counter = lookUp(className);
    }
    counter->add(difference);
}

}    // namespace

void MemLeakTracer::allocateObject(QString className)
{
    change(className, 1);
}

void MemLeakTracer::deallocateObject(QString className)
{
    change(className, -1);
}

int MemLeakTracer::liveObjects(const QString& className)
{
    return liveObjectsByClass().value(className, 0);
}

int MemLeakTracer::liveObjects()
{
    const QHash<QString, int> alive = liveObjectsByClass();
    return std::accumulate(alive.cbegin(), alive.cend(), 0);
}

QHash<QString, int> MemLeakTracer::liveObjectsByClass()
{
    Ledger& book = ledger();
    const std::lock_guard<std::mutex> lock(book.mutex);
    QHash<QString, int> alive;
    for (const auto& [className, counter] : book.counters) {
        if (const int count = counter->count.load(std::memory_order_relaxed); count != 0) {
            alive.insert(className, count);
        }
    }
    return alive;
}
