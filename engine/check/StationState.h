// What a station says of itself and of the satellites that it sees.
#pragma once

#include "base/Geodesy.h"
#include "check/Finding.h"
#include "format/MessageTime.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

// A satellite in a station's messages. It is away when nothing is said of it for several times as
// long as usual.
struct SatelliteState {
    std::string name;    // "G05"
    std::uint64_t times = 0;
    std::int64_t first = 0;    // units of the input's clock
    std::int64_t last = 0;
    Place firstPlace{};
    Place lastPlace{};
    std::uint64_t returns = 0;
    struct Issue {
        std::int64_t value = 0;
        std::uint64_t changes = 0;
    };
    std::map<const RTCM2_member_s*, Issue> issues{};    // of its data, as each field has it
    std::uint64_t issueChanges = 0;                     // as the field has it that changed most
    Place lastChange{};

    bool isAway(std::int64_t now, std::int64_t shortest) const;
};

struct HealthState {
    std::int64_t value = 0;
    Place since{};
};

// Where a point is that messages of a kind tell.
struct PointState {
    const RTCM2_point_s* point = nullptr;
    std::array<RTCM2_decimal_s, 3> exact{};
    Cartesian metres{};
    std::uint64_t moves = 0;
    Place since{};
};

// Kind of message, index of its system (each has a frame of its own), index of the point.
using PointKey = std::array<std::size_t, 3>;

// What of a kind of record is looked at; null where it has none.
struct CheckedFields {
    explicit CheckedFields(const KindModel& kind);

    const FieldModel* satellite;    // a quantity
    const FieldModel* issue;
    const FieldModel* accuracy;
    std::vector<const FieldModel*> elements;    // of satellites
};

class StationState {
public:
    // `shortestAbsence`: a satellite is not away before so many units have passed.
    explicit StationState(std::int64_t shortestAbsence) : shortest(shortestAbsence) {}

    // The value of a health field and its alarms. Whether it is another one than before.
    bool addHealth(std::int64_t value, const Place& place);
    void addRecord(const CheckedFields& fields, const KindModel& kind, const void* record,
                   std::int64_t time, const Place& place);
    // The points of the record that are not where they were or were not heard of before, each with
    // how far it moved in metres.
    struct Move {
        const PointState* point;
        bool isFirst;
        double metres;
    };
    std::vector<Move> addPoints(const KindModel& kind, const void* record, const Place& place);

    std::uint64_t messages = 0;
    Place lastPlace{};
    const std::vector<HealthState>& health() const { return healthStates; }
    std::uint64_t healthChanges() const { return changesOfHealth; }
    // By system and number.
    const std::map<std::pair<std::uint32_t, std::int64_t>, SatelliteState>& satellites() const
    {
        return seen;
    }
    const std::map<PointKey, PointState>& points() const { return places; }
    // How often each class was seen, by the kind of message.
    struct Accuracy {
        const FieldModel* field = nullptr;
        std::map<std::int64_t, std::uint64_t> classes{};
    };
    const std::map<const KindModel*, Accuracy>& accuracies() const { return accuracy; }
    // Whether it was not there from the beginning.
    bool isLate(const SatelliteState& satellite) const
    {
        return satellite.first - begin > shortest;
    }
    bool isAway(const SatelliteState& satellite, std::int64_t now) const
    {
        return satellite.isAway(now, shortest);
    }

private:
    void addSatellite(const CheckedFields& fields, const void* record, std::int64_t time,
                      const Place& place);
    static void addIssue(SatelliteState& satellite, const FieldModel& field, const void* record,
                         const Place& place);

    std::int64_t shortest;
    std::int64_t begin = 0;                   // time of the first satellite
    std::vector<HealthState> healthStates;    // the first ones and the last
    std::uint64_t changesOfHealth = 0;
    std::map<std::pair<std::uint32_t, std::int64_t>, SatelliteState> seen;
    std::map<PointKey, PointState> places;
    std::map<const KindModel*, Accuracy> accuracy;
};
