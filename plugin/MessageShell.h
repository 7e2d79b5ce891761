// What the message class of a kind consists of beside its accessors. The rendered classes are
// shells around RecordMessage; these macros define the rest of them.
#pragma once

#include "MemLeakTracer.h"
#include "RecordMessage.h"
#include "UnitTrace.h"

#define VORLO_RTCM2_DEFINE_MAIN_MESSAGE(Class, Record, kind, Info)                                 \
    static UnitTrace traceOf_##Class{"Vorlo_RTCM2", #Class, "plugin/" #Class ".cpp"};              \
    Class::Class(Record* record, bool owns) : Shared(kind, Info::getInstance(), record)            \
    {                                                                                              \
        traceOf_##Class.pass();                                                                    \
        MemLeakTracer::allocateObject(QStringLiteral(#Class));                                     \
        take(owns ? Hold::own : Hold::reference);                                                  \
    }                                                                                              \
    Class::Class(const Record& decoded) : Shared(kind, Info::getInstance(), decoded)               \
    {                                                                                              \
        traceOf_##Class.pass();                                                                    \
        MemLeakTracer::allocateObject(QStringLiteral(#Class));                                     \
        take(Hold::copy);                                                                          \
    }                                                                                              \
    VORLO_RTCM2_DEFINE_MESSAGE_END(Class)

#define VORLO_RTCM2_DEFINE_SUB_MESSAGE(Class, Record, kind, Info)                                  \
    static UnitTrace traceOf_##Class{"Vorlo_RTCM2", #Class, "plugin/" #Class ".cpp"};              \
    Class::Class(Record* record, Message* parent, bool owns)                                       \
        : Shared(kind, Info::getInstance(), record)                                                \
    {                                                                                              \
        traceOf_##Class.pass();                                                                    \
        MemLeakTracer::allocateObject(QStringLiteral(#Class));                                     \
        setParentMessage(parent);                                                                  \
        take(owns ? Hold::own : Hold::reference);                                                  \
    }                                                                                              \
    VORLO_RTCM2_DEFINE_MESSAGE_END(Class)

#define VORLO_RTCM2_DEFINE_MESSAGE_END(Class)                                                      \
    Class::~Class()                                                                                \
    {                                                                                              \
        traceOf_##Class.pass();                                                                    \
        MemLeakTracer::deallocateObject(QStringLiteral(#Class));                                   \
    }
