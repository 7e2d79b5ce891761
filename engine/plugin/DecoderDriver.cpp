#include "plugin/DecoderDriver.h"

#include "AbstractDecoder.h"
#include "QLX_DiffCorrIn_Message.h"

#include <vector>

namespace {

// Opens what messages keep for each other.
struct RecordAccess : Message {
    using Message::getRawRepresentationOf;
};

}    // namespace

// Stands before the decoder, where an extractor hands on what it extracted: it keeps that and the
// decoder's result, which the extractor does not tell.
class DecoderDriver::Tap : public AbstractDecoder {
public:
    explicit Tap(AbstractDecoder& behind)
        : AbstractDecoder(behind.getName(), nullptr), decoder(behind)
    {
    }

    int decodeMessage(const unsigned char* buffer, unsigned int maxlength) override
    {
        packed.assign(buffer, buffer + maxlength);
        result = decoder.decodeMessage(buffer, maxlength);
        return result;
    }
    void enableAllMessages() override { decoder.enableAllMessages(); }
    void disableAllMessages() override { decoder.disableAllMessages(); }

    int result = 0;
    std::vector<std::uint8_t> packed;

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
    // Directly, also when the decoder runs on another thread than the one that made this.
    connect(&decoder, &MessageSource::newMessage, this, &DecoderDriver::keepMessage,
            Qt::DirectConnection);
    connect(&decoder, &MessageSource::newEvent, this, &DecoderDriver::keepEvent,
            Qt::DirectConnection);
}

DecoderDriver::~DecoderDriver() = default;

Outcome DecoderDriver::decode(std::span<const std::uint8_t> packed)
{
    forget();
    return outcomeOf(decoder.decodeMessage(packed.data(), static_cast<unsigned>(packed.size())),
                     packed);
}

Outcome DecoderDriver::extract(std::span<const std::uint8_t> recorded, unsigned char mode)
{
    forget();
    tap->result = 0;
    tap->packed.clear();
    const MessageReference block(new QLX_DiffCorrIn_Message(
        QByteArray(reinterpret_cast<const char*>(recorded.data()),
                   static_cast<decltype(QByteArray().size())>(recorded.size())),
        mode));
    Q_EMIT recordings.newMessage(block.get());
    return outcomeOf(tap->result, tap->packed);
}

void DecoderDriver::forget()
{
    kept.drop();
    unknownType = false;
    eventText.clear();
}

Outcome DecoderDriver::outcomeOf(int result, std::span<const std::uint8_t> packed)
{
    Outcome outcome{.kind = kindOf(result), .result = result, .packed = packed, .text = eventText};
    outcome.record = RecordAccess::getRawRepresentationOf(kept.get());
    outcome.message = std::move(kept);
    return outcome;
}

void DecoderDriver::keepEvent(const VorloEvent& event)
{
    unknownType = event.getType() == VorloEvent::UnknownMessageType;
    eventText = event.getText();
}

Outcome::Kind DecoderDriver::kindOf(int result) const
{
    if (kept.get() != nullptr) {
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
