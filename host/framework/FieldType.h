// The type of a field's values.
#pragma once

#include "HostExport.h"

class MessageInfo;

// Value type, cheap to copy.
class HOST_FRAMEWORK_EXPORT FieldType {
public:
    enum Kind { Byte, Character, Float64, Signed, Unsigned, SubMessage };

    static const FieldType byte();
    static const FieldType ch();
    static const FieldType f64();
    static const FieldType i(unsigned char width);
    static const FieldType u(unsigned char width);
    // The descriptor of the element kind may still be under construction.
    static const FieldType subMessage(const MessageInfo* info);
    ~FieldType();

    FieldType(const FieldType&) = default;
    FieldType& operator=(const FieldType&) = default;

    Kind getKind() const { return kind; }
    // Width in bits: 1 to 64 for Signed and Unsigned, 8 for Byte and Character, 64 for Float64,
    // 0 for SubMessage.
    unsigned char getWidth() const { return width; }
    // Descriptor of the element kind; null unless the kind is SubMessage.
    const MessageInfo* getSubMessageInfo() const { return subMessageInfo; }

    friend bool operator==(const FieldType& a, const FieldType& b)
    {
        return a.kind == b.kind && a.width == b.width && a.subMessageInfo == b.subMessageInfo;
    }
    friend bool operator!=(const FieldType& a, const FieldType& b) { return !(a == b); }

private:
    FieldType(Kind kind, unsigned char width, const MessageInfo* info);

    Kind kind;
    unsigned char width;
    const MessageInfo* subMessageInfo;
};
