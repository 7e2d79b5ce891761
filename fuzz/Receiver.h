// A decoder with receivers on all its signals, for targets that feed it.
#pragma once

#include "fuzz.h"

#include "MemLeakTracer.h"
#include "Message.h"
#include "RTCM2Decoder.h"
#include "VorloEvent.h"

#include <functional>

namespace fuzz {

class Receiver {
public:
    explicit Receiver(std::function<void(const Message&)> lookAt)
    {
        QObject::connect(&decoder, &MessageSource::newMessage,
                         [this, lookAt](const Message* message) {
                             if (++messages == 1) {
                                 lookAt(*message);
                             }
                         });
        QObject::connect(&decoder, &MessageSource::newEvent, [this](const VorloEvent& event) {
            ++events;
            promise(3, !event.getText().isEmpty(), "an event without text");
        });
    }

    // Does what makes the decoder decode at most one message; whatever came of it leaves no object
    // behind, and the next good message is delivered.
    template <class Feed>
    void watch(Feed feed)
    {
        const int before = MemLeakTracer::liveObjects();
        messages = 0;
        events = 0;
        feed();
        promise(3, messages + events <= 1, "more than one report of one message");
        promise(6, MemLeakTracer::liveObjects() == before, "an object is left");
        messages = 1;    // not to be looked at
        promise(3, decoder.decodeMessage(goodMessage, sizeof goodMessage) == goodBits,
                "a good message is rejected");
        promise(3, messages == 2, "a good message is not delivered");
        promise(6, MemLeakTracer::liveObjects() == before, "an object is left");
    }

    RTCM2Decoder decoder{nullptr};

private:
    unsigned messages = 0;
    unsigned events = 0;
};

}    // namespace fuzz
