// Helpers of the tests of message objects, descriptors and decoder.
#pragma once

#include "FieldInfo.h"
#include "MemLeakTracer.h"
#include "Message.h"
#include "MessageInfo.h"
#include "RTCM2Decoder.h"
#include "RTCM2_FormatInfo.h"
#include "RTCM2_format.h"
#include "VorloEvent.h"
#include "support/CompletionOrder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// So that a failure shows texts.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

// A message of station 5, Z-count 4500, sequence 3 and health 0, in a block of exactly its size.
inline Bytes packed(unsigned type, unsigned words, const Bytes& payload = {})
{
    Bytes bytes{0x66, static_cast<std::uint8_t>(type << 2), 5, 0x8C,
                0xA3, static_cast<std::uint8_t>(words << 3)};
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return Bytes(bytes);
}

inline int liveMessages()
{
    const auto alive = MemLeakTracer::liveObjectsByClass();
    int messages = 0;
    for (auto entry = alive.cbegin(); entry != alive.cend(); ++entry) {
        messages += entry.key().endsWith(QLatin1String("_Message")) ? entry.value() : 0;
    }
    return messages;
}

// Reads what only messages may ask of each other.
class RecordPeek : public Message {
public:
    // The record behind a message.
    static const void* recordOf(const Message* message) { return getRawRepresentationOf(message); }
};

// The text of the event that a misused accessor throws.
template <class Call>
QString misuseText(Call call)
{
    try {
        call();
    } catch (const VorloEvent& event) {
        EXPECT_EQ(event.getType(), VorloEvent::AccessorMisuse);
        EXPECT_EQ(event.getFormatInfo(), RTCM2_FormatInfo::getInstance());
        return event.getText();
    }
    return QStringLiteral("nothing thrown");
}

// A field by the names that people see.
inline const FieldInfo* fieldOf(const QString& kind, const QString& name)
{
    for (const MessageInfo* info : allKinds()) {
        for (const FieldInfo* field : info->getFieldInfos()) {
            if (info->getName() == kind && field->getName() == name) {
                return field;
            }
        }
    }
    qFatal("no field %s in %s", qPrintable(name), qPrintable(kind));
}

// A message as the decoder hands it out.
class Made {
public:
    // All values are 0 but for those given: "Reference_Station_Id=5 Corrections PRC=-1 Corrections"
    // is a message with two elements, of the first of which a member is told. The number of words
    // follows unless it is given.
    Made(int type, const std::string& members)
    {
        const RTCM2_kind_s* const kind = RTCM2_kind_of_type(type);
        RTCM2_message_s record{};
        RTCM2_init_record(kind->kind, &record);
        writeMembers(record, *kind, members);
        Bytes bytes(RTCM2_PACKED_ROOM);
        std::uint32_t bits = 0;
        EXPECT_GT(RTCM2_encode_record(&record, bytes.data(), RTCM2_PACKED_ROOM, &bits), 0);
        RTCM2_free_message(&record);
        if (members.find("No_Of_Data_Words=") == std::string::npos) {
            bytes[5] = static_cast<std::uint8_t>(bytes[5] | (bits - 48 + 23) / 24 << 3);
        }
        RTCM2Decoder decoder(nullptr);
        QObject::connect(&decoder, &MessageSource::newMessage, [this](const Message* decoded) {
            message = decoded;
            message->addReference();
        });
        EXPECT_GT(decoder.decodeMessage(bytes.data(), RTCM2_PACKED_ROOM), 0) << members;
    }
    ~Made() { message->removeReference(); }
    Made(const Made&) = delete;
    Made& operator=(const Made&) = delete;
    operator const Message*() const { return message; }
    const Message* operator->() const { return message; }

    // Of the message, or of its last element when the message has none of this name.
    QString text(const char* name, unsigned index = 0, bool withUnit = true) const
    {
        const auto fields = message->getMessageInfo()->getFieldInfos();
        for (const FieldInfo* field : fields) {
            if (field->getName() == QLatin1String(name)) {
                return field->getInterpretedString(message, index, withUnit);
            }
        }
        const FieldInfo* array = fields.last();
        const Message* element =
            array->getValue(message, array->getCount(message) - 1).toSubMessage();
        return fieldOf(element->getMessageInfo()->getName(), QLatin1String(name))
            ->getInterpretedString(element, index, withUnit);
    }

private:
    static void writeMembers(RTCM2_message_s& record, const RTCM2_kind_s& kind,
                             const std::string& members)
    {
        void* at = &record;
        std::istringstream words(members);
        for (std::string word; words >> word;) {
            const std::size_t equals = word.find('=');
            if (equals == std::string::npos) {
                at = RTCM2_append_element(&record);
                const RTCM2_kind_s& element = *kind.array->elements;
                const std::size_t head = element.members[0].offset;
                std::memset(static_cast<char*>(at) + head, 0, element.size - head);
                continue;
            }
            const auto* const member =
                RTCM2_find_member(RTCM2_kind_of(at), word.substr(0, equals).c_str());
            EXPECT_EQ(RTCM2_write_text(at, member, 0, word.substr(equals + 1).c_str()), 0) << word;
        }
    }

    const Message* message = nullptr;
};
