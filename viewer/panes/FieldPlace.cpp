#include "viewer/panes/FieldPlace.h"

namespace {

const FieldModel* fieldAt(const KindModel& kind, int index)
{
    const bool exists = index >= 0 && static_cast<std::size_t>(index) < kind.fields.size();
    return exists ? &kind.fields[static_cast<std::size_t>(index)] : nullptr;
}

}    // namespace

FieldSpot spotOf(const MessageDetail& detail, const FieldPlace& place)
{
    if (detail.record == nullptr || detail.kind == nullptr) {
        return {};
    }
    const FieldModel* const field = fieldAt(*detail.kind, place.field);
    if (field == nullptr || place.element < 0) {
        return field != nullptr ? FieldSpot{detail.kind, field, detail.record} : FieldSpot{};
    }
    const void* const element =
        field->element != nullptr
            ? RTCM2_element(detail.record, field->row, static_cast<std::uint32_t>(place.element))
            : nullptr;
    if (element == nullptr) {
        return {};
    }
    return {field->element, fieldAt(*field->element, place.part), element};
}
