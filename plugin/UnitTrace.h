// The trace record that every source unit keeps.
#pragma once

#include "dbg.h"

#include <atomic>

struct UnitTrace {
    const char* module;
    const char* unitClass;
    const char* path;
    std::atomic<bool> asked = false;
    int active = -1;    // the support library's answer, once it has been asked

    // Every traced call passes here; the first one, on whatever thread, asks whether tracing is
    // active.
    void pass()
    {
        if (!asked.load(std::memory_order_relaxed) &&
            !asked.exchange(true, std::memory_order_relaxed)) {
            active = dbg_SubModActive(module, unitClass);
        }
    }
};
