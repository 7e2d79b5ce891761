#include "FieldType.h"

FieldType::FieldType(Kind typeKind, unsigned char typeWidth, const MessageInfo* info)
    : kind(typeKind), width(typeWidth), subMessageInfo(info)
{
}

FieldType::~FieldType() = default;

const FieldType FieldType::byte()
{
    return FieldType(Byte, 8, nullptr);
}

const FieldType FieldType::ch()
{
    return FieldType(Character, 8, nullptr);
}

const FieldType FieldType::f64()
{
    return FieldType(Float64, 64, nullptr);
}

const FieldType FieldType::i(unsigned char width)
{
    return FieldType(Signed, width, nullptr);
}

const FieldType FieldType::u(unsigned char width)
{
    return FieldType(Unsigned, width, nullptr);
}

const FieldType FieldType::subMessage(const MessageInfo* info)
{
    return FieldType(SubMessage, 0, info);
}
