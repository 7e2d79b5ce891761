// Debug tracing by module.
#pragma once

#include "SupportExport.h"

// Whether tracing is active for a sub-module: 1 or 0. Active sub-modules are named in the
// environment variable DBG_SUBMODULES, a comma-separated list of "module", "module/subModule" or
// "*", read once.
HOST_SUPPORT_EXPORT int dbg_SubModActive(const char* module, const char* subModule);
