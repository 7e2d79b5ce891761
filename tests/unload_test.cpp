// The plug-in loaded, used and unloaded again, several times, by a program that does not link it
// but has the host's libraries, whose tracer tells what is alive. Usage: unload_test <module>
#include "MemLeakTracer.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string>

#include <dlfcn.h>

namespace {

void demand(bool met, const char* what)
{
    if (!met) {
        std::fprintf(stderr, "failed: %s\n", what);
        std::exit(1);
    }
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
    void* const module = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    demand(module != nullptr, "the module can be loaded");
    demand(isLoaded("libvorlo_rtcm2"), "the plug-in is seen to be loaded");
    demand(MemLeakTracer::liveObjectsByClass().isEmpty(), "nothing exists before it is asked for");
    const auto use = reinterpret_cast<int (*)()>(::dlsym(module, "usePlugin"));
    demand(use != nullptr && use() == 17, "a message gives the texts of all its values");
    demand(MemLeakTracer::liveObjects() == 1 + 30 + 259, "the singletons are left, and no more");
    demand(::dlclose(module) == 0, "the module can be closed");
    demand(!isLoaded("libvorlo_rtcm2") && !isLoaded("librtcm2_codec") && !isLoaded(path),
           "the plug-in is unloaded");
    demand(MemLeakTracer::liveObjectsByClass().isEmpty(), "every object is gone");
}

}    // namespace

int main(int argc, char** argv)
{
    demand(argc == 2, "usage: unload_test <module>");
    std::size_t before = 0;
    for (int round = 0; round < 4; ++round) {
        loadUseUnload(argv[1]);
        const std::size_t inUse = ::mallinfo2().uordblks;
        std::printf("%zu bytes in use\n", inUse);
        // The first two make what the host's libraries and the loader keep.
        demand(round < 2 || inUse <= before, "memory returns to its start");
        before = inUse;
    }
    return 0;
}
