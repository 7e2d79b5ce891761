#include "forms/AisAssembly.h"

#include "forms/AisBroadcast.h"

#include <algorithm>

namespace {

constexpr std::uint64_t waitForFirst = 9;
constexpr std::uint64_t waitForOthers = 64;

}    // namespace

bool AisMessage::isBroadcast() const
{
    return parts[0] && parts[0]->payload.starts_with(aisBroadcast::firstCharacter);
}

unsigned AisMessage::firstMissing() const
{
    const auto missing = std::find(parts.begin(), parts.end(), std::nullopt);
    return missing == parts.end() ? 0 : static_cast<unsigned>(missing - parts.begin()) + 1;
}

bool AisMessage::hasProblem() const
{
    return std::any_of(parts.begin(), parts.end(),
                       [](const auto& part) { return part && !part->problem.empty(); });
}

std::uint64_t AisMessage::begin() const
{
    std::uint64_t first = UINT64_MAX;
    for (const auto& part : parts) {
        first = part ? std::min(first, part->begin) : first;
    }
    return first;
}

std::uint64_t AisMessage::end() const
{
    std::uint64_t last = 0;
    for (const auto& part : parts) {
        last = part ? std::max(last, part->end) : last;
    }
    return last;
}

std::optional<std::int64_t> AisMessage::received() const
{
    const auto told = std::find_if(parts.begin(), parts.end(),
                                   [](const auto& part) { return part && part->received; });
    return told == parts.end() ? std::nullopt : (*told)->received;
}

bool AisAssembly::Key::matches(const Key& other) const
{
    return address == other.address && count == other.count && group == other.group &&
           (group || sequence == other.sequence) &&
           (channel == other.channel || channel == 0 || other.channel == 0);
}

std::optional<AisMessage> AisAssembly::add(const AisSentence& sentence, const TagBlock& tags,
                                           AisPart part)
{
    const Place place = placeOf({.address = std::string(sentence.address),
                                 .group = tags.group,
                                 .sequence = sentence.sequence,
                                 .channel = sentence.channel,
                                 .count = sentence.count});
    AisMessage& message = place->message;
    std::optional<AisPart>& known = message.parts[sentence.number - 1];
    if (known && known->payload != part.payload) {
        if (message.isBroadcast()) {
            lost = message;
        }
        message.parts.assign(sentence.count, std::nullopt);
    }
    if (!known || !known->problem.empty()) {
        known = std::move(part);
    }
    waitOn(*place);
    const bool isOver = message.isWhole() || (message.isBroadcast() && message.hasProblem());
    if (!isOver) {
        return std::nullopt;
    }
    AisMessage taken = take(place);
    return taken.isBroadcast() ? std::optional(std::move(taken)) : std::nullopt;
}

AisAssembly::Place AisAssembly::placeOf(Key key)
{
    const auto known = std::find_if(
        all.begin(), all.end(), [&](const Waiting& waiting) { return waiting.key.matches(key); });
    if (known != all.end()) {
        return known;
    }
    all.push_back({.key = std::move(key), .message = {}});
    all.back().message.parts.resize(all.back().key.count);
    return all.end() - 1;
}

void AisAssembly::waitOn(Waiting& waiting)
{
    waiting.until = number + (waiting.message.parts[0] ? waitForOthers : waitForFirst);
    soonest = std::min(soonest, waiting.until);
}

std::uint64_t AisAssembly::earliestBegin() const
{
    std::uint64_t first = UINT64_MAX;
    for (const Waiting& waiting : all) {
        first = std::min(first, waiting.message.begin());
    }
    return first;
}

AisMessage AisAssembly::take(Place place)
{
    AisMessage message = std::move(place->message);
    all.erase(place);
    return message;
}

std::optional<AisMessage> AisAssembly::advance(std::uint64_t now)
{
    number = now;
    if (now <= soonest) {
        return std::nullopt;
    }
    std::optional<AisMessage> late;
    soonest = UINT64_MAX;
    for (Place place = all.begin(); place != all.end();) {
        if (place->until < now) {
            late = place->message.isBroadcast() ? std::move(place->message) : std::move(late);
            place = all.erase(place);
        } else {
            soonest = std::min(soonest, place->until);
            ++place;
        }
    }
    return late;
}

std::optional<AisMessage> AisAssembly::takeRest()
{
    const auto rest = std::find_if(all.begin(), all.end(), [](const Waiting& waiting) {
        return waiting.message.isBroadcast();
    });
    return rest == all.end() ? std::nullopt : std::optional(take(rest));
}
