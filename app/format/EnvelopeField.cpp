#include "format/EnvelopeField.h"

#include "base/Names.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<EnvelopeField, 3> fields = {{
    {.name = "MMSI",
     .jsonKey = "mmsi",
     .unit = "",
     .decimals = 0,
     .valueOf = [](const AisSender& sender) { return static_cast<double>(sender.mmsi); },
     .isOfPosition = false},
    {.name = "Sender_Longitude",
     .jsonKey = "sender_longitude",
     .unit = "degrees",
     .decimals = 6,
     .valueOf = [](const AisSender& sender) { return sender.longitudeDegrees(); },
     .isOfPosition = true},
    {.name = "Sender_Latitude",
     .jsonKey = "sender_latitude",
     .unit = "degrees",
     .decimals = 6,
     .valueOf = [](const AisSender& sender) { return sender.latitudeDegrees(); },
     .isOfPosition = true},
}};

}    // namespace

std::span<const EnvelopeField> envelopeFields()
{
    return fields;
}

const EnvelopeField* envelopeField(std::string_view name)
{
    const auto* const found =
        std::find_if(fields.begin(), fields.end(),
                     [&](const EnvelopeField& field) { return sameName(field.name, name); });
    return found != fields.end() ? found : nullptr;
}
