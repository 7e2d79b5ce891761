#include "AbstractDecoder.h"

#include <utility>

AbstractDecoder::AbstractDecoder(QString decoderName, QObject* parent)
    : MessageSource(parent), name(std::move(decoderName))
{
}

AbstractDecoder::~AbstractDecoder() = default;

bool AbstractDecoder::enableMessage(const MessageInfo* info)
{
    const auto entry = messageEnums.constFind(info);
    if (entry == messageEnums.constEnd()) {
        return false;
    }
    enableMessageEnum(*entry);
    return true;
}

bool AbstractDecoder::disableMessage(const MessageInfo* info)
{
    const auto entry = messageEnums.constFind(info);
    if (entry == messageEnums.constEnd()) {
        return false;
    }
    disableMessageEnum(*entry);
    return true;
}

bool AbstractDecoder::isMessageEnabled(const MessageInfo* info) const
{
    const auto entry = messageEnums.constFind(info);
    return entry != messageEnums.constEnd() && isEnabledMessageEnum(*entry);
}

void AbstractDecoder::setMessageEnum(const MessageInfo* info, int value)
{
    messageEnums.insert(info, value);
}

// Compiled here instead of on its own.
#include "moc_AbstractDecoder.cpp"
