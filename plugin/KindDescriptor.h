// The descriptor of any message kind: tells what the kind's row says, and lists its fields. The
// classes of the single kinds are shells around it.
#pragma once

#include "FieldDescriptor.h"
#include "MessageInfo.h"

class VORLO_RTCM2_EXPORT KindDescriptor : public MessageInfo {
protected:
    KindDescriptor(const KindFields& kindFields, const char* className);
    ~KindDescriptor() override;

private:
    void setupFields();

    const KindFields& fields;
    const char* const name;
};

// Declares and defines the class of a kind: a singleton that is constructed when it is first asked
// for.
#define VORLO_RTCM2_KIND(Class)                                                                    \
    class VORLO_RTCM2_EXPORT Class final : public KindDescriptor {                                 \
    public:                                                                                        \
        static const Class* getInstance();                                                         \
                                                                                                   \
    private:                                                                                       \
        friend class Singleton<Class>;                                                             \
        VORLO_RTCM2_INTERNAL Class();                                                              \
        VORLO_RTCM2_INTERNAL ~Class() override;                                                    \
    }

#define VORLO_RTCM2_DEFINE_KIND(Class, kindFields)                                                 \
    Class::Class() : KindDescriptor(kindFields, #Class) {}                                         \
    Class::~Class() = default;                                                                     \
    const Class* Class::getInstance()                                                              \
    {                                                                                              \
        return Singleton<Class>::instance();                                                       \
    }
