#include "commands/encode/MainKind.h"

#include "base/Names.h"
#include "base/NearestName.h"
#include "commands/encode/JsonValue.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<const RTCM2_kind_s*> mainKinds()
{
    std::vector<const RTCM2_kind_s*> kinds;
    for (int i = 1; i <= RTCM2_last_kind(); ++i) {
        if (RTCM2_kind(i)->type >= 0) {
            kinds.push_back(RTCM2_kind(i));
        }
    }
    return kinds;
}

}    // namespace

const RTCM2_member_s& wordsOf(const RTCM2_kind_s& kind)
{
    return *std::find_if(kind.members, kind.members + kind.member_count,
                         [](const auto& row) { return row.meaning == RTCM2_MEANS_WORDS; });
}

const RTCM2_kind_s* findMainKind(std::string_view nameOrNumber)
{
    for (const RTCM2_kind_s* kind : mainKinds()) {
        if (nameOrNumber == kind->name || sameName(labelOf(*kind), nameOrNumber) ||
            nameOrNumber == std::to_string(kind->type)) {
            return kind;
        }
    }
    return nullptr;
}

std::string noMainKind(std::string_view name)
{
    std::vector<std::string> names;
    for (const RTCM2_kind_s* kind : mainKinds()) {
        names.push_back(quoted(labelOf(*kind)));
    }
    const std::string meant = suggestion(nearestNames(name, names));
    return "there is no message kind " + quoted(name) + (meant.empty() ? "" : "; " + meant);
}
