#include "viewer/document/Pass.h"

#include "base/Interrupt.h"

void Pass::begin(std::function<void()> work)
{
    thread = std::thread([this, work = std::move(work)] {
        interrupt::leaveToFirstThread();
        work();
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
