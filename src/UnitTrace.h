// The trace record that every source unit keeps.
#pragma once

#include "dbg.h"

struct UnitTrace {
    const char* module;
    const char* unitClass;
    const char* path;
    int active = -1;    // cached answer of the support library; -1 until it has been asked

    // Every traced call passes here; the first one asks whether tracing is active.
    void pass()
    {
        if (active < 0) {
            active = dbg_SubModActive(module, unitClass);
        }
    }
};
