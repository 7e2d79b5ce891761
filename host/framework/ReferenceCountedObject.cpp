#include "ReferenceCountedObject.h"

#include <QtGlobal>

ReferenceCountedObject::~ReferenceCountedObject() = default;

void ReferenceCountedObject::addReference() const
{
    // Of an object without references nobody else knows: the first one need not exchange the count.
    if (referenceCount.load(std::memory_order_relaxed) == 0) {
        referenceCount.store(1, std::memory_order_relaxed);
    } else {
        referenceCount.fetch_add(1, std::memory_order_relaxed);
    }
}

void ReferenceCountedObject::removeReference() const
{
    // Release and acquire: whatever other holders did with the object happens before its end. The
    // only holder need not exchange the count with others: nobody else can take a reference.
    const bool isOnlyHolder = referenceCount.load(std::memory_order_acquire) == 1;
    const int before = isOnlyHolder ? 1 : referenceCount.fetch_sub(1, std::memory_order_acq_rel);
    if (before <= 0) {
        qFatal("ReferenceCountedObject::removeReference() on an object without references.");
    }
    if (before == 1) {
        referenceCount.store(0, std::memory_order_relaxed);    // tells who drops it once more
        delete this;
    }
}

int ReferenceCountedObject::getReferenceCount() const
{
    return referenceCount.load(std::memory_order_relaxed);
}
