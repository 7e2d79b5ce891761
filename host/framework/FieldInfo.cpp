#include "FieldInfo.h"

#include "FloatRepresentation.h"

#include <QStringList>

#include <utility>

namespace {

QString getRawText(const FieldValue& value)
{
    if (!value.isValid()) {
        return QString();
    }
    switch (value.getKind()) {
    case FieldType::Byte:
        return QString::number(value.toUnsigned(), 16).rightJustified(2, QLatin1Char('0'));
    case FieldType::Character:
        return QString(QLatin1Char(value.toCharacter()));
    case FieldType::Float64:
        return FloatRepresentation::getString(value.toDouble(), 'f', 6, false);
    case FieldType::Signed:
        return QString::number(value.toSigned());
    case FieldType::Unsigned:
        return QString::number(value.toUnsigned());
    case FieldType::SubMessage:
        return QStringLiteral("submsg");
    }
    return QString();
}

}    // namespace

FieldInfo::FieldInfo(QString fieldName, const FieldType& fieldType)
    : name(std::move(fieldName)), type(fieldType)
{
}

FieldInfo::~FieldInfo() = default;

QString FieldInfo::getValueString(const Message* message) const
{
    if (!isPresent(message)) {
        return QString();
    }
    QStringList texts;
    const unsigned int count = getCount(message);
    for (unsigned int index = 0; index < count; ++index) {
        texts.append(getRawText(getValueUnchecked(message, index)));
    }
    return texts.join(QLatin1Char(' '));
}

QString FieldInfo::getSymbolicText(const FieldValue& value) const
{
    for (const SymbolicValue& symbolic : symbolicValues) {
        if (symbolic.first == value) {
            return symbolic.second;
        }
    }
    return QString();
}

QVector<const FieldInfo*> FieldInfo::getSubFieldInfos() const
{
    QVector<const FieldInfo*> result;
    result.reserve(subFields.size());
    for (const FieldInfo* subField : subFields) {
        result.append(subField);
    }
    return result;
}

void FieldInfo::addSymbolicValue(const FieldValue& value, QString text)
{
    symbolicValues.append(SymbolicValue(value, std::move(text)));
}

void FieldInfo::addSubFieldInfo(FieldInfo* subField)
{
    subFields.append(subField);
}
