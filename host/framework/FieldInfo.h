// Description of one field of a message kind.
#pragma once

#include "FieldType.h"
#include "FieldValue.h"
#include "HostExport.h"

#include <QPair>
#include <QString>
#include <QVector>

class Message;

// The plug-in derives one class per field and fills the description through the protected setters
// while it is constructed; afterwards a FieldInfo never changes. Descriptors belong to the plug-in
// and live until it is unloaded.
class HOST_FRAMEWORK_EXPORT FieldInfo {
public:
    // What the host does with a field. NoRole: a container of sub-messages. Data: a field with
    // values of its own.
    enum Role { NoRole = 0, Data = 1 };

    using SymbolicValue = QPair<FieldValue, QString>;

protected:
    // First of the virtual functions, in whose order plug-ins are built.
    virtual ~FieldInfo();

public:
    FieldInfo(const FieldInfo&) = default;
    FieldInfo& operator=(const FieldInfo&) = default;

    // Whether the field has at least one value in the message; false for a message of another kind.
    virtual bool isPresent(const Message* message) const = 0;

    // Number of values in the message; 0 for a message of another kind.
    virtual unsigned int getCount(const Message* message) const = 0;

    // The index-th value. Throws a VorloEvent of type AccessorMisuse when the message is of
    // another kind, the field is absent or the index is out of range.
    virtual const FieldValue getValue(const Message* message, unsigned int index) const = 0;

    // As getValue, for callers that have checked kind, presence and index themselves.
    virtual const FieldValue getValueUnchecked(const Message* message,
                                               unsigned int index) const = 0;

    // All values as one raw text without unit: unless a plug-in overrides it, the raw values
    // separated by single blanks; empty for an absent field.
    virtual QString getValueString(const Message* message) const;

    // The index-th value as text for people, in the default locale; with the unit if withUnit.
    // The message must be of the field's kind and the value present.
    virtual QString getInterpretedString(const Message* message, unsigned int index,
                                         bool withUnit) const = 0;

    const QString& getName() const { return name; }
    const FieldType& getType() const { return type; }
    Role getRole() const { return role; }
    const QString& getUnit() const { return unit; }
    // Whether the unit stands after the number (the rule of most languages) or before it.
    bool isUnitAfterValue() const { return unitAfterValue; }
    bool isOptional() const { return optional; }
    bool isRepeated() const { return repeated; }
    // A virtual field is computed; it has no bits of its own in the message.
    bool isVirtual() const { return virtualField; }
    // Pairs of value and text in the order of their registration.
    const QVector<SymbolicValue>& getSymbolicValues() const { return symbolicValues; }
    // The text of a value, or an empty string when it has none.
    QString getSymbolicText(const FieldValue& value) const;
    // Fields that show parts of this field's value.
    QVector<const FieldInfo*> getSubFieldInfos() const;
    bool hasDoNotUseValue() const { return doNotUseValue.isValid(); }
    const FieldValue& getDoNotUseValue() const { return doNotUseValue; }

protected:
    FieldInfo(QString name, const FieldType& type);

    void setRole(Role value) { role = value; }
    void setUnit(QString text) { unit = text; }
    void setIsOptional(bool value) { optional = value; }
    void setIsRepeated(bool value) { repeated = value; }
    void setVirtual(bool value) { virtualField = value; }
    void addSymbolicValue(const FieldValue& value, QString text);
    void setDoNotUseValue(FieldValue value) { doNotUseValue = value; }
    // The sub-field may still be under construction: only its address is kept.
    void addSubFieldInfo(FieldInfo* subField);

    QString unit;
    bool unitAfterValue = true;

private:
    QString name;
    FieldType type;
    Role role = NoRole;
    bool optional = false;
    bool repeated = false;
    bool virtualField = false;
    QVector<SymbolicValue> symbolicValues;
    QVector<FieldInfo*> subFields;
    FieldValue doNotUseValue;
};
