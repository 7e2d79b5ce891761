#include "ReferenceCountedObject.h"

#include <QtGlobal>

ReferenceCountedObject::~ReferenceCountedObject() = default;

void ReferenceCountedObject::addReference() const
{
    referenceCount.fetch_add(1, std::memory_order_relaxed);
}

void ReferenceCountedObject::removeReference() const
{
    // Release and acquire: whatever other holders did with the object happens before its end.
    const int before = referenceCount.fetch_sub(1, std::memory_order_acq_rel);
    if (before <= 0) {
        qFatal("ReferenceCountedObject::removeReference() on an object without references.");
    }
    if (before == 1) {
        delete this;
    }
}

int ReferenceCountedObject::getReferenceCount() const
{
    return referenceCount.load(std::memory_order_relaxed);
}
