// The decoder, and a walk over all descriptors and accessors of what it delivers; and the facts
// that are read without it, which have to be the same.
#include "Receiver.h"

#include "FieldInfo.h"
#include "FormatInfo.h"
#include "MessageInfo.h"
#include "RTCM2_FormatInfo.h"
#include "base/Characters.h"
#include "format/FormatModel.h"
#include "plugin/MessageFacts.h"
#include "plugin/Plugin.h"

#include <memory>

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

// Reads facts of messages of all kinds.
struct Facts {
    Facts()
    {
        std::vector<const KindModel*> kinds;
        for (const auto& kind : model.kinds()) {
            kinds.push_back(kind.get());
        }
        reader = makeFactsReader(parts, kinds);
    }

    const FormatModel model{plugin::format()};
    const FieldParts parts = plugin::fieldParts();
    std::unique_ptr<MessageFactsReader> reader;
};

std::optional<std::uint64_t> numberOf(const FieldModel* field, const Message& message)
{
    return field != nullptr ? std::optional(field->info->getValue(&message, 0).toUnsigned())
                            : std::nullopt;
}

std::vector<std::uint64_t> satellitesOf(const KindModel& kind, const std::string& name,
                                        const Message& message)
{
    std::vector<std::uint64_t> numbers;
    for (const FieldModel& field : kind.fields) {
        const FieldModel* satellite =
            field.element != nullptr ? field.element->field(name) : nullptr;
        const unsigned count = satellite != nullptr ? field.info->getCount(&message) : 0;
        for (unsigned i = 0; i < count; ++i) {
            numbers.push_back(
                *numberOf(satellite, *field.info->getValue(&message, i).toSubMessage()));
        }
    }
    return numbers;
}

void demandFacts(Facts& known, const Message& message, const MessageFacts* facts)
{
    promise(4, facts != nullptr, "no facts of a message");
    const KindModel& kind = *known.model.kindOf(message);
    promise(4, facts->kind == &kind, "facts of another kind");
    promise(4, facts->station == numberOf(kind.field(known.parts.station), message),
            "another station");
    promise(4, facts->time == numberOf(kind.field(known.parts.time), message), "another time");
    std::vector<std::uint64_t> numbers;
    for (const MessageFacts::Satellite& satellite : facts->satellites) {
        numbers.push_back(satellite.number);
    }
    promise(4, numbers == satellitesOf(kind, known.parts.satellite, message), "other satellites");
    const FieldModel* text = kind.field(known.parts.text);
    const bool hasText = text != nullptr && text->isText();
    promise(4, facts->text.has_value() == hasText, "a text, or none");
    if (hasText) {
        std::string characters;
        readCharacters(*text->info, message, characters);
        promise(4, *facts->text == upToFirstNul(characters), "another text");
    }
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Facts facts;
    static std::span<const std::uint8_t> packed;
    static Receiver receiver([](const Message& message) {
        walkMessage(message);
        demandFacts(facts, message, facts.reader->read(packed));
    });
    packed = {data, size};
    receiver.watch([&] {
        const std::int32_t bits = receiver.decoder.decodeMessage(data, static_cast<unsigned>(size));
        promise(1, bits <= 8 * static_cast<std::int64_t>(size), "more bits than given");
        promise(4, bits > 0 || facts.reader->read(packed) == nullptr, "facts of no message");
    });
    return 0;
}
