#include "commands/encode/Template.h"

#include "base/Names.h"
#include "commands/JsonWriter.h"
#include "commands/encode/CodedValue.h"
#include "commands/encode/GivenRecord.h"
#include "commands/encode/MainKind.h"
#include "commands/encode/MessageEncoder.h"
#include "framing/Frame.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace {

std::span<const RTCM2_member_s> rowsOf(const void* record)
{
    const RTCM2_kind_s& kind = *RTCM2_kind_of(record);
    return {kind.members, kind.member_count};
}

// A new element holds anything where it has no initial value.
void clear(void* element)
{
    for (const RTCM2_member_s& member : rowsOf(element)) {
        if (member.role == RTCM2_ROLE_WIRE && member.has_initial == 0) {
            RTCM2_write_integer(element, &member, 0, 0);
        }
    }
}

// Makes what depends on other members present, as far as one message can have all of it.
void fulfilConditions(void* record)
{
    for (const RTCM2_member_s& member : rowsOf(record)) {
        if (member.when != nullptr && RTCM2_is_present(record, &member) == 0) {
            RTCM2_write_integer(record, member.when, 0, member.when_values[0]);
        }
    }
}

void writeFields(JsonWriter& json, void* record, unsigned elements);

void writeRun(JsonWriter& json, const RTCM2_member_s& member, const std::string& name)
{
    if (member.type == RTCM2_TYPE_CHARACTER) {
        json.member(name.c_str(), std::string("TEXT").substr(0, member.limit));
    } else {
        json.beginArray(name.c_str());
        json.endArray();
    }
}

// With its meaning where that stands for no other value.
void writeValue(JsonWriter& json, const void* record, const RTCM2_member_s& member)
{
    std::int64_t value = 0;
    RTCM2_read_integer(record, &member, 0, &value);
    const char* const text = ownText(member, value);
    text != nullptr ? json.value(text) : json.value(value);
}

void writeElements(JsonWriter& json, void* record, const std::string& name, unsigned count)
{
    json.objects(name.c_str(), std::vector<int>(count), [&](int) {
        if (void* const element = RTCM2_append_element(record)) {
            clear(element);
            writeFields(json, element, count);
        }
    });
}

void writeMember(JsonWriter& json, void* record, const RTCM2_member_s& member, unsigned elements)
{
    const std::string name = identifierOf(labelOf(member));
    if (member.role == RTCM2_ROLE_RUN) {
        writeRun(json, member, name);
    } else if (member.role == RTCM2_ROLE_ARRAY) {
        writeElements(json, record, name, elements);
    } else {
        json.key(name.c_str());
        writeValue(json, record, member);
    }
}

void writeFields(JsonWriter& json, void* record, unsigned elements)
{
    fulfilConditions(record);
    const RTCM2_kind_s& kind = *RTCM2_kind_of(record);
    for (const RTCM2_member_s& member : rowsOf(record)) {
        if (RTCM2_is_present(record, &member) != 0 && !isImplied(kind, member)) {
            writeMember(json, record, member, elements);
        }
    }
}

std::string messageWith(const RTCM2_kind_s& kind, unsigned elements)
{
    const auto release = [](RTCM2_message_s* message) {
        RTCM2_free_message(message);
        delete message;
    };
    const std::unique_ptr<RTCM2_message_s, decltype(release)> record(new RTCM2_message_s(),
                                                                     release);
    RTCM2_init_record(kind.kind, record.get());
    RTCM2_write_integer(record.get(), &wordsOf(kind), 0, framing::maxDataWords);
    JsonWriter json;
    json.beginObject();
    json.member("kind", std::string(labelOf(kind)));
    json.key("fields");
    json.beginObject();
    writeFields(json, record.get(), elements);
    json.endObject();
    json.endObject();
    return json.take();
}

bool canBeEncoded(const std::string& message)
{
    rapidjson::Document document;
    document.Parse(message.c_str());
    return MessageEncoder().encode(document).empty();
}

}    // namespace

// Elements that are narrower than a data word have to fill some.
std::string templateOf(const RTCM2_kind_s& kind)
{
    constexpr unsigned mostElements = 24;
    for (unsigned elements = 1; elements <= mostElements; ++elements) {
        const std::string message = messageWith(kind, elements);
        if (kind.array == nullptr || canBeEncoded(message)) {
            return message;
        }
    }
    return messageWith(kind, 1);
}
