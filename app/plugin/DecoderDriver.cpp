#include "plugin/DecoderDriver.h"

#include "AbstractDecoder.h"
#include "Message.h"
#include "QLX_DiffCorrIn_Message.h"

// Stands before the decoder, where an extractor hands on what it extracted: it keeps the decoder's
// result, which the extractor does not tell.
class DecoderDriver::Tap : public AbstractDecoder {
public:
    explicit Tap(AbstractDecoder& behind)
        : AbstractDecoder(behind.getName(), nullptr), decoder(behind)
    {
    }

    int decodeMessage(const unsigned char* buffer, unsigned int maxlength) override
    {
        result = decoder.decodeMessage(buffer, maxlength);
        return result;
    }
    void enableAllMessages() override { decoder.enableAllMessages(); }
    void disableAllMessages() override { decoder.disableAllMessages(); }

    int result = 0;

private:
    // Kinds are switched in the decoder itself.
    void enableMessageEnum(int) override {}
    void disableMessageEnum(int) override {}
    bool isEnabledMessageEnum(int) const override { return true; }

    AbstractDecoder& decoder;
};

DecoderDriver::DecoderDriver(AbstractDecoder& driven, bool (*isSwitchedOff)(int),
                             ExtractorFactory makeExtractor)
    : decoder(driven), switchedOff(isSwitchedOff), tap(std::make_unique<Tap>(driven)),
      extractor(makeExtractor(&recordings, tap.get(), 0))
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
    forget();
    return outcomeOf(decoder.decodeMessage(packed.data(), static_cast<unsigned>(packed.size())));
}

Outcome DecoderDriver::extract(std::span<const std::uint8_t> recorded, unsigned char mode)
{
    forget();
    tap->result = 0;
    const auto* block = new QLX_DiffCorrIn_Message(
        QByteArray(reinterpret_cast<const char*>(recorded.data()),
                   static_cast<decltype(QByteArray().size())>(recorded.size())),
        mode);
    block->addReference();
    Q_EMIT recordings.newMessage(block);
    block->removeReference();
    return outcomeOf(tap->result);
}

void DecoderDriver::forget()
{
    dropMessage();
    unknownType = false;
    eventText.clear();
}

Outcome DecoderDriver::outcomeOf(int result) const
{
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

// Compiled here instead of on its own.
#include "moc_DecoderDriver.cpp"
