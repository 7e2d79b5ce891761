// One value of a field.
#pragma once

#include "FieldType.h"
#include "HostExport.h"

#include <QtGlobal>

class Message;

// Tagged value, cheap to copy. A default-constructed value is not valid. A sub-message value points
// at an element owned by its main message and holds no reference.
class HOST_FRAMEWORK_EXPORT FieldValue {
public:
    FieldValue();
    ~FieldValue();
    FieldValue(const FieldValue&) = default;
    FieldValue& operator=(const FieldValue&) = default;

    static FieldValue byte(unsigned char value);
    static FieldValue ch(char value);
    static FieldValue f64(double value);
    static FieldValue i(qint64 value, unsigned char width);
    static FieldValue u(quint64 value, unsigned char width);
    static FieldValue subMessage(const Message* message);

    bool isValid() const { return valid; }
    FieldType::Kind getKind() const { return kind; }
    unsigned char getWidth() const { return width; }

    // Each accessor is meant for the kinds named; for any other kind it gives 0 or null.
    quint64 toUnsigned() const;             // Byte, Unsigned
    qint64 toSigned() const;                // Signed
    char toCharacter() const;               // Character
    double toDouble() const;                // Float64
    const Message* toSubMessage() const;    // SubMessage

    // Equal when valid, kind, width and content are equal; values that are not valid are equal.
    HOST_FRAMEWORK_EXPORT friend bool operator==(const FieldValue& a, const FieldValue& b);
    friend bool operator!=(const FieldValue& a, const FieldValue& b) { return !(a == b); }

private:
    FieldValue(FieldType::Kind kind, unsigned char width);

    bool valid = false;
    FieldType::Kind kind = FieldType::Byte;
    unsigned char width = 0;
    union {
        quint64 number;
        qint64 signedNumber;
        double real;
        const Message* message;
    };
};
