// A decoded message as the host sees it.
#pragma once

#include "HostExport.h"
#include "ReferenceCountedObject.h"

#include <QString>
#include <QVector>

class MessageInfo;

// The plug-in derives one class per message kind. The host reads its content through the
// FieldInfo objects of getMessageInfo(). A message does not change after decoding; reading it from
// two threads at once is not supported, because sub-message objects may be created on first access.
class HOST_FRAMEWORK_EXPORT Message : public ReferenceCountedObject {
public:
    ~Message() override;

    // Sub-message objects that exist at this moment, owned by this message. Kinds without
    // sub-messages return an empty vector.
    virtual QVector<Message*> getSubMessages();
    virtual QVector<const Message*> getSubMessages() const;

    // The selected fields as one line, in field order, joined by fieldSeparator. Field i is written
    // when i < selection.size() and selection[i] is true.
    virtual QString getRawStringFor(const QVector<bool>& selection) const = 0;

    // Descriptor of the kind; never null for a message of a plug-in.
    const MessageInfo* getMessageInfo() const { return messageInfo; }

    // The message whose part this one is, or null for a main message. Not referenced.
    const Message* getParentMessage() const { return parentMessage; }

    // Stands between two fields of a raw line; ";" unless the host sets it.
    static QString fieldSeparator;
    // Shown for a do-not-use value; "DoNotUse" unless the host sets it.
    static QString doNotUseString;
    // Whether doNotUseString is shown instead of the number; true unless the host sets it.
    static bool useDoNotUseString;

protected:
    explicit Message(const MessageInfo* info) : messageInfo(info) {}

    void setParentMessage(const Message* parent) { parentMessage = parent; }

    // The record behind any message, for comparing identities; null when it holds none.
    static const void* getRawRepresentationOf(const Message* message);

private:
    virtual const void* getRawRepresentation() const = 0;

    const MessageInfo* messageInfo;
    const Message* parentMessage = nullptr;
};
