// The decoder object with a receiver on each of its signals, against the codec that it drives.
#include "FormatInfo.h"
#include "Measured.h"
#include "Message.h"
#include "RTCM2Decoder.h"

namespace bench {

namespace {

const std::vector<Message>& messages()
{
    static const auto made = messagesOfType(1, 30);
    return made;
}

void decodeMessage(benchmark::State& state)
{
    RTCM2Decoder decoder(nullptr);
    std::uint64_t sum = 0;
    std::uint64_t events = 0;
    const auto count = [&sum](const ::Message* message) {
        sum += message->getMessageInfo() != nullptr ? 1 : 0;
    };
    QObject::connect(&decoder, &MessageSource::newMessageEarly, count);
    QObject::connect(&decoder, &MessageSource::newMessage, count);
    QObject::connect(&decoder, &MessageSource::newMessageLate, count);
    QObject::connect(&decoder, &MessageSource::newEvent, [&events] { ++events; });
    QObject::connect(&decoder, &MessageSource::newUnknownMessage, [&events] { ++events; });
    measure(state, messages(), [&](const Message& packed) {
        const int bits = decoder.decodeMessage(packed.data(), static_cast<unsigned>(packed.size()));
        return sum + static_cast<std::uint64_t>(bits);
    });
    if (events != 0 || sum == 0) {
        state.SkipWithError("the messages did not reach the receivers");
    }
}

const bool registered = [] {
    benchmark::RegisterBenchmark("object/type 1, 18 corrections/rtcm2", decodeMessage);
    return true;
}();

}    // namespace

}    // namespace bench
