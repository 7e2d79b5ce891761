#include "Delivery.h"

#include "Message.h"
#include "Misuse.h"
#include "PluginKinds.h"
#include "RTCM2_format.h"

#include <cstddef>

namespace {

// Holds one reference on a message and drops it on every way out.
class MessageReference {
public:
    explicit MessageReference(const Message* referenced) : message(referenced)
    {
        message->addReference();
    }
    ~MessageReference() { message->removeReference(); }
    MessageReference(const MessageReference&) = delete;
    MessageReference& operator=(const MessageReference&) = delete;

private:
    const Message* message;
};

// Releases the arrays of a record unless somebody has taken them over.
class Arrays {
public:
    explicit Arrays(RTCM2_message_s& decoded) : record(&decoded) {}
    ~Arrays()
    {
        if (record != nullptr) {
            RTCM2_free_message(record);
        }
    }
    Arrays(const Arrays&) = delete;
    Arrays& operator=(const Arrays&) = delete;

    void handOver() { record = nullptr; }

private:
    RTCM2_message_s* record;
};

QString withTypeNumber(const char* text, unsigned type)
{
    return QString::fromLatin1(text).arg(type);
}

void emitEvent(MessageSource& source, VorloEvent::Type type, const QString& text)
{
    Q_EMIT source.newEvent(VorloEvent(type, text, formatDescriptor()));
}

void emitMessage(MessageSource& source, const Message* message)
{
    const MessageReference reference(message);
    Q_EMIT source.newMessageEarly(message);
    Q_EMIT source.newMessage(message);
    Q_EMIT source.newMessageLate(message);
}

void reportDecoded(MessageSource& source, RTCM2_message_s& decoded)
{
    Arrays arrays(decoded);
    const auto number = static_cast<std::size_t>(decoded.kind);
    const auto make = number < pluginKinds.size() ? pluginKinds[number].make : nullptr;
    if (make != nullptr) [[likely]] {
        const Message* const message = make(decoded);
        arrays.handOver();
        emitMessage(source, message);
        return;
    }
    const RTCM2_kind_s* const kind = RTCM2_kind_of(&decoded);
    if (kind == nullptr || kind->type < 0) {
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

}    // namespace

void report(MessageSource& source, const RTCM2_context_s& context, std::int32_t result,
            RTCM2_message_s& decoded)
{
    if (result > 0) {
        reportDecoded(source, decoded);
    } else if (result == RTCM2_ERR_INVALID_MESSAGE) {
        reportUnknownType(source, context.unknown_type);
    } else {
        RTCM2_free_message(&decoded);
        emitEvent(source, VorloEvent::DecodingError,
                  QStringLiteral("RTCM2: %1").arg(QLatin1String(RTCM2_error_to_string(result))));
    }
}
