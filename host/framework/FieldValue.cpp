#include "FieldValue.h"

FieldValue::FieldValue() : number(0) {}

FieldValue::FieldValue(FieldType::Kind valueKind, unsigned char valueWidth)
    : valid(true), kind(valueKind), width(valueWidth), number(0)
{
}

FieldValue::~FieldValue() = default;

FieldValue FieldValue::byte(unsigned char value)
{
    FieldValue result(FieldType::Byte, 8);
    result.number = value;
    return result;
}

FieldValue FieldValue::ch(char value)
{
    FieldValue result(FieldType::Character, 8);
    result.number = static_cast<unsigned char>(value);
    return result;
}

FieldValue FieldValue::f64(double value)
{
    FieldValue result(FieldType::Float64, 64);
    result.real = value;
    return result;
}

FieldValue FieldValue::i(qint64 value, unsigned char width)
{
    FieldValue result(FieldType::Signed, width);
    result.signedNumber = value;
    return result;
}

FieldValue FieldValue::u(quint64 value, unsigned char width)
{
    FieldValue result(FieldType::Unsigned, width);
    result.number = value;
    return result;
}

FieldValue FieldValue::subMessage(const Message* message)
{
    FieldValue result(FieldType::SubMessage, 0);
    result.message = message;
    return result;
}

quint64 FieldValue::toUnsigned() const
{
    const bool unsignedKind = kind == FieldType::Byte || kind == FieldType::Unsigned;
    return unsignedKind ? number : 0;
}

qint64 FieldValue::toSigned() const
{
    return kind == FieldType::Signed ? signedNumber : 0;
}

char FieldValue::toCharacter() const
{
    return kind == FieldType::Character ? static_cast<char>(signedNumber) : '\0';
}

double FieldValue::toDouble() const
{
    return kind == FieldType::Float64 ? real : 0.0;
}

const Message* FieldValue::toSubMessage() const
{
    return kind == FieldType::SubMessage ? message : nullptr;
}

bool operator==(const FieldValue& a, const FieldValue& b)
{
    if (!a.valid || !b.valid) {
        return a.valid == b.valid;
    }
    if (a.kind != b.kind || a.width != b.width) {
        return false;
    }
    switch (a.kind) {
    case FieldType::Byte:
    case FieldType::Unsigned:
        return a.number == b.number;
    case FieldType::Character:
    case FieldType::Signed:
        return a.signedNumber == b.signedNumber;
    case FieldType::Float64:
        return a.real == b.real;
    case FieldType::SubMessage:
        return a.message == b.message;
    }
    return false;
}
