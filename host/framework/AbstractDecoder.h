// Base of all decoders.
#pragma once

#include "HostExport.h"
#include "MessageSource.h"

#include <QHash>
#include <QString>

class MessageInfo;

// A decoder is handed one packed message at a time and answers through the signals of
// MessageSource. The host switches single kinds on and off by their descriptors; the decoder knows
// them by the message-enum values that it registered.
class HOST_FRAMEWORK_EXPORT AbstractDecoder : public MessageSource {
    Q_OBJECT

public:
    AbstractDecoder(QString name, QObject* parent);
    ~AbstractDecoder() override;

    // Decodes the one message at buffer, maxlength bytes long. Returns a positive number of bits
    // on success, a negative error code otherwise.
    virtual int decodeMessage(const unsigned char* buffer, unsigned int maxlength) = 0;
    virtual void enableAllMessages() = 0;
    virtual void disableAllMessages() = 0;

    const QString& getName() const { return name; }

    // The value registered for a descriptor, or -1 when it has none.
    int getMessageEnum(const MessageInfo* info) const { return messageEnums.value(info, -1); }

    // Switch one kind. A descriptor that was never registered changes nothing; false is returned
    // for it.
    bool enableMessage(const MessageInfo* info);
    bool disableMessage(const MessageInfo* info);
    bool isMessageEnabled(const MessageInfo* info) const;

protected:
    void setMessageEnum(const MessageInfo* info, int value);

private:
    virtual void enableMessageEnum(int value) = 0;
    virtual void disableMessageEnum(int value) = 0;
    virtual bool isEnabledMessageEnum(int value) const = 0;

    QString name;
    QHash<const MessageInfo*, int> messageEnums;
};
