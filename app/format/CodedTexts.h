// What the coded values of a field mean.
#pragma once

#include "FieldValue.h"

#include <cstdint>
#include <string>
#include <vector>

class FieldInfo;
class Message;

// The bits of an integer value, by which values of one field are told apart.
inline std::uint64_t bitsOf(const FieldValue& value)
{
    return value.getKind() == FieldType::Signed ? static_cast<std::uint64_t>(value.toSigned())
                                                : value.toUnsigned();
}

// The texts of those values of a field that have one. The field words each of them once, when it
// first occurs.
class CodedTexts {
public:
    CodedTexts() = default;
    explicit CodedTexts(const FieldInfo* fieldInfo);

    // Whether no value has a text.
    bool isEmpty() const { return entries.empty(); }

    // The text of the index-th value of the message, UTF-8, valid as long as this object; null for
    // a value that is a plain number.
    const std::string* of(const Message& message, unsigned index, const FieldValue& value);

private:
    struct Entry {
        std::uint64_t bits;
        bool known = false;
        std::string text{};
    };

    void add(const FieldValue& value);

    const FieldInfo* info = nullptr;
    std::vector<Entry> entries;
};
