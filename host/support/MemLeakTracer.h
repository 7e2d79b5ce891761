// Counts live objects by class.
#pragma once

#include "SupportExport.h"

#include <QHash>
#include <QString>

// Every counted class reports its constructor and its destructor. Safe to call from any thread and
// during the unloading of libraries.
class HOST_SUPPORT_EXPORT MemLeakTracer {
public:
    static void allocateObject(QString className);
    static void deallocateObject(QString className);

    // Objects alive of one class, of all classes together, and the classes with a count that is
    // not zero. A negative count means more destructors than constructors.
    static int liveObjects(const QString& className);
    static int liveObjects();
    static QHash<QString, int> liveObjectsByClass();
};
