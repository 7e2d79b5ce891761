#include "format/EnvelopeField.h"

#include "base/Names.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr std::array<EnvelopeField, 3> fields = {{
    {.name = "MMSI",
     .label = "MMSI",
     .jsonKey = ",\"mmsi\":",
     .decimals = 0,
     .width = 9,
     .valueOf = [](const AisSender& sender) { return static_cast<double>(sender.mmsi); },
     .isOfPosition = false},
    {.name = "Sender_Longitude",
     .label = "Longitude",
     .jsonKey = ",\"sender_longitude\":",
     .decimals = 6,
     .width = 11,
     .valueOf = [](const AisSender& sender) { return sender.longitudeDegrees(); },
     .isOfPosition = true},
    {.name = "Sender_Latitude",
     .label = "Latitude",
     .jsonKey = ",\"sender_latitude\":",
     .decimals = 6,
     .width = 11,
     .valueOf = [](const AisSender& sender) { return sender.latitudeDegrees(); },
     .isOfPosition = true},
}};

}    // namespace

std::span<const EnvelopeField> envelopeFields()
{
    return fields;
}

std::string envelopeText(const EnvelopeField& field, const Envelope& envelope)
{
    const std::optional<double> value = field.value(envelope);
    std::array<char, 40> text{};
    const int size =
        value ? std::snprintf(text.data(), text.size(), "%.*f", field.decimals, *value) : 0;
    return {text.data(), static_cast<std::size_t>(size)};
}

const EnvelopeField* envelopeField(std::string_view name)
{
    const auto* const found =
        std::find_if(fields.begin(), fields.end(),
                     [&](const EnvelopeField& field) { return sameName(field.name, name); });
    return found != fields.end() ? found : nullptr;
}
