// The plug-in loaded, used and unloaded again, several times, by a program that does not link it.
// The program has the host's libraries and stands before their tracer to see what lives how long.
#include "MemLeakTracer.h"

#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string>

#include <dlfcn.h>

namespace {

QStringList constructed;
QStringList destroyed;

void demand(bool met, const char* what)
{
    if (!met) {
        std::fprintf(stderr, "failed: %s\n", what);
        std::exit(1);
    }
}

// Notes the call and hands it on to the host's own tracer.
void pass(QStringList& names, const QString& className, const char* symbol)
{
    // The characters of a literal vanish with the module.
    names << QString(className.constData(), className.size());
    using Trace = void (*)(QString);
    const auto next = reinterpret_cast<Trace>(::dlsym(RTLD_NEXT, symbol));
    demand(next != nullptr, "the host's tracer is there");
    next(className);
}

bool isLoaded(const std::string& library)
{
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find(library) != std::string::npos) {
            return true;
        }
    }
    return false;
}

void loadUseUnload(const char* path)
{
    constructed.clear();
    destroyed.clear();
    QStringList completed;
    void* const module = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    demand(module != nullptr, "the module can be loaded");
    demand(isLoaded("libvorlo_rtcm2"), "the plug-in is seen to be loaded");
    demand(constructed.isEmpty(), "nothing exists before it is asked for");
    const auto use = reinterpret_cast<int (*)(QStringList&)>(::dlsym(module, "usePlugin"));
    demand(use != nullptr && use(completed) == 17, "a message gives the texts of all its values");

    // What was made besides the singletons is gone already.
    demand(constructed.size() - destroyed.size() == completed.size(), "singletons are left");
    destroyed.clear();
    demand(::dlclose(module) == 0, "the module can be closed");
    demand(!isLoaded("libvorlo_rtcm2") && !isLoaded("librtcm2_codec") && !isLoaded(path),
           "the plug-in is unloaded");
    std::reverse(completed.begin(), completed.end());
    demand(destroyed == completed, "singletons go in the reverse order of their completion");
    demand(MemLeakTracer::liveObjectsByClass().isEmpty(), "every object is gone");
}

}    // namespace

void MemLeakTracer::allocateObject(QString className)
{
    pass(constructed, className, "_ZN13MemLeakTracer14allocateObjectE7QString");
}

void MemLeakTracer::deallocateObject(QString className)
{
    pass(destroyed, className, "_ZN13MemLeakTracer16deallocateObjectE7QString");
}

int main(int argc, char** argv)
{
    demand(argc == 2, "one argument: the module");
    std::size_t before = 0;
    for (int round = 0; round < 4; ++round) {
        loadUseUnload(argv[1]);
        constructed = QStringList();
        destroyed = QStringList();
        const std::size_t inUse = ::mallinfo2().uordblks;
        std::printf("%zu bytes in use\n", inUse);
        // The first two make what the host's libraries and the loader keep.
        demand(round < 2 || inUse <= before, "memory returns to its start");
        before = inUse;
    }
    return 0;
}
