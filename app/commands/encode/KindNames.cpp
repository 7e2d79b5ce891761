#include "commands/encode/KindNames.h"

#include "base/Names.h"

#include <algorithm>

namespace {

// By the numbers of the kinds, from 1.
const std::vector<KindNames>& allKinds()
{
    static const std::vector<KindNames> kinds = [] {
        std::vector<KindNames> named;
        for (int kind = 1; kind <= RTCM2_last_kind(); ++kind) {
            named.emplace_back(*RTCM2_kind(kind));
        }
        return named;
    }();
    return kinds;
}

template <class Matches>
const KindNames* findMain(const Matches& matches)
{
    const auto found =
        std::find_if(allKinds().begin(), allKinds().end(), [&](const KindNames& kind) {
            return kind.row->type >= 0 && matches(kind.name);
        });
    return found != allKinds().end() ? &*found : nullptr;
}

}    // namespace

KindNames::KindNames(const RTCM2_kind_s& kind) : row(&kind), name(labelOf(kind))
{
    for (std::uint32_t i = 0; i < kind.member_count; ++i) {
        members.push_back(identifierOf(labelOf(kind.members[i])));
    }
}

std::optional<std::size_t> KindNames::find(std::string_view given, std::size_t likeliest) const
{
    if (likeliest < members.size() && members[likeliest] == given) {
        return likeliest;
    }
    auto found = std::find(members.begin(), members.end(), given);
    if (found == members.end()) {
        found = std::find_if(members.begin(), members.end(), [&](const std::string& candidate) {
            return sameName(candidate, given);
        });
    }
    return found != members.end() ? std::optional(static_cast<std::size_t>(found - members.begin()))
                                  : std::nullopt;
}

const KindNames& namesOf(const RTCM2_kind_s& kind)
{
    return allKinds()[static_cast<std::size_t>(kind.kind) - 1];
}

const KindNames* findMainKind(std::string_view name)
{
    const KindNames* exact =
        findMain([&](const std::string& candidate) { return candidate == name; });
    return exact != nullptr
               ? exact
               : findMain([&](const std::string& candidate) { return sameName(candidate, name); });
}
