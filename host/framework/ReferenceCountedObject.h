// Base of everything that the host counts references on.
#pragma once

#include "HostExport.h"

#include <atomic>

// A new object starts unreferenced; dropping the last reference destroys it. Once an object has a
// reference, the count may be changed from any thread; what the object holds is protected only as
// far as its class says.
class HOST_FRAMEWORK_EXPORT ReferenceCountedObject {
public:
    ReferenceCountedObject(const ReferenceCountedObject&) = delete;
    ReferenceCountedObject& operator=(const ReferenceCountedObject&) = delete;
    virtual ~ReferenceCountedObject();

    // Takes one reference.
    void addReference() const;

    // Drops one reference and destroys the object with the last one. Dropping a reference that
    // nobody holds is a programming error and ends the process through qFatal.
    void removeReference() const;

    // References held at this moment, for diagnosis and tests.
    int getReferenceCount() const;

protected:
    ReferenceCountedObject() = default;

private:
    mutable std::atomic<int> referenceCount{0};
};
