#include "RecordFacts.h"

#include "Characters.h"
#include "FormatModel.h"
#include "MemberValue.h"
#include "Plugin.h"
#include "RTCM2_members.h"

#include <algorithm>
#include <cstring>

using rtcm2::KindRow;
using rtcm2::MemberRole;
using rtcm2::MemberRow;
using rtcm2::MemberType;

namespace {

const MemberRow* memberOf(const KindRow& kind, const std::string& name)
{
    const auto found = std::find_if(kind.members.begin(), kind.members.end(),
                                    [&](const MemberRow& row) { return sameName(row.name, name); });
    return found != kind.members.end() ? &*found : nullptr;
}

const MemberRow* firstMemberOf(const KindRow& kind, const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        if (const MemberRow* member = memberOf(kind, name)) {
            return member;
        }
    }
    return nullptr;
}

const char* placeOf(const MemberRow& member, const void* record)
{
    return static_cast<const char*>(record) + member.offset;
}

// An absent member counts as 0.
std::uint64_t valueOf(const MemberRow& member, const void* record)
{
    const bool isPresent = member.isPresent == nullptr || member.isPresent(record);
    return isPresent ? memberValue::load(member, placeOf(member, record)).bits : 0;
}

std::uint64_t lengthOf(const KindRow& kind, const MemberRow& array, const void* record)
{
    return valueOf(kind.members[static_cast<std::size_t>(array.length)], record);
}

}    // namespace

std::unique_ptr<MessageFactsReader> makeFactsReader(const FieldParts& parts,
                                                    std::span<const KindModel* const> kinds)
{
    return std::make_unique<RecordFacts>(parts, kinds);
}

RecordFacts::RecordFacts(const FieldParts& parts, std::span<const KindModel* const> models)
{
    for (const KindRow& row : rtcm2::kindRows()) {
        kinds.push_back(kindOf(row, parts));
        const auto model = std::find_if(models.begin(), models.end(), [&](const KindModel* wanted) {
            return wanted->name == row.name;
        });
        kinds.back().model = model != models.end() ? *model : nullptr;
    }
}

RecordFacts::Kind RecordFacts::kindOf(const KindRow& row, const FieldParts& parts)
{
    Kind kind{
        .row = &row, .station = memberOf(row, parts.station), .time = memberOf(row, parts.time)};
    const MemberRow* text = memberOf(row, parts.text);
    if (text != nullptr && text->role == MemberRole::run && text->type == MemberType::character) {
        kind.text = text;
    }
    for (const MemberRow& member : row.members) {
        if (member.role != MemberRole::records) {
            continue;
        }
        const KindRow& element = rtcm2::kindRows()[static_cast<std::size_t>(member.element)];
        if (const MemberRow* satellite = memberOf(element, parts.satellite)) {
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
    if (kind.row->release != nullptr) {
        kind.row->release(&message);
    }
    return isWanted ? &facts : nullptr;
}

void RecordFacts::readFacts(const Kind& kind)
{
    const auto number = [&](const MemberRow* member) {
        return member != nullptr ? std::optional(valueOf(*member, &message)) : std::nullopt;
    };
    facts.kind = kind.model;
    facts.station = number(kind.station);
    facts.time = number(kind.time);
    facts.text.reset();
    if (kind.text != nullptr) {
        const std::uint64_t length = lengthOf(*kind.row, *kind.text, &message);
        facts.text = upToFirstNul(
            {placeOf(*kind.text, &message), std::min<std::size_t>(length, kind.text->limit)});
    }
    facts.satellites.clear();
    if (kind.elements != nullptr) {
        readSatellites(kind);
    }
}

void RecordFacts::readSatellites(const Kind& kind)
{
    const KindRow& elementKind =
        rtcm2::kindRows()[static_cast<std::size_t>(kind.elements->element)];
    const char* element = nullptr;
    std::memcpy(&element, placeOf(*kind.elements, &message), sizeof element);
    const std::uint64_t count = lengthOf(*kind.row, *kind.elements, &message);
    for (std::uint64_t i = 0; i < count; ++i, element += elementKind.size) {
        facts.satellites.push_back(
            {.system = kind.system != nullptr ? valueOf(*kind.system, element) : 0,
             .number = valueOf(*kind.satellite, element)});
    }
}
