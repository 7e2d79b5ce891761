// Where messages come from.
#pragma once

#include "HostExport.h"
#include "VorloEvent.h"

#include <QObject>
#include <QString>

class FormatInfo;
class Message;

// Signals are emitted synchronously on the thread that drives the source. A receiver that keeps a
// message beyond its slot takes a reference of its own.
class HOST_FRAMEWORK_EXPORT MessageSource : public QObject {
    Q_OBJECT

public:
    explicit MessageSource(QObject* parent = nullptr);
    ~MessageSource() override;

Q_SIGNALS:
    // For every message these three, in this order.
    void newMessageEarly(const Message* message);
    void newMessage(const Message* message);
    void newMessageLate(const Message* message);

    void newEvent(VorloEvent event);
    void newUnknownMessage(const FormatInfo* format, QString text);
};
