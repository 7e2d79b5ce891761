// Columns with what comes with messages beside their own fields.
#pragma once

#include "format/EnvelopeField.h"
#include "forms/TimeStamp.h"

#include <string>

// When messages were received, if that is asked for, and who sent them, from the first message on
// that came by AIS.
class EnvelopeColumns {
public:
    explicit EnvelopeColumns(bool withTimes) : times(withTimes) {}

    // Whether this message is the first one of those that need more columns.
    bool grow(const Envelope& envelope)
    {
        const bool isFirst = !senders && envelope.sender.has_value();
        senders = senders || isFirst;
        return isFirst;
    }

    // Calls `take` with the name and the label of each of them and with how wide its texts may be.
    template <class Take>
    void eachName(Take take) const
    {
        if (times) {
            take("Received", "Received", timeWidth);
        }
        for (const EnvelopeField& field : shownFields()) {
            take(field.name, field.label, field.width);
        }
    }

    // Likewise with the text of each of them, which is empty where the message has none.
    template <class Take>
    void eachCell(const Envelope& envelope, Take take) const
    {
        if (times) {
            take(envelope.received ? timeText(*envelope.received) : std::string(), timeWidth);
        }
        for (const EnvelopeField& field : shownFields()) {
            take(envelopeText(field, envelope), field.width);
        }
    }

private:
    static constexpr std::size_t timeWidth = 27;

    std::span<const EnvelopeField> shownFields() const
    {
        return senders ? envelopeFields() : std::span<const EnvelopeField>();
    }

    bool times;
    bool senders = false;
};
