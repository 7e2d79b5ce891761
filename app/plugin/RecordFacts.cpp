#include "plugin/RecordFacts.h"

#include "base/Characters.h"
#include "base/Names.h"
#include "commands/encode/MemberValue.h"
#include "format/FormatModel.h"
#include "plugin/Plugin.h"

#include <algorithm>
#include <cstring>

namespace {

std::span<const RTCM2_member_s> membersOf(const RTCM2_kind_s& kind)
{
    return {kind.members, kind.member_count};
}

const RTCM2_member_s* memberOf(const RTCM2_kind_s& kind, const std::string& name)
{
    const auto members = membersOf(kind);
    const auto found =
        std::find_if(members.begin(), members.end(),
                     [&](const RTCM2_member_s& member) { return sameName(labelOf(member), name); });
    return found != members.end() ? &*found : nullptr;
}

const RTCM2_member_s* firstMemberOf(const RTCM2_kind_s& kind, const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        if (const RTCM2_member_s* member = memberOf(kind, name)) {
            return member;
        }
    }
    return nullptr;
}

// An absent member counts as 0.
std::uint64_t valueOf(const RTCM2_member_s& member, const void* record)
{
    std::int64_t value = 0;
    RTCM2_read_integer(record, &member, 0, &value);
    return static_cast<std::uint64_t>(value);
}

}    // namespace

std::unique_ptr<MessageFactsReader> makeFactsReader(const FieldParts& parts,
                                                    std::span<const KindModel* const> kinds)
{
    return std::make_unique<RecordFacts>(parts, kinds);
}

RecordFacts::RecordFacts(const FieldParts& parts, std::span<const KindModel* const> models)
{
    kinds.emplace_back();    // the null kind
    for (int value = 1; value <= RTCM2_last_kind(); ++value) {
        const RTCM2_kind_s& row = *RTCM2_kind(value);
        kinds.push_back(kindOf(row, parts));
        const auto model = std::find_if(models.begin(), models.end(), [&](const KindModel* wanted) {
            return wanted->name == row.display;
        });
        kinds.back().model = model != models.end() ? *model : nullptr;
    }
}

RecordFacts::Kind RecordFacts::kindOf(const RTCM2_kind_s& row, const FieldParts& parts)
{
    Kind kind{.station = memberOf(row, parts.station), .time = memberOf(row, parts.time)};
    const RTCM2_member_s* text = memberOf(row, parts.text);
    if (text != nullptr && text->role == RTCM2_ROLE_RUN && text->type == RTCM2_TYPE_CHARACTER) {
        kind.text = text;
    }
    for (const RTCM2_member_s& member : membersOf(row)) {
        if (member.role != RTCM2_ROLE_ARRAY) {
            continue;
        }
        const RTCM2_kind_s& element = *member.elements;
        if (const RTCM2_member_s* satellite = memberOf(element, parts.satellite)) {
            kind.elements = &member;
            kind.satellite = satellite;
            kind.system = firstMemberOf(element, parts.system);
        }
    }
    return kind;
}

const MessageFacts* RecordFacts::read(std::span<const std::uint8_t> packed)
{
    message.kind = RTCM2_MESSAGE_NULL;    // stays so unless the decoder of a kind runs
    const std::int32_t result =
        RTCM2_decode(nullptr, packed.data(), static_cast<std::uint16_t>(packed.size()), &message);
    const Kind& kind = kinds[message.kind];
    const bool isWanted = result > 0 && kind.model != nullptr;
    if (isWanted) {
        readFacts(kind);
    }
    RTCM2_free_message(&message);
    return isWanted ? &facts : nullptr;
}

void RecordFacts::readFacts(const Kind& kind)
{
    const auto number = [&](const RTCM2_member_s* member) {
        return member != nullptr ? std::optional(valueOf(*member, &message)) : std::nullopt;
    };
    facts.kind = kind.model;
    facts.station = number(kind.station);
    facts.time = number(kind.time);
    facts.text.reset();
    if (kind.text != nullptr) {
        facts.text = upToFirstNul({reinterpret_cast<const char*>(&message) + kind.text->offset,
                                   RTCM2_count(&message, kind.text)});
    }
    facts.satellites.clear();
    if (kind.elements != nullptr) {
        readSatellites(kind);
    }
}

void RecordFacts::readSatellites(const Kind& kind)
{
    const std::uint32_t count = RTCM2_count(&message, kind.elements);
    const char* element = static_cast<char*>(RTCM2_element(&message, kind.elements, 0));
    for (std::uint32_t i = 0; i < count; ++i, element += kind.elements->elements->size) {
        facts.satellites.push_back(
            {.system = kind.system != nullptr ? valueOf(*kind.system, element) : 0,
             .number = valueOf(*kind.satellite, element)});
    }
}
