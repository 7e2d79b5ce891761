#include "viewer/document/Pass.h"

#include "base/Interrupt.h"

#include <new>

void Pass::begin(std::function<void()> work)
{
    thread = std::thread([this, work = std::move(work)] {
        interrupt::leaveToFirstThread();
        try {
            work();
        } catch (const std::bad_alloc&) {    // what there is stays
        }
        finished = true;
    });
}

void Pass::end()
{
    cancel();
    if (thread.joinable()) {
        thread.join();
    }
}
