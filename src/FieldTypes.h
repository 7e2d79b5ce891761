// The closed set of value types that fields have: for each its FieldType, its FieldValue, its text
// for people, and whether such a field has a role of its own.
#pragma once

#include "DescriptorLinks.h"
#include "FieldType.h"
#include "FieldValue.h"
#include "FloatRepresentation.h"
#include "ValueText.h"

#include <QLocale>
#include <QString>

#include <cstdint>

// Flags, codes and health words: shown in hexadecimal.
struct ByteType {
    static constexpr bool hasRole = true;
    static FieldType fieldType() { return FieldType::byte(); }
    static FieldValue fieldValue(std::uint8_t value) { return FieldValue::byte(value); }
    static QString text(std::uint8_t value, const QLocale&) { return ValueText::hex(value); }
};

struct CharacterType {
    static constexpr bool hasRole = true;
    static FieldType fieldType() { return FieldType::ch(); }
    static FieldValue fieldValue(char value) { return FieldValue::ch(value); }
    static QString text(char value, const QLocale&) { return ValueText::character(value); }
};

struct Float64Type {
    static constexpr bool hasRole = true;
    static FieldType fieldType() { return FieldType::f64(); }
    static FieldValue fieldValue(double value) { return FieldValue::f64(value); }
    static QString text(double value, const QLocale&)
    {
        return FloatRepresentation::getString(value, 'f', 6, true);
    }
};

// The locale's decimal text. Types narrower than int have overloads of their own in QLocale, but
// for 8 bits, where int serves.
inline QString decimalText(std::uint8_t value, const QLocale& locale)
{
    return locale.toString(int{value});
}
inline QString decimalText(std::int8_t value, const QLocale& locale)
{
    return locale.toString(int{value});
}
template <class Integer>
QString decimalText(Integer value, const QLocale& locale)
{
    if constexpr (sizeof(Integer) == 8) {
        return locale.toString(qlonglong{value});
    } else {
        return locale.toString(value);
    }
}

template <unsigned char Width>
struct UnsignedType {
    static constexpr bool hasRole = true;
    static FieldType fieldType() { return FieldType::u(Width); }
    static FieldValue fieldValue(quint64 value) { return FieldValue::u(value, Width); }
    template <class Integer>
    static QString text(Integer value, const QLocale& locale)
    {
        return decimalText(value, locale);
    }
};

template <unsigned char Width>
struct SignedType {
    static constexpr bool hasRole = true;
    static FieldType fieldType() { return FieldType::i(Width); }
    static FieldValue fieldValue(qint64 value) { return FieldValue::i(value, Width); }
    template <class Integer>
    static QString text(Integer value, const QLocale& locale)
    {
        return decimalText(value, locale);
    }
};

// Elements that are messages themselves: the field holds nothing else and has no role of its own.
template <class ElementMessage>
struct SubMessageType {
    static constexpr bool hasRole = false;
    static FieldType fieldType() { return FieldType::subMessage(descriptorOf<ElementMessage>()); }
    static FieldValue fieldValue(const Message* element) { return FieldValue::subMessage(element); }
};
