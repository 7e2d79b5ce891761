// The order in which the constructors of the format's singletons end.
#pragma once

#include "FieldInfo.h"
#include "MessageInfo.h"
#include "RTCM2_FormatInfo.h"

#include <QStringList>
#include <QVector>

#include <algorithm>
#include <cstdlib>
#include <cxxabi.h>
#include <typeinfo>

template <class T>
QString classNameOf(const T* object)
{
    char* name = abi::__cxa_demangle(typeid(*object).name(), nullptr, nullptr, nullptr);
    const QString result = QString::fromLatin1(name);
    std::free(name);
    return result;
}

inline QVector<const MessageInfo*> allKinds()
{
    const FormatInfo* format = RTCM2_FormatInfo::getInstance();
    return format->getSubMessageInfos() + format->getMessageInfos();
}

// The order in which the constructors end when the registry is touched first: the registry, then
// kind by kind, each after its fields. What is touched first instead ends last, with what it waits
// for; `late` names these classes by their prefixes, in their order.
inline QStringList completionOrder(const QStringList& late)
{
    QStringList order(QStringLiteral("RTCM2_FormatInfo"));
    for (const MessageInfo* info : allKinds()) {
        const auto position = order.size();
        for (const FieldInfo* field : info->getFieldInfos()) {
            order << classNameOf(field);
        }
        // Its sub-fields, registered after it, are complete before it is.
        const auto parted = order.indexOf(QStringLiteral("RTCM2_DGNSS_Issue_Of_Data_FieldInfo"));
        if (parted >= position) {
            order.move(parted, parted + 2);
        }
        order << classNameOf(info);
    }
    for (const QString& prefix : late) {
        std::stable_partition(order.begin(), order.end(),
                              [&](const QString& name) { return !name.startsWith(prefix); });
    }
    return order;
}
