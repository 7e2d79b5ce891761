#include "MemLeakTracer.h"

#include <mutex>
#include <utility>

namespace {

struct Ledger {
    std::mutex mutex;
    // Entries stay when their count returns to zero, so that a class that comes and goes costs a
    // look-up and no allocation.
    QHash<QString, int> counts;
};

// Never destroyed: descriptors and messages report their destructors until the last library has
// been unloaded, after the destructors of this library's own static objects.
Ledger& ledger()
{
    static Ledger& instance = *new Ledger;
    return instance;
}

void change(const QString& className, int difference)
{
    Ledger& book = ledger();
    const std::lock_guard<std::mutex> lock(book.mutex);
    const auto entry = book.counts.find(className);
    if (entry != book.counts.end()) {
        *entry += difference;
        return;
    }
    // A deep copy: the characters of a literal vanish with the library that holds it.
    book.counts.insert(QString(className.constData(), className.size()), difference);
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
    Ledger& book = ledger();
    const std::lock_guard<std::mutex> lock(book.mutex);
    return book.counts.value(className, 0);
}

int MemLeakTracer::liveObjects()
{
    Ledger& book = ledger();
    const std::lock_guard<std::mutex> lock(book.mutex);
    int total = 0;
    for (const int count : std::as_const(book.counts)) {
        total += count;
    }
    return total;
}

QHash<QString, int> MemLeakTracer::liveObjectsByClass()
{
    Ledger& book = ledger();
    const std::lock_guard<std::mutex> lock(book.mutex);
    QHash<QString, int> alive;
    for (auto entry = book.counts.cbegin(); entry != book.counts.cend(); ++entry) {
        if (entry.value() != 0) {
            alive.insert(entry.key(), entry.value());
        }
    }
    return alive;
}
