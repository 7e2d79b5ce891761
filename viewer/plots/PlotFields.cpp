#include "viewer/plots/PlotFields.h"

#include <algorithm>

namespace {

bool isNumber(const FieldModel& field)
{
    return field.element == nullptr && !field.isRepeated() && !field.isText() &&
           (!field.isQuantity() || field.isScaled());
}

// Satellites are no numbers, but keys.
bool isKey(const FieldModel& field)
{
    return field.element == nullptr && !field.isRepeated() && !field.isText() && !field.isReal() &&
           !field.isScaled();
}

// Of the field in a kind; of no field where the kind has none.
FieldPath pathIn(const PlotField* field, const KindModel& kind)
{
    if (field != nullptr) {
        for (const auto& [owner, path] : field->paths) {
            if (owner == &kind) {
                return path;
            }
        }
    }
    return {};
}

// Whether two fields stand in the same records.
bool areBeside(const PlotField& a, const PlotField& b)
{
    const auto& [kind, path] = a.paths.front();
    const FieldPath other = pathIn(&b, *kind);
    return other.field != nullptr && (path.part == nullptr) == (other.part == nullptr) &&
           (path.part == nullptr || path.field == other.field);
}

}    // namespace

bool isPlottable(const PlotField& field)
{
    return isNumber(field.field());
}

PlotFields::PlotFields(const FormatModel& model, const std::set<std::uint16_t>& types)
{
    for (const auto& kind : model.kinds()) {
        if (kind->isMain && types.count(static_cast<std::uint16_t>(kind->typeNumber)) != 0) {
            addKind(*kind);
        }
    }
}

// Fields of elements first, then those that all messages have.
void PlotFields::addKind(const KindModel& kind)
{
    for (const FieldModel& field : kind.fields) {
        if (field.element != nullptr) {
            field.element->eachField([&](const FieldModel& part) {
                addField(kind, {&field, &part});
            });
        }
    }
    kind.eachField([&](const FieldModel& field) { addField(kind, {&field, nullptr}); });
}

void PlotFields::addField(const KindModel& kind, const FieldPath& path)
{
    const FieldModel& last = path.last();
    if (!isNumber(last) && !isKey(last)) {
        return;
    }
    const auto known = std::find_if(fields.begin(), fields.end(), [&](const PlotField& field) {
        return field.name == path.name() && field.unit == last.unit &&
               (path.part == nullptr || field.paths.front().second.part == path.part);
    });
    if (known != fields.end()) {
        known->kinds += ", " + kind.name;
        known->paths.emplace_back(&kind, path);
    } else {
        fields.push_back({path.name(), last.unit, kind.name, {{&kind, path}}});
    }
}

std::vector<const PlotField*> PlotFields::keysFor(const PlotField& field) const
{
    std::vector<const PlotField*> keys;
    for (const PlotField& each : fields) {
        if (&each != &field && isKey(each.field()) && areBeside(field, each)) {
            keys.push_back(&each);
        }
    }
    return keys;
}

const PlotField* PlotFields::first() const
{
    const PlotField* number = nullptr;
    for (const PlotField& field : fields) {
        if (field.field().isScaled() && field.field().row->meaning == RTCM2_MEANS_CORRECTION) {
            return &field;
        }
        const bool isBetter =
            number == nullptr || (field.field().isScaled() && !number->field().isScaled());
        number = isNumber(field.field()) && isBetter ? &field : number;
    }
    return number;
}

const PlotField* PlotFields::beside(const PlotField& field, RTCM2_meaning_enum meaning) const
{
    const PlotField* raw = nullptr;
    for (const PlotField* key : keysFor(field)) {
        if (key->field().row->meaning == meaning) {
            if (key->field().isQuantity()) {
                return key;
            }
            raw = key;
        }
    }
    return raw;
}

const PlotField* PlotFields::satelliteOf(const PlotField& field) const
{
    return beside(field, RTCM2_MEANS_SATELLITE);
}

const PlotField* PlotFields::issueOf(const PlotField& field) const
{
    return beside(field, RTCM2_MEANS_ISSUE);
}

const PlotField* PlotFields::named(const std::string& name) const
{
    const auto known = std::find_if(fields.begin(), fields.end(),
                                    [&](const PlotField& field) { return field.name == name; });
    return known != fields.end() ? &*known : nullptr;
}

std::vector<FollowedFields> followed(const PlotField& value, const PlotField* key,
                                     const PlotField* issue)
{
    std::vector<FollowedFields> all;
    for (const auto& [kind, path] : value.paths) {
        all.push_back({.kind = kind,
                       .values = {path},
                       .key = pathIn(key, *kind),
                       .issue = pathIn(issue, *kind)});
    }
    return all;
}
