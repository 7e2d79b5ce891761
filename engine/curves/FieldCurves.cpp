#include "curves/FieldCurves.h"

#include "format/Decimal.h"
#include "format/FieldText.h"

#include <algorithm>

namespace {

// Nothing where the record has no such number.
std::optional<double> numericValue(const FieldModel& field, const void* record)
{
    const bool isAlwaysThere = field.reader.when_values == nullptr;
    if (!isAlwaysThere && !field.isPresent(record)) {
        return std::nullopt;
    }
    if (field.isQuantity()) {
        RTCM2_decimal_s value;
        const auto read = RTCM2_reader_quantity(&*field.quantity, record, &value);
        return read == RTCM2_ACCESS_DONE ? std::optional(realOf(value)) : std::nullopt;
    }
    return field.isReal() ? RTCM2_reader_real(&field.reader, record)
                          : static_cast<double>(RTCM2_reader_integer(&field.reader, record, 0));
}

std::string keyName(const FieldModel& field, const RTCM2_system_s* system, std::int64_t number)
{
    if (!field.isQuantity()) {
        const char* const meaning = meaningOf(field, number);
        return meaning != nullptr ? meaning : std::to_string(number);
    }
    const RTCM2_decimal_s value{number, 0};
    char text[RTCM2_QUANTITY_ROOM];
    return {text, RTCM2_quantity_text(field.row->quantity, system, &value, text)};
}

std::uint32_t indexOf(const RTCM2_system_s& system)
{
    return static_cast<std::uint32_t>(&system - RTCM2_system(0));
}

// A field of elements by its meaning, as a path; of no field where they have none.
FieldPath pathTo(const FieldModel& elements, RTCM2_meaning_enum meaning)
{
    const FieldModel* const part = elements.element->field(meaning);
    return part != nullptr ? FieldPath{&elements, part} : FieldPath{};
}

// What the number of such a field means, where that is known.
FieldPath quantityTo(const FieldModel& elements, RTCM2_meaning_enum meaning)
{
    const FieldPath path = pathTo(elements, meaning);
    const FieldModel* const quantity =
        path.part != nullptr ? elements.element->quantityOf(*path.part) : nullptr;
    return quantity != nullptr ? FieldPath{&elements, quantity} : FieldPath{};
}

}    // namespace

FieldCurves::FieldCurves(const std::vector<FollowedFields>& fields, std::size_t bins)
    : byKind(static_cast<std::size_t>(RTCM2_last_kind()) + 1), binsOfCurve(bins)
{
    for (const FollowedFields& each : fields) {
        byKind[each.kind->number()].push_back(each);
    }
}

void FieldCurves::take(const KindModel& kind, const void* record, const StationId& station,
                       double seconds)
{
    for (const FollowedFields& fields : byKind[kind.number()]) {
        const FieldPath& path = fields.values.front();
        if (path.part == nullptr) {
            takeRecord(fields, record, station, seconds);
        } else {
            path.field->eachElement(record, [&](const void* element) {
                takeRecord(fields, element, station, seconds);
            });
        }
    }
}

// The same keys come again and again, and seldom do two of them share a place.
FieldTrack* FieldCurves::trackOf(const FollowedFields& fields, const void* record, const Key& key)
{
    const auto number = static_cast<std::size_t>(key.number);
    Tracks::value_type*& place = recent[(number + 64 * key.system + 256 * key.group +
                                         37 * key.station.station + key.station.mmsi) %
                                        recent.size()];
    if (place != nullptr && place->first == key) {
        return &place->second;
    }
    auto track = all.find(key);
    if (track == all.end()) {
        if (all.size() >= mostTracks) {
            return nullptr;
        }
        track = all.emplace(key, FieldTrack()).first;
        track->second.values.resize(fields.values.size(), Curve(binsOfCurve));
        if (fields.key.field != nullptr) {
            track->second.name = keyName(fields.key.last(), RTCM2_system_of(record), key.number);
        }
    }
    place = &*track;
    return &track->second;
}

std::optional<FieldCurves::Key> FieldCurves::keyOf(const FollowedFields& fields, const void* record,
                                                   const StationId& station)
{
    Key key{.station = station, .group = fields.group};
    if (fields.key.field != nullptr) {
        const std::optional<double> number = numericValue(fields.key.last(), record);
        if (!number) {
            return std::nullopt;
        }
        const RTCM2_system_s* const system = RTCM2_system_of(record);
        key.system =
            system != nullptr ? indexOf(*system) : static_cast<std::uint32_t>(RTCM2_system_count());
        key.number = static_cast<std::int64_t>(*number);
    }
    return key;
}

std::optional<std::size_t> FieldCurves::elementWith(const FollowedFields& fields,
                                                    const void* record, const Key& key,
                                                    double value)
{
    const FieldPath& path = fields.values.front();
    std::size_t elements = 0;
    const bool isThere = path.anyRecord(record, [&](const void* part) {
        ++elements;
        return keyOf(fields, part, key.station) == key && numericValue(path.last(), part) == value;
    });
    return isThere ? std::optional(elements - 1) : std::nullopt;
}

void FieldCurves::takeRecord(const FollowedFields& fields, const void* record,
                             const StationId& station, double seconds)
{
    const std::optional<Key> key = keyOf(fields, record, station);
    if (!key) {
        return;
    }
    FieldTrack* const track = trackOf(fields, record, *key);
    if (track == nullptr) {
        ++beyond;
        return;
    }
    if (fields.issue.field != nullptr && fields.issue.last().isPresent(record)) {
        const std::int64_t issue = RTCM2_reader_integer(&fields.issue.last().reader, record, 0);
        if (track->issue && *track->issue != issue) {
            track->issueChanges.add(seconds);
            for (Curve& curve : track->values) {
                curve.breakAt(seconds);
            }
        }
        track->issue = issue;
    }
    for (std::size_t i = 0; i < fields.values.size(); ++i) {
        if (const auto value = numericValue(fields.values[i].last(), record)) {
            track->values[i].add(seconds, *value);
        }
    }
}

FollowedSatellites satelliteFields(const FormatModel& model)
{
    FollowedSatellites result;
    const auto groupOf = [&](const KindModel* element) {
        const auto known =
            std::find_if(result.groups.begin(), result.groups.end(),
                         [&](const auto& group) { return group.element == element; });
        return static_cast<std::size_t>(known - result.groups.begin());
    };
    for (const auto& kind : model.kinds()) {
        for (const FieldModel& field : kind->fields) {
            if (!kind->isMain || field.element == nullptr) {
                continue;
            }
            const FieldPath satellite = quantityTo(field, RTCM2_MEANS_SATELLITE);
            FollowedFields followed{.kind = kind.get(),
                                    .key = satellite,
                                    .issue = pathTo(field, RTCM2_MEANS_ISSUE),
                                    .group = groupOf(field.element)};
            SatelliteFields group{.element = field.element};
            for (const auto meaning : {RTCM2_MEANS_CORRECTION, RTCM2_MEANS_RATE}) {
                if (const FieldPath path = quantityTo(field, meaning); path.field != nullptr) {
                    group.values.push_back(path);
                }
            }
            followed.values = group.values;
            if (const FieldPath path = pathTo(field, RTCM2_MEANS_ACCURACY); path.field != nullptr) {
                group.accuracy = followed.values.size();
                followed.values.push_back(path);
            }
            if (satellite.field == nullptr || followed.values.empty()) {
                continue;
            }
            if (followed.group == result.groups.size()) {
                result.groups.push_back(group);
            }
            result.fields.push_back(followed);
        }
    }
    return result;
}
