#include "MessageInfo.h"

#include <utility>

MessageInfo::MessageInfo(QString kindName) : name(std::move(kindName)) {}

MessageInfo::~MessageInfo() = default;

void MessageInfo::addFieldInfo(FieldInfo* field, int index, bool flag)
{
    if (index != fieldInfos.size()) {
        qFatal("MessageInfo::addFieldInfo() of %s: index %d out of order.", qPrintable(name),
               index);
    }
    fieldInfos.append(field);
    fieldFlags.append(flag);
}

void MessageInfo::addDiscriminantValue(const FieldInfo* field, const FieldValue& value)
{
    discriminantValues.append(Discriminant(field, value));
}
