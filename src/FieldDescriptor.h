// What all field descriptors share. A rendered descriptor class names the access, the type and the
// facts of its field; everything that it does stands here.
#pragma once

#include "DescriptorLinks.h"
#include "FieldAccess.h"
#include "FieldInfo.h"
#include "FieldTypes.h"
#include "MemLeakTracer.h"
#include "Message.h"
#include "Singleton.h"
#include "UnitTrace.h"

#include <QHash>
#include <QLocale>

#include <algorithm>
#include <optional>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

// A coded value and what it means.
struct TextOfValue {
    qint64 value;
    const char* text;
};

// The facts of a field that are neither in its type nor in its access.
struct FieldFacts {
    const char* unit = "";
    bool isVirtual = false;
    std::vector<TextOfValue> texts{};
    std::optional<qint64> doNotUse{};
};

// Stands for the texts of a field that has none.
struct NoTexts {};

// A field of a message kind. `Access` says how its values are found, `Type` what they are.
template <class Access, class Type, bool hasTexts>
class FieldDescriptor : public FieldInfo {
protected:
    using MessageClass = typename Access::MessageClass;
    using Value = decltype(Access::value(std::declval<const MessageClass&>(), 0));

    // Asks for the format first, so that whichever descriptor is touched first sets up the
    // registry.
    FieldDescriptor(UnitTrace& unitTrace, const char* className, const char* displayName)
        : FieldInfo(QString::fromUtf8(displayName), Type::fieldType())
    {
        unitTrace.pass();
        MemLeakTracer::allocateObject(QString::fromLatin1(className));
        formatDescriptor();
    }

    // Ends the construction.
    void describe(const FieldFacts& facts)
    {
        if (Access::isOptional) {
            setIsOptional(true);
        }
        if (Access::isRepeated) {
            setIsRepeated(true);
        }
        if (facts.isVirtual) {
            setVirtual(true);
        }
        if constexpr (Type::hasRole) {
            setRole(Data);
        }
        if (*facts.unit != '\0') {
            setUnit(QString::fromUtf8(facts.unit));
        }
        if constexpr (hasTexts) {
            for (const TextOfValue& entry : facts.texts) {
                const Value value = static_cast<Value>(entry.value);
                addSymbolicValue(Type::fieldValue(value), QString::fromUtf8(entry.text));
                symbols.insert(value, QString::fromUtf8(entry.text));
            }
        }
        if constexpr (std::is_integral_v<Value>) {
            if (facts.doNotUse) {
                setDoNotUseValue(Type::fieldValue(static_cast<Value>(*facts.doNotUse)));
            }
        }
    }

    // The message as one of the field's kind, or null. The message classes are final, so that their
    // type identity is all that a dynamic cast would find out.
    static const MessageClass* ofKind(const Message* message)
    {
        return message != nullptr && typeid(*message) == typeid(MessageClass)
                   ? static_cast<const MessageClass*>(message)
                   : nullptr;
    }

    static const MessageClass& checkedKind(const Message* message)
    {
        const MessageClass* ours = ofKind(message);
        if (ours == nullptr) {
            throwMisuse(MisuseTexts::otherKind);
        }
        return *ours;
    }

public:
    bool isPresent(const Message* message) const override { return getCount(message) != 0; }

    unsigned int getCount(const Message* message) const override
    {
        const MessageClass* ours = ofKind(message);
        return ours != nullptr ? Access::count(*ours) : 0;
    }

    const FieldValue getValue(const Message* message, unsigned int index) const override
    {
        const MessageClass& ours = checkedKind(message);
        if (const char* refusal = Access::refusal(ours, index)) {
            throwMisuse(refusal);
        }
        return Type::fieldValue(Access::value(ours, index));
    }

    const FieldValue getValueUnchecked(const Message* message, unsigned int index) const override
    {
        return Type::fieldValue(Access::value(*static_cast<const MessageClass*>(message), index));
    }

    QString getInterpretedString(const Message* message, unsigned int index,
                                 bool withUnit) const override
    {
        static const QLocale locale;
        if constexpr (!Type::hasRole) {
            return QStringLiteral("submsg");
        } else {
            return withUnitText(valueText(message, index, locale), withUnit);
        }
    }

private:
    // The text that the value has of its own, or else the plain rendering of its type. A value that
    // means "do not use" is the host's to word.
    QString valueText(const Message* message, unsigned int index, const QLocale& locale) const
    {
        const Value value = Access::value(*static_cast<const MessageClass*>(message), index);
        if (hasDoNotUseValue() && Type::fieldValue(value) == getDoNotUseValue()) {
            return Message::useDoNotUseString ? Message::doNotUseString : QString();
        }
        if constexpr (hasTexts) {
            const QString symbol = symbols.value(value);
            if (!symbol.isEmpty()) {
                return symbol;
            }
        }
        return Type::text(value, locale);
    }

    QString withUnitText(const QString& text, bool withUnit) const
    {
        if (!withUnit || unit.isEmpty()) {
            return text;
        }
        return unitAfterValue ? text + QLatin1Char(' ') + unit : unit + QLatin1Char(' ') + text;
    }

    // From raw value to text, for fields that have such texts.
    [[no_unique_address]] std::conditional_t<hasTexts, QHash<Value, QString>, NoTexts> symbols;
};

// A run of characters: its value string is the text up to the first NUL, whether or not the field
// counts as present. `number` gives the length that the message announces, `capacity` what its
// record has room for.
template <class Access, auto number, auto characters, unsigned capacity>
class TextFieldDescriptor : public FieldDescriptor<Access, CharacterType, false> {
    using Base = FieldDescriptor<Access, CharacterType, false>;

protected:
    using Base::Base;

public:
    QString getValueString(const Message* message) const override
    {
        const auto& ours = Base::checkedKind(message);
        return ValueText::text((ours.*characters)(), std::min((ours.*number)(), capacity));
    }
};
