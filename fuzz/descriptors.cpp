// The decoder, and a walk over all descriptors and accessors of what it delivers.
#include "Receiver.h"

#include "FieldInfo.h"
#include "FormatInfo.h"
#include "MessageInfo.h"
#include "RTCM2_FormatInfo.h"

using namespace fuzz;

namespace {

// What a misused accessor does.
template <class Access>
void demandRefusal(Access access)
{
    try {
        access();
    } catch (const VorloEvent& event) {
        promise(1, event.getType() == VorloEvent::AccessorMisuse, "another exception");
        return;
    }
    promise(1, false, "a value that the message does not have");
}

void walkMessage(const Message& message);

void walkValue(const FieldInfo& field, const Message& message, unsigned index)
{
    const FieldValue value = field.getValue(&message, index);
    promise(4, value.isValid() && value.getKind() == field.getType().getKind(),
            "a value of another type");
    promise(4, value == field.getValueUnchecked(&message, index), "another value unchecked");
    field.getInterpretedString(&message, index, index % 2 == 0);
    if (const Message* const part = value.toSubMessage()) {
        promise(4, part->getParentMessage() == &message, "a part of another message");
        walkMessage(*part);
    }
}

void walkField(const FieldInfo& field, const Message& message)
{
    const unsigned count = field.getCount(&message);
    promise(2, count <= 65535, "more values than a message can have");
    promise(4, field.isPresent(&message) == (count > 0), "present without values, or the reverse");
    promise(4, field.isRepeated() || count <= 1, "several values of one field");
    for (unsigned index = 0; index < count; ++index) {
        walkValue(field, message, index);
    }
    demandRefusal([&] { field.getValue(&message, count); });
    field.getValueString(&message);
    for (const FieldInfo* part : field.getSubFieldInfos()) {
        promise(4, part->getCount(&message) <= 1, "several values of a part");
    }
}

// Every field of its kind, and one of each other kind.
void walkMessage(const Message& message)
{
    const MessageInfo* const own = message.getMessageInfo();
    const FieldInfo* stranger = nullptr;
    for (const MessageInfo* kind : RTCM2_FormatInfo::getInstance()->getMessageInfos()) {
        if (kind != own) {
            stranger = kind->getFieldInfos().last();
            promise(1, !stranger->isPresent(&message) && stranger->getCount(&message) == 0,
                    "a field of another kind");
        }
    }
    demandRefusal([&] { stranger->getValue(&message, 0); });
    for (const FieldInfo* field : own->getFieldInfos()) {
        walkField(*field, message);
    }
    message.getRawStringFor(QVector<bool>(own->getFieldInfos().size() + 1, true));
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Receiver receiver([](const Message& message) { walkMessage(message); });
    receiver.watch([&] {
        const std::int32_t bits = receiver.decoder.decodeMessage(data, static_cast<unsigned>(size));
        promise(1, bits <= 8 * static_cast<std::int64_t>(size), "more bits than given");
    });
    return 0;
}
