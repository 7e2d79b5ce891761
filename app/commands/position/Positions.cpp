#include "commands/position/Positions.h"

#include "format/Decimal.h"

#include <algorithm>

namespace {

std::optional<RTCM2_decimal_s> quantityOf(const void* record, const RTCM2_member_s* member)
{
    RTCM2_decimal_s value{};
    const bool isThere = RTCM2_read_quantity(record, member, &value) == RTCM2_ACCESS_DONE;
    return isThere ? std::optional(value) : std::nullopt;
}

std::optional<RTCM2_decimal_s> quantityOf(const Found& message, RTCM2_meaning_enum meaning)
{
    const FieldModel* const field = message.kind->field(meaning);
    return field != nullptr ? quantityOf(message.record, field->row) : std::nullopt;
}

std::optional<Coordinates> coordinatesOf(const void* record, const RTCM2_point_s& point)
{
    Coordinates all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto value = quantityOf(record, point.position[i]);
        if (!value) {
            return std::nullopt;
        }
        all[i] = *value;
    }
    return all;
}

std::optional<StationId> stationOf(const Found& message)
{
    const FieldModel* const field = message.kind->field(RTCM2_MEANS_STATION);
    if (field == nullptr) {
        return std::nullopt;
    }
    const std::int64_t number = RTCM2_reader_integer(&field->reader, message.record, 0);
    return StationId(static_cast<unsigned>(number), *message.envelope);
}

Coordinates sumOf(const Coordinates& a, const Coordinates& b)
{
    return {sumOf(a[0], b[0]), sumOf(a[1], b[1]), sumOf(a[2], b[2])};
}

bool isChange(const Telling& before, const Telling& now)
{
    const bool isAnotherHeight =
        now.antennaHeight &&
        !(before.antennaHeight && isSame(*now.antennaHeight, *before.antennaHeight));
    return isAnotherHeight || !std::equal(now.coordinates.begin(), now.coordinates.end(),
                                          before.coordinates.begin(), isSame);
}

}    // namespace

Cartesian cartesianOf(const Coordinates& coordinates)
{
    return {realOf(coordinates[0]), realOf(coordinates[1]), realOf(coordinates[2])};
}

Positions::Key Positions::keyOf(const Found& message, std::uint32_t index)
{
    const RTCM2_system_s* const system = RTCM2_system_of(message.record);
    const RTCM2_point_s& point = message.kind->row->points[index];
    return {stationOf(message), system != nullptr ? system->name : "", point.from != nullptr,
            point.name};
}

void Positions::add(const Found& message)
{
    const RTCM2_kind_s& kind = *message.kind->row;
    if (kind.point_count == 0) {
        return;
    }
    const RTCM2_system_s* const system = RTCM2_system_of(message.record);
    Telling telling{.antennaHeight = quantityOf(message, RTCM2_MEANS_HEIGHT),
                    .input = names.size() - 1,
                    .number = message.number,
                    .byte = message.begin,
                    .time = quantityOf(message, RTCM2_MEANS_TIME)};
    for (std::uint32_t i = 0; i < kind.point_count; ++i) {
        const RTCM2_point_s& point = kind.points[i];
        if (const auto coordinates = coordinatesOf(message.record, point)) {
            telling.coordinates = *coordinates;
            addPoint(keyOf(message, i), system, point, telling);
        }
        telling.antennaHeight.reset();    // it is that of the first point
    }
}

void Positions::addPoint(const Key& key, const RTCM2_system_s* system, const RTCM2_point_s& point,
                         Telling telling)
{
    PointHistory& history = found[key];
    history.system = system;
    history.point = &point;
    ++history.told;
    if (point.from == nullptr) {
        const bool isFirst = !history.last;
        place(history, telling);
        if (isFirst) {
            placeDistancesFrom(key, telling);
        }
    } else if (const PointHistory* const origin = originOf(key, point)) {
        telling.coordinates = sumOf(origin->last->coordinates, telling.coordinates);
        place(history, telling);
    } else {
        history.distance = telling;
    }
}

// The point that this one's coordinates are a distance from, once it has been told. A message that
// does not tell its system says of no point that it is the one.
const PointHistory* Positions::originOf(const Key& key, const RTCM2_point_s& point) const
{
    const auto& [station, system, isDistance, name] = key;
    const auto origin = found.find({station, system, false, point.from});
    return system.empty() || origin == found.end() ? nullptr : &origin->second;
}

// Of distances that came before the point that they are from.
void Positions::placeDistancesFrom(const Key& key, const Telling& origin)
{
    const auto& [station, system, isDistance, name] = key;
    for (auto next = found.lower_bound({station, system, true, ""});
         next != found.end() && std::get<0>(next->first) == station &&
         std::get<1>(next->first) == system;
         ++next) {
        PointHistory& history = next->second;
        if (history.distance && originOf(next->first, *history.point) != nullptr &&
            history.point->from == name) {
            Telling telling = *history.distance;
            telling.coordinates = sumOf(origin.coordinates, telling.coordinates);
            history.distance.reset();
            place(history, telling);
        }
    }
}

void Positions::place(PointHistory& history, Telling telling)
{
    if (!history.last) {
        return keep(history, telling);
    }
    if (isChange(*history.last, telling)) {
        telling.moved = distanceBetween(cartesianOf(telling.coordinates),
                                        cartesianOf(history.last->coordinates));
        telling.antennaHeight =
            telling.antennaHeight ? telling.antennaHeight : history.last->antennaHeight;
        ++history.changes;
        keep(history, telling);
    }
}

void Positions::keep(PointHistory& history, const Telling& telling)
{
    history.last = telling;
    if (history.kept.empty() || keptCount < mostKept) {
        history.kept.push_back(telling);
        ++keptCount;
    }
}
