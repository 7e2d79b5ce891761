#include "DecoderSupport.h"

#include "DescriptorLinks.h"
#include "Message.h"
#include "codec_support.h"

#include <algorithm>
#include <limits>

namespace {

QString withTypeNumber(const char* text, unsigned type)
{
    return QString::fromLatin1(text).arg(type);
}

void emitEvent(MessageSource& source, VorloEvent::Type type, const QString& text)
{
    Q_EMIT source.newEvent(VorloEvent(type, text, formatDescriptor()));
}

void reportDecoded(MessageSource& source, const DecoderKind& kind, RTCM2_message_s& decoded)
{
    if (kind.deliver != nullptr) {
        kind.deliver(source, decoded);
    } else if (kind.release != nullptr) {
        kind.release(decoded);
    } else {
        emitEvent(source, VorloEvent::InconsistentDecoderState,
                  QStringLiteral("RTCM2: Inconsistent decoder state"));
    }
}

void reportUnknownType(MessageSource& source, unsigned type)
{
    emitEvent(source, VorloEvent::UnknownMessageType,
              withTypeNumber("RTCM2: Message type %1 unknown to PC software", type));
    Q_EMIT source.newUnknownMessage(formatDescriptor(), withTypeNumber("Message type %1", type));
}

void reportFailure(MessageSource& source, const DecoderKind& kind, int result,
                   RTCM2_message_s& decoded)
{
    if (kind.release != nullptr) {
        kind.release(decoded);
    }
    emitEvent(source, VorloEvent::DecodingError,
              QStringLiteral("RTCM2: %1").arg(QLatin1String(RTCM2_error_to_string(result))));
}

bool isKind(int value)
{
    return value > RTCM2_MESSAGE_NULL && value < RTCM2_MESSAGE_COUNT;
}

}    // namespace

int decodeAndReport(MessageSource& source, RTCM2_context_s& context,
                    std::span<const DecoderKind> kinds, const unsigned char* buffer,
                    unsigned int length)
{
    constexpr unsigned int longest = std::numeric_limits<std::uint16_t>::max();
    const auto size = static_cast<std::uint16_t>(std::min(length, longest));
    RTCM2_message_s decoded;
    decoded.kind = RTCM2_MESSAGE_NULL;    // stays so unless the decoder of a kind runs
    const int result = RTCM2_decode(&context, buffer, size, &decoded);
    const DecoderKind& kind = kinds[decoded.kind];
    if (result > 0) {
        reportDecoded(source, kind, decoded);
    } else if (result == RTCM2_ERR_INVALID_MESSAGE) {
        reportUnknownType(source, context.unknown_type);
    } else {
        reportFailure(source, kind, result, decoded);
    }
    return result;
}

void switchKind(RTCM2_context_s& context, int kind, bool enabled)
{
    if (!isKind(kind)) {
        return;
    }
    const rtcm2::EnableFlag flag(static_cast<unsigned>(kind));
    enabled ? flag.set(context) : flag.clear(context);
}

bool isKindEnabled(const RTCM2_context_s& context, int kind)
{
    return isKind(kind) && rtcm2::EnableFlag(static_cast<unsigned>(kind)).test(context);
}

void switchAllKinds(RTCM2_context_s& context, bool enabled)
{
    RTCM2_context_s all;
    RTCM2_init_context(&all);
    for (unsigned i = 0; i < sizeof all.enabled; ++i) {
        quarn::replaceBits(context.enabled[i], all.enabled[i], enabled ? 0xFF : 0x00);
    }
}

MessageReference::MessageReference(const Message* referenced) : message(referenced)
{
    message->addReference();
}

MessageReference::~MessageReference()
{
    message->removeReference();
}

void emitMessage(MessageSource& source, const Message* message)
{
    const MessageReference reference(message);
    Q_EMIT source.newMessageEarly(message);
    Q_EMIT source.newMessage(message);
    Q_EMIT source.newMessageLate(message);
}
