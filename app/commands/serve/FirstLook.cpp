#include "commands/serve/FirstLook.h"

#include "framing/Header.h"

#include <algorithm>
#include <cmath>

void FirstLook::beginInput()
{
    clock.emplace(model);
    looked = 0;
    last.clear();
}

void FirstLook::take(const Found& found)
{
    if (!found.hasRecord()) {
        return;
    }
    ++looked;
    const unsigned type = framing::headerOf(found.bytes).type;
    const double now = clock->read(found).seconds;
    Intervals& intervals = seen[type];
    const auto [before, isFirst] = last.try_emplace(type, now);
    if (!isFirst) {
        intervals.seconds += now - before->second;
        ++intervals.count;
        before->second = now;
    }
    const RTCM2_system_s* const system =
        found.kind->isUnknown ? nullptr : RTCM2_system_of(found.record);
    if (system != nullptr) {
        seenSystems.insert(system->name);
    }
}

std::string FirstLook::types() const
{
    std::string text;
    for (const auto& [type, intervals] : seen) {
        text += (text.empty() ? "" : ",") + std::to_string(type);
        if (intervals.count > 0) {
            const double mean = std::round(intervals.seconds / intervals.count);
            text += "(" + std::to_string(std::max(1, static_cast<int>(mean))) + ")";
        }
    }
    return text;
}

std::string FirstLook::systems() const
{
    std::string text;
    for (const std::string& system : seenSystems) {
        text += (text.empty() ? "" : "+") + system;
    }
    return text;
}
