#include "DecoderDriver.h"

#include "AbstractDecoder.h"
#include "Message.h"

DecoderDriver::DecoderDriver(AbstractDecoder& driven, bool (*isSwitchedOff)(int))
    : decoder(driven), switchedOff(isSwitchedOff)
{
    connect(&decoder, &MessageSource::newMessage, this, &DecoderDriver::keepMessage);
    connect(&decoder, &MessageSource::newEvent, this, &DecoderDriver::keepEvent);
}

DecoderDriver::~DecoderDriver()
{
    dropMessage();
}

Outcome DecoderDriver::decode(std::span<const std::uint8_t> packed)
{
    dropMessage();
    unknownType = false;
    eventText.clear();
    const int result = decoder.decodeMessage(packed.data(), static_cast<unsigned>(packed.size()));
    return {.kind = kindOf(result), .message = kept, .result = result, .text = eventText};
}

void DecoderDriver::keepMessage(const Message* message)
{
    dropMessage();
    message->addReference();
    kept = message;
}

void DecoderDriver::keepEvent(const VorloEvent& event)
{
    unknownType = event.getType() == VorloEvent::UnknownMessageType;
    eventText = event.getText();
}

void DecoderDriver::dropMessage()
{
    if (kept != nullptr) {
        kept->removeReference();
        kept = nullptr;
    }
}

Outcome::Kind DecoderDriver::kindOf(int result) const
{
    if (kept != nullptr) {
        return Outcome::Kind::message;
    }
    if (unknownType) {
        return Outcome::Kind::unknownType;
    }
    if (switchedOff(result)) {
        return Outcome::Kind::switchedOff;
    }
    return result < 0 ? Outcome::Kind::misfit : Outcome::Kind::unreported;
}
