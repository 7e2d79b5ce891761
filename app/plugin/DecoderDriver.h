// Hands packed messages to a decoder and tells what came of each.
#pragma once

#include "MessageSource.h"
#include "VorloEvent.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <span>

class AbstractDecoder;
class Message;

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
    const Message* message = nullptr;    // valid until the next message is decoded
    int result = 0;                      // the decoder's: bits consumed, or a negative code
    QString text;                        // of the event, for what gave no message
};

// Listens to the decoder's signals from construction to destruction. The decoder must outlive it.
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
    Outcome outcomeOf(int result) const;
    void keepMessage(const Message* message);
    void keepEvent(const VorloEvent& event);
    void dropMessage();
    Outcome::Kind kindOf(int result) const;

    AbstractDecoder& decoder;
    bool (*switchedOff)(int result);
    const Message* kept = nullptr;
    bool unknownType = false;
    QString eventText;

    MessageSource recordings;    // emits what was recorded
    std::unique_ptr<Tap> tap;
    std::unique_ptr<QObject> extractor;    // from recordings to tap
};
