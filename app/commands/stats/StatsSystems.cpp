#include "commands/stats/StatsSystems.h"

#include "FieldInfo.h"
#include "format/CodedTexts.h"

namespace {

// The field of the elements whose value names the system; null when there is none.
const FieldModel* systemField(const KindModel& element, const FieldParts& parts)
{
    for (const std::string& name : parts.system) {
        if (const FieldModel* field = element.field(name)) {
            return field;
        }
    }
    return nullptr;
}

}    // namespace

std::string systemName(const KindModel& kind, std::uint64_t system, const FieldParts& parts)
{
    for (const FieldModel& field : kind.fields) {
        const FieldModel* named =
            field.element != nullptr ? systemField(*field.element, parts) : nullptr;
        if (named == nullptr) {
            continue;
        }
        for (const FieldInfo::SymbolicValue& symbolic : named->info->getSymbolicValues()) {
            if (bitsOf(symbolic.first) == system) {
                return symbolic.second.toStdString();
            }
        }
        return std::to_string(system);
    }
    const auto known = parts.systemOfKind.find(kind.name);
    return known != parts.systemOfKind.end() ? known->second : std::string();
}
