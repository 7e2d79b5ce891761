// Who is said to send a message that does not tell it.
#pragma once

#include "forms/Envelope.h"

#include <cstdint>
#include <optional>

struct SenderDefaults {
    std::optional<std::uint32_t> mmsi{};
    std::int32_t longitude = AisSender::noLongitude;
    std::int32_t latitude = AisSender::noLatitude;

    // With its own MMSI and position as far as the sender has them; nothing where there is no MMSI.
    std::optional<AisSender> complete(const std::optional<AisSender>& sender) const
    {
        if (!sender && !mmsi) {
            return std::nullopt;
        }
        AisSender complete = sender ? *sender : AisSender{.mmsi = *mmsi};
        if (!complete.hasPosition()) {
            complete.longitude = longitude;
            complete.latitude = latitude;
        }
        return complete;
    }
};
