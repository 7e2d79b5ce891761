// Description of a message format.
#pragma once

#include "HostExport.h"

#include <QString>
#include <QVector>

class MessageInfo;

// Lists the message kinds of a format. The kinds belong to the plug-in.
class HOST_FRAMEWORK_EXPORT FormatInfo {
public:
    FormatInfo(const FormatInfo&) = delete;
    FormatInfo& operator=(const FormatInfo&) = delete;

    const QString& getName() const { return name; }
    // Main kinds and sub-message kinds, each in the order of their registration.
    const QVector<const MessageInfo*>& getMessageInfos() const { return messageInfos; }
    const QVector<const MessageInfo*>& getSubMessageInfos() const { return subMessageInfos; }

protected:
    explicit FormatInfo(QString name);
    virtual ~FormatInfo();

    // The descriptor may still be under construction: only its address is kept.
    void addMessageInfo(const MessageInfo* info);
    void addSubMessageInfo(const MessageInfo* info);

private:
    QString name;
    QVector<const MessageInfo*> messageInfos;
    QVector<const MessageInfo*> subMessageInfos;
};
