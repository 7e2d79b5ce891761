#include "KindDescriptor.h"

#include "MemLeakTracer.h"
#include "Misuse.h"

#include <cstddef>

namespace {

// The member by which the host recognises a main kind.
const RTCM2_member_s& discriminantOf(const RTCM2_kind_s& kind)
{
    const RTCM2_member_s* member = kind.members;
    while (member->offset != offsetof(RTCM2_header_s, Message_Type)) {
        ++member;
    }
    return *member;
}

}    // namespace

KindDescriptor::KindDescriptor(const KindFields& kindFields, const char* className)
    : MessageInfo(QString::fromUtf8(RTCM2_kind(kindFields.kind)->display)), fields(kindFields),
      name(className)
{
    const RTCM2_kind_s& kind = *RTCM2_kind(fields.kind);
    const bool isMainKind = kind.type >= 0;
    fields.trace->pass();
    MemLeakTracer::allocateObject(QString::fromLatin1(name));
    if (isMainKind) {
        setShortDescriptiveText(QString::fromUtf8(kind.text));
    } else {
        setIsMain(false);
    }
    setFormatInfo(formatDescriptor());
    setupFields();
    if (isMainKind) {
        const RTCM2_member_s& type = discriminantOf(kind);
        addDiscriminantValue(fields.fields[&type - kind.members](),
                             FieldValue::u(static_cast<quint64>(kind.type), type.bits));
    }
}

KindDescriptor::~KindDescriptor()
{
    fields.trace->pass();
    MemLeakTracer::deallocateObject(QString::fromLatin1(name));
}

void KindDescriptor::setupFields()
{
    const int count = static_cast<int>(RTCM2_kind(fields.kind)->member_count);
    for (int index = 0; index < count; ++index) {
        addFieldInfo(fields.fields[index](), index, false);
    }
}
