// An occurrence that a decoder or an accessor reports.
#pragma once

#include "HostExport.h"

#include <QMetaType>
#include <QString>

class FormatInfo;

// Copyable value; emitted by value through MessageSource::newEvent and thrown by value.
class HOST_FRAMEWORK_EXPORT VorloEvent {
public:
    enum Type {
        UnknownMessageType = 3,
        DecodingError = 4,
        InconsistentDecoderState = 5,
        AccessorMisuse = 6
    };

    VorloEvent();
    VorloEvent(Type type, QString text, const FormatInfo* format);

    Type getType() const { return type; }
    const QString& getText() const { return text; }
    // The format that the event belongs to; may be null.
    const FormatInfo* getFormatInfo() const { return format; }

private:
    Type type = InconsistentDecoderState;
    QString text;
    const FormatInfo* format = nullptr;
};

Q_DECLARE_METATYPE(VorloEvent)
