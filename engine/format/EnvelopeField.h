// Who sent a message that came by AIS: what comes with it beside its own fields, by name.
#pragma once

#include "forms/Envelope.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

struct EnvelopeField {
    const char* name;       // as fields are named for programs
    const char* label;      // for people
    const char* jsonKey;    // with the comma before and the colon behind it
    int decimals;           // of the value as text
    std::size_t width;      // of the longest text
    double (*valueOf)(const AisSender& sender);
    bool isOfPosition;    // which a sender may not tell

    // Nothing where the message has none.
    std::optional<double> value(const Envelope& envelope) const
    {
        const bool hasValue = envelope.sender && (!isOfPosition || envelope.sender->hasPosition());
        return hasValue ? std::optional(valueOf(*envelope.sender)) : std::nullopt;
    }
};

std::span<const EnvelopeField> envelopeFields();

// The value as a decimal number; nothing where the message has none.
std::string envelopeText(const EnvelopeField& field, const Envelope& envelope);

// Regardless of case; null for other names.
const EnvelopeField* envelopeField(std::string_view name);
