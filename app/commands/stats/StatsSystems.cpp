#include "commands/stats/StatsSystems.h"

const FieldModel* systemField(const KindModel& element, const FieldParts& parts)
{
    for (const std::string& name : parts.system) {
        if (const FieldModel* field = element.field(name)) {
            return field;
        }
    }
    return nullptr;
}

std::string systemName(const KindModel& kind, std::uint64_t system, const FieldParts& parts)
{
    for (const FieldModel& field : kind.fields) {
        const FieldModel* named =
            field.element != nullptr ? systemField(*field.element, parts) : nullptr;
        if (named != nullptr) {
            const char* name = RTCM2_text_of(named->row, static_cast<std::int64_t>(system));
            return name != nullptr ? name : std::to_string(system);
        }
    }
    const auto known = parts.systemOfKind.find(kind.name);
    return known != parts.systemOfKind.end() ? known->second : std::string();
}
