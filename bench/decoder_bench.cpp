// The decoder object with a receiver on each of its signals, against the codec that it drives, and
// against that and the signals alone, which are Qt's.
#include "FormatInfo.h"
#include "Measured.h"
#include "Message.h"
#include "RTCM2Decoder.h"
#include "RTCM2_Message_Type_1_Message.h"

namespace bench {

namespace {

const std::vector<Message>& messages()
{
    static const auto made = messagesOfType(1, 30);
    return made;
}

void countMessages(MessageSource& source, std::uint64_t& sum)
{
    const auto count = [&sum](const ::Message* message) {
        sum += message->getMessageInfo() != nullptr ? 1 : 0;
    };
    QObject::connect(&source, &MessageSource::newMessageEarly, count);
    QObject::connect(&source, &MessageSource::newMessage, count);
    QObject::connect(&source, &MessageSource::newMessageLate, count);
}

void emitSignals(benchmark::State& state)
{
    MessageSource source;
    std::uint64_t sum = 0;
    countMessages(source, sum);
    RTCM2_Message_Type_1_s record{};
    const RTCM2_Message_Type_1_Message message(&record, false);
    measure(state, messages(), [&](const Message&) {
        Q_EMIT source.newMessageEarly(&message);
        Q_EMIT source.newMessage(&message);
        Q_EMIT source.newMessageLate(&message);
        return sum;
    });
}

void decodeMessage(benchmark::State& state)
{
    RTCM2Decoder decoder(nullptr);
    std::uint64_t sum = 0;
    std::uint64_t events = 0;
    countMessages(decoder, sum);
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
    benchmark::RegisterBenchmark("object/type 1, 18 corrections/signals", emitSignals);
    return true;
}();

}    // namespace

}    // namespace bench
