// Hands packed messages to a decoder and tells what came of each.
#pragma once

#include "plugin/MessageReference.h"

#include "MessageSource.h"
#include "VorloEvent.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <span>

class AbstractDecoder;

// What the decoder made of one packed message.
struct Outcome {
    enum class Kind {
        message,        // a message object
        unreported,     // decoded, but of a kind that the decoder reports to nobody
        unknownType,    // of no kind that the decoder knows
        switchedOff,    // of a kind that is switched off
        misfit,         // of a known kind, but its content does not fit
    };

    Kind kind = Kind::unreported;
    MessageReference message{};
    const void* record = nullptr;    // the message's; lives as long as the message
    int result = 0;                  // the decoder's: bits consumed, or a negative code
    // What was decoded; valid until the next message is decoded, or as long as what was given.
    std::span<const std::uint8_t> packed{};
    QString text{};    // of the event, for what gave no message
};

// Listens to the decoder's signals from construction to destruction. The decoder must outlive it.
// Used by one thread at a time, whichever that is.
class DecoderDriver : public QObject {
    Q_OBJECT

public:
    // What turns the recorded blocks of a source into messages for a decoder. The mode is that of
    // blocks that carry none.
    using ExtractorFactory = std::unique_ptr<QObject> (*)(MessageSource*, AbstractDecoder*,
                                                          unsigned char mode);

    // `isSwitchedOff` says whether a negative result means that the kind is switched off.
    DecoderDriver(AbstractDecoder& driven, bool (*isSwitchedOff)(int result),
                  ExtractorFactory makeExtractor);
    ~DecoderDriver() override;

    Outcome decode(std::span<const std::uint8_t> packed);

    // Decodes a message as a receiver recorded it, in units of four bytes. The extractor may change
    // it on the way, depending on the mode byte.
    Outcome extract(std::span<const std::uint8_t> recorded, unsigned char mode);

private:
    class Tap;

    void forget();
    Outcome outcomeOf(int result, std::span<const std::uint8_t> packed);
    void keepMessage(const Message* message) { kept = MessageReference(message); }
    void keepEvent(const VorloEvent& event);
    Outcome::Kind kindOf(int result) const;

    AbstractDecoder& decoder;
    bool (*switchedOff)(int result);
    MessageReference kept;
    bool unknownType = false;
    QString eventText;

    MessageSource recordings;    // emits what was recorded
    std::unique_ptr<Tap> tap;
    std::unique_ptr<QObject> extractor;    // from recordings to tap
};
