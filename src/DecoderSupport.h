// What the decoder does with one message, for any table of kinds.
#pragma once

#include "MessageSource.h"
#include "RTCM2.h"

#include <memory>
#include <span>

class MessageInfo;

// One codec kind as the decoder treats it. The table of kinds has one entry for every value from 0,
// the null kind, on.
struct DecoderKind {
    // Descriptor, for the kinds that the host knows; null for the others.
    const MessageInfo* (*descriptor)() = nullptr;
    // Wraps a decoded record and hands it to the receivers; null for kinds reported to nobody.
    void (*deliver)(MessageSource& source, RTCM2_message_s& decoded) = nullptr;
    // Releases the arrays of a decoded record; null for kinds that RTCM2_decode never yields.
    void (*release)(RTCM2_message_s& decoded) = nullptr;
};

// Runs the codec on one packed message and reports the outcome through the signals of source.
// Returns the codec's result.
int decodeAndReport(MessageSource& source, RTCM2_context_s& context,
                    std::span<const DecoderKind> kinds, const unsigned char* buffer,
                    unsigned int length);

// Switch the enable flag of one kind; values of no kind change nothing and count as disabled.
void switchKind(RTCM2_context_s& context, int kind, bool enabled);
bool isKindEnabled(const RTCM2_context_s& context, int kind);

// Switch the flags of all main kinds and leave the other bits as they are.
void switchAllKinds(RTCM2_context_s& context, bool enabled);

// Holds one reference on a message and drops it on every way out.
class MessageReference {
public:
    explicit MessageReference(const Message* message);
    ~MessageReference();
    MessageReference(const MessageReference&) = delete;
    MessageReference& operator=(const MessageReference&) = delete;

private:
    const Message* message;
};

// Emits a message to early, ordinary and late receivers.
void emitMessage(MessageSource& source, const Message* message);

// Emits a decoded record as an object of its message class, which owns the record's arrays from
// then on. They are released if there is no memory for the object.
template <class MessageClass, class Traits>
void deliverRecord(MessageSource& source, typename Traits::Record& decoded)
{
    std::unique_ptr<typename Traits::Record, decltype(&Traits::freeChildren)> arrays(
        &decoded, Traits::freeChildren);
    const auto* message = new MessageClass(decoded);
    static_cast<void>(arrays.release());
    emitMessage(source, message);
}
