// The descriptor of any field: reads a message through the row of the field's member. The classes
// of the single fields are shells around it, which say which row.
#pragma once

#include "FieldInfo.h"
#include "PluginExport.h"
#include "RTCM2_format.h"
#include "Singleton.h"
#include "UnitTrace.h"

#include <memory>
#include <typeinfo>

class RecordMessage;

// What the fields of one kind share.
struct KindFields {
    RTCM2_message_enum kind;
    // The singletons of the fields by the index of their member.
    FieldInfo* (*const* fields)();
    UnitTrace* trace;
};

class VORLO_RTCM2_EXPORT FieldDescriptor : public FieldInfo {
public:
    bool isPresent(const Message* message) const override;
    unsigned int getCount(const Message* message) const override;
    const FieldValue getValue(const Message* message, unsigned int index) const override;
    const FieldValue getValueUnchecked(const Message* message, unsigned int index) const override;
    // The whole text of a run of characters, whether or not the field counts as present.
    QString getValueString(const Message* message) const override;
    QString getInterpretedString(const Message* message, unsigned int index,
                                 bool withUnit) const override;

protected:
    FieldDescriptor(const KindFields& kindFields, int index, const char* className);
    FieldDescriptor(const FieldDescriptor&) = default;
    FieldDescriptor& operator=(const FieldDescriptor&) = default;
    ~FieldDescriptor() override;

private:
    struct Locale;
    // How a value stands in the record.
    enum class Storage : unsigned char {
        byte,
        character,
        real,
        record,
        u8,
        u16,
        u32,
        u64,
        i8,
        i16,
        i32,
        i64
    };

    void addSubFields();
    void describe();
    const RecordMessage* ofKind(const Message* message) const;
    const RecordMessage& checkedKind(const Message* message) const;
    void demandValue(const RecordMessage& message, unsigned index) const;
    const char* placeIn(const RecordMessage& message, unsigned index) const;
    static Storage storageOf(const RTCM2_member_s& row);
    FieldValue valueAt(const char* place) const;
    FieldValue valueOf(qint64 value) const;
    FieldValue valueElsewhere(const RecordMessage& message, unsigned index) const;
    FieldValue valueIn(const RecordMessage& message, unsigned index) const;
    QString textIn(const RecordMessage& message, unsigned index) const;
    QString integerText(qint64 value) const;
    QString withUnitText(const QString& text) const;

    const RTCM2_member_s* row;
    bool isPlain;    // one value in every message, in the record itself
    Storage storage;
    unsigned char width;
    quint16 offset;
    const KindFields* kind;
    const std::type_info* messageClass;
    const char* name;
    // The locale of the field's texts, shared by copies of the descriptor.
    std::shared_ptr<Locale> locale;
};

// Declares the class of a field: a singleton that is constructed when it is first asked for.
#define VORLO_RTCM2_FIELD(Class)                                                                   \
    class VORLO_RTCM2_EXPORT Class final : public FieldDescriptor {                                \
    public:                                                                                        \
        static const Class* getInstance();                                                         \
                                                                                                   \
    private:                                                                                       \
        friend class Singleton<Class>;                                                             \
        VORLO_RTCM2_INTERNAL Class();                                                              \
        VORLO_RTCM2_INTERNAL ~Class() override;                                                    \
        VORLO_RTCM2_INTERNAL static Class* getInstance_nonconst();                                 \
    }

// Defines it: `index` is that of its member in the kind.
#define VORLO_RTCM2_DEFINE_FIELD(Class, kindFields, index)                                         \
    Class::Class() : FieldDescriptor(kindFields, index, #Class) {}                                 \
    Class::~Class() = default;                                                                     \
    Class* Class::getInstance_nonconst()                                                           \
    {                                                                                              \
        return Singleton<Class>::instance();                                                       \
    }                                                                                              \
    const Class* Class::getInstance()                                                              \
    {                                                                                              \
        (kindFields).trace->pass();                                                                \
        return getInstance_nonconst();                                                             \
    }

// A singleton of a field as the host's class.
template <class Field>
FieldInfo* fieldOf()
{
    return Singleton<Field>::instance();
}
