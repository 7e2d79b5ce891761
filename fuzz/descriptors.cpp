// The decoder, and a walk over all descriptors and accessors of what it delivers; compiled readers
// of fields have to read the same.
#include "Receiver.h"

#include "FieldInfo.h"
#include "FormatInfo.h"
#include "MessageInfo.h"
#include "RTCM2_FormatInfo.h"
#include "format/FormatModel.h"
#include "plugin/Plugin.h"

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

struct RecordPeek : Message {
    using Message::getRawRepresentationOf;
};

// What compiled readers read has to be what descriptors say.
void demandRead(const KindModel& kind, const Message& message, const void* record)
{
    for (const FieldModel& field : kind.fields) {
        const unsigned count = field.count(record);
        const bool hasTerminator = field.isText() && field.isPresent(record);
        promise(4, count + (hasTerminator ? 1U : 0U) == field.info->getCount(&message),
                "another number of values");
        const char* element =
            field.element != nullptr ? RTCM2_reader_elements(&field.reader, record) : nullptr;
        for (unsigned i = 0; i < count; ++i) {
            const FieldValue value = field.info->getValue(&message, i);
            if (const Message* part = value.toSubMessage()) {
                demandRead(*field.element, *part, element + i * field.reader.stride);
            } else if (field.isReal()) {
                promise(4, value.toDouble() == RTCM2_reader_real(&field.reader, record),
                        "another real number");
            } else {
                const std::int64_t read = RTCM2_reader_integer(&field.reader, record, i);
                promise(4,
                        field.isText() ? value.toCharacter() == static_cast<char>(read)
                        : value.getKind() == FieldType::Signed
                            ? value.toSigned() == read
                            : value.toUnsigned() == static_cast<std::uint64_t>(read),
                        "another integer");
            }
        }
    }
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const FormatModel model{plugin::format()};
    static Receiver receiver([](const Message& message) {
        walkMessage(message);
        const void* const record = RecordPeek::getRawRepresentationOf(&message);
        demandRead(*model.kindOf(record), message, record);
    });
    receiver.watch([&] {
        const std::int32_t bits = receiver.decoder.decodeMessage(data, static_cast<unsigned>(size));
        promise(1, bits <= 8 * static_cast<std::int64_t>(size), "more bits than given");
    });
    return 0;
}
