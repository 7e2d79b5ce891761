#include "check/StationState.h"

#include "check/Wanted.h"

#include <cmath>

namespace {

constexpr std::size_t mostHealthStates = 100;
constexpr std::size_t mostSatellites = 256;
constexpr std::size_t mostClasses = 256;
constexpr std::int64_t usualStepsAway = 5;

std::int64_t integerIn(const FieldModel& field, const void* record)
{
    return RTCM2_reader_integer(&field.reader, record, 0);
}

std::uint32_t indexOf(const RTCM2_system_s* system)
{
    return static_cast<std::uint32_t>(system != nullptr ? system - RTCM2_system(0)
                                                        : RTCM2_system_count());
}

bool isSame(const RTCM2_decimal_s& a, const RTCM2_decimal_s& b)
{
    return a.digits == b.digits && a.decimals == b.decimals;
}

double numberOf(const RTCM2_decimal_s& decimal)
{
    return static_cast<double>(decimal.digits) / std::pow(10, decimal.decimals);
}

bool readPoint(const RTCM2_point_s& point, const void* record, PointState& state)
{
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (RTCM2_read_quantity(record, point.position[axis], &state.exact[axis]) !=
            RTCM2_ACCESS_DONE) {
            return false;
        }
        state.metres[axis] = numberOf(state.exact[axis]);
    }
    return true;
}

}    // namespace

bool SatelliteState::isAway(std::int64_t now, std::int64_t shortest) const
{
    const std::int64_t usual =
        times > 1 ? (last - first) / static_cast<std::int64_t>(times - 1) : 0;
    return now - last > std::max(shortest, usualStepsAway * usual);
}

CheckedFields::CheckedFields(const KindModel& kind)
    : satellite(kind.field(RTCM2_MEANS_SATELLITE)), issue(kind.field(RTCM2_MEANS_ISSUE)),
      accuracy(kind.field(RTCM2_MEANS_ACCURACY))
{
    satellite = satellite != nullptr ? kind.quantityOf(*satellite) : nullptr;
    for (const FieldModel& field : kind.fields) {
        if (field.element != nullptr) {
            elements.push_back(&field);
        }
    }
}

bool StationState::addHealth(std::int64_t value, const Place& place)
{
    if (!healthStates.empty() && healthStates.back().value == value) {
        return false;
    }
    changesOfHealth += healthStates.empty() ? 0 : 1;
    if (healthStates.size() == mostHealthStates) {
        healthStates.pop_back();
    }
    healthStates.push_back({value, place});
    return true;
}

void StationState::addRecord(const CheckedFields& fields, const KindModel& kind, const void* record,
                             std::int64_t time, const Place& place)
{
    if (fields.satellite != nullptr) {
        addSatellite(fields, record, time, place);
    }
    if (fields.accuracy != nullptr && fields.accuracy->isPresent(record)) {
        Accuracy& counted = accuracy[&kind];
        counted.field = fields.accuracy;
        const std::int64_t value = integerIn(*fields.accuracy, record);
        if (counted.classes.size() < mostClasses || counted.classes.count(value) != 0) {
            ++counted.classes[value];
        }
    }
}

void StationState::addSatellite(const CheckedFields& fields, const void* record, std::int64_t time,
                                const Place& place)
{
    RTCM2_decimal_s number;
    if (!fields.satellite->isPresent(record) ||
        RTCM2_reader_quantity(&*fields.satellite->quantity, record, &number) != RTCM2_ACCESS_DONE) {
        return;
    }
    const RTCM2_system_s* const system = RTCM2_system_of(record);
    const auto [entry, isNew] = seen.try_emplace({indexOf(system), number.digits});
    SatelliteState& satellite = entry->second;
    if (isNew) {
        if (seen.size() > mostSatellites) {
            seen.erase(entry);
            return;
        }
        char name[RTCM2_QUANTITY_ROOM];
        RTCM2_quantity_text(fields.satellite->row->quantity, system, &number, name);
        begin = seen.size() == 1 ? time : begin;
        satellite = {.name = name, .first = time, .last = time, .firstPlace = place};
    }
    satellite.returns += satellite.isAway(time, shortest) ? 1 : 0;
    ++satellite.times;
    satellite.last = time;
    satellite.lastPlace = place;
    if (fields.issue != nullptr && fields.issue->isPresent(record)) {
        addIssue(satellite, *fields.issue, record, place);
    }
}

void StationState::addIssue(SatelliteState& satellite, const FieldModel& field, const void* record,
                            const Place& place)
{
    const std::int64_t value = integerIn(field, record);
    SatelliteState::Issue& issue =
        satellite.issues.try_emplace(field.row, SatelliteState::Issue{value, 0}).first->second;
    if (issue.value != value) {
        issue = {value, issue.changes + 1};
        satellite.issueChanges = std::max(satellite.issueChanges, issue.changes);
        satellite.lastChange = place;
    }
}

std::vector<StationState::Move> StationState::addPoints(const KindModel& kind, const void* record,
                                                        const Place& place)
{
    std::vector<Move> moves;
    for (std::uint32_t i = 0; i < kind.row->point_count; ++i) {
        const RTCM2_point_s& point = kind.row->points[i];
        PointState now{.point = &point, .since = place};
        if (point.from != nullptr || !readPoint(point, record, now)) {
            continue;
        }
        const auto [entry, isFirst] =
            places.try_emplace(PointKey{kind.number(), indexOf(RTCM2_system_of(record)), i}, now);
        PointState& known = entry->second;
        const bool isThere =
            std::equal(now.exact.begin(), now.exact.end(), known.exact.begin(), isSame);
        if (isFirst || !isThere) {
            const double metres = distanceBetween(now.metres, known.metres);
            now.moves = known.moves + (isFirst ? 0 : 1);
            known = now;
            moves.push_back({&known, isFirst, metres});
        }
    }
    return moves;
}
