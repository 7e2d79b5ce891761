// What comes with a message beside its own fields, by name: who sent it.
#pragma once

#include "forms/Envelope.h"

#include <optional>
#include <span>
#include <string_view>

struct EnvelopeField {
    const char* name;    // as fields are named for programs
    const char* jsonKey;
    const char* unit;
    unsigned decimals;    // of the value as text
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

// Regardless of case; null for other names.
const EnvelopeField* envelopeField(std::string_view name);
