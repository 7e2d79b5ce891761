// One process-wide object that may be asked for again while it is being constructed.
#pragma once

#include <cstdlib>
#include <new>

// A function-local static must not be entered again during its own construction, but descriptors
// refer to each other while they are built. Here the object counts as existing before its
// constructor runs, so a nested call returns the address of the object under construction. It is
// destroyed when the library is unloaded, in the reverse order of completed constructions.
//
// T befriends Singleton<T>, because its constructor and destructor are private. The first call must
// complete on one thread before others call.
template <class T>
class Singleton {
public:
    static T* instance()
    {
        if (!begun) {
            begun = true;
            new (storage) T;
            std::atexit(destroy);
        }
        return std::launder(reinterpret_cast<T*>(storage));
    }

private:
    static void destroy() { std::launder(reinterpret_cast<T*>(storage))->~T(); }

    alignas(T) inline static unsigned char storage[sizeof(T)];
    inline static bool begun = false;
};
