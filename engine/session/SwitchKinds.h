// What need not be decoded.
#pragma once

#include "AbstractDecoder.h"
#include "filter/MessageFilter.h"

// Switches kinds off that cannot pass.
inline void switchKinds(AbstractDecoder& decoder, const FormatModel& model,
                        const MessageFilter& filter)
{
    for (const auto& kind : model.kinds()) {
        if (kind->info != nullptr && !filter.takesKind(*kind)) {
            decoder.disableMessage(kind->info);
        }
    }
}
