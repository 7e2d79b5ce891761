// Rendered by generator/render.py from schema through RTCM2_members.h.j2. Do not edit.
//
// All kinds with their members, for code that fills records by name.
#pragma once

#include "MemberTable.h"
#include "PluginExport.h"

#include <span>

namespace rtcm2 {

// One row for every kind value from 0, the null kind, on.
VORLO_RTCM2_EXPORT std::span<const KindRow> kindRows();

}    // namespace rtcm2
