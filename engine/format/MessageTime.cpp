#include "format/MessageTime.h"

#include <cmath>

MessageTime timeOf(const KindModel& kind)
{
    const FieldModel* const field = kind.field(RTCM2_MEANS_TIME);
    const RTCM2_quantity_s* const quantity = field != nullptr ? field->row->quantity : nullptr;
    if (quantity == nullptr || quantity->by != nullptr || quantity->highest == INT64_MAX) {
        return {};
    }
    const RTCM2_factor_s& factor = *quantity->factors;
    return {.field = field,
            .secondsPerUnit = static_cast<double>(factor.factor) / std::pow(10, factor.decimals),
            .wrap = static_cast<std::uint64_t>(quantity->highest) + 1};
}

MessageSystem::MessageSystem(const KindModel& kind)
    : isAlwaysThis(kind.row->system_member == nullptr), index(indexOf(kind.row->system))
{
}

std::uint32_t MessageSystem::indexOf(const RTCM2_system_s* system)
{
    const auto count = static_cast<std::uint32_t>(RTCM2_system_count());
    return system != nullptr ? static_cast<std::uint32_t>(system - RTCM2_system(0)) : count;
}
