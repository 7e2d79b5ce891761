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
    FieldValue() : number(0) {}
    ~FieldValue() = default;
    FieldValue(const FieldValue&) = default;
    FieldValue& operator=(const FieldValue&) = default;

    static FieldValue byte(unsigned char value) { return {FieldType::Byte, 8, value}; }
    static FieldValue ch(char value)
    {
        return {FieldType::Character, 8, static_cast<unsigned char>(value)};
    }
    static FieldValue f64(double value)
    {
        FieldValue result(FieldType::Float64, 64, 0);
        result.real = value;
        return result;
    }
    static FieldValue i(qint64 value, unsigned char width)
    {
        return {FieldType::Signed, width, static_cast<quint64>(value)};
    }
    static FieldValue u(quint64 value, unsigned char width)
    {
        return {FieldType::Unsigned, width, value};
    }
    static FieldValue subMessage(const Message* message)
    {
        FieldValue result(FieldType::SubMessage, 0, 0);
        result.message = message;
        return result;
    }

    bool isValid() const { return valid; }
    FieldType::Kind getKind() const { return kind; }
    unsigned char getWidth() const { return width; }

    // Each accessor is meant for the kinds named; for any other kind it gives 0 or null.
    // Byte, Unsigned
    quint64 toUnsigned() const
    {
        return kind == FieldType::Byte || kind == FieldType::Unsigned ? number : 0;
    }
    // Signed
    qint64 toSigned() const { return kind == FieldType::Signed ? static_cast<qint64>(number) : 0; }
    // Character
    char toCharacter() const
    {
        return kind == FieldType::Character ? static_cast<char>(number) : '\0';
    }
    // Float64
    double toDouble() const { return kind == FieldType::Float64 ? real : 0.0; }
    // SubMessage
    const Message* toSubMessage() const
    {
        return kind == FieldType::SubMessage ? message : nullptr;
    }

    // Equal when valid, kind, width and content are equal; values that are not valid are equal.
    HOST_FRAMEWORK_EXPORT friend bool operator==(const FieldValue& a, const FieldValue& b);
    friend bool operator!=(const FieldValue& a, const FieldValue& b) { return !(a == b); }

private:
    FieldValue(FieldType::Kind valueKind, unsigned char valueWidth, quint64 bits)
        : valid(true), kind(valueKind), width(valueWidth), number(bits)
    {
    }

    bool valid = false;
    FieldType::Kind kind = FieldType::Byte;
    unsigned char width = 0;
    union {
        quint64 number;    // a signed one in two's complement
        double real;
        const Message* message;
    };
};
