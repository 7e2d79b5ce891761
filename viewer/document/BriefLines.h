// How the lines of all kinds are written.
#pragma once

#include "format/BriefLine.h"

#include <vector>

// By the number of the kind.
inline std::vector<BriefLine> briefLines(const FormatModel& model)
{
    std::vector<BriefLine> lines(static_cast<std::size_t>(RTCM2_last_kind()) + 1);
    for (const auto& kind : model.kinds()) {
        if (kind->isMain) {
            lines[kind->number()] = BriefLine(*kind, false);
        }
    }
    lines[model.unknownKind().number()] = BriefLine(model.unknownKind(), false);
    return lines;
}
