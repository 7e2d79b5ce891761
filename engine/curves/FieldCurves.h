// How fields go through the messages of an input: a curve for each field of each thing that a key
// names, as a satellite.
#pragma once

#include "format/FieldPath.h"
#include "pictures/Curve.h"
#include "pictures/Density.h"
#include "session/StationId.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

// What of a kind of message is followed. All paths lead to the same elements, or all to fields of
// the message itself.
struct FollowedFields {
    const KindModel* kind = nullptr;
    std::vector<FieldPath> values{};    // numbers or quantities
    FieldPath key{};                    // whose values they are; of no field: of the station
    FieldPath issue{};                  // where this changes, curves break; of no field: nowhere
    std::size_t group = 0;    // kinds of the same group and station go on with the same curves
};

// The fields of one key.
struct FieldTrack {
    std::string name;    // of the key: "G05"
    std::vector<Curve> values;
    Density issueChanges;
    std::optional<std::int64_t> issue;
};

class FieldCurves {
public:
    struct Key {
        StationId station{};
        std::size_t group = 0;
        std::uint32_t system = 0;    // index; RTCM2_system_count() where it is unknown
        std::int64_t number = 0;     // the value of the key

        auto operator<=>(const Key&) const = default;
    };

    // Curves need memory, so there are no more keys than that.
    static constexpr std::size_t mostTracks = 400;

    // `bins`: of each curve.
    explicit FieldCurves(const std::vector<FollowedFields>& fields, std::size_t bins = 512);

    // A copy looks for keys in what is its own.
    FieldCurves(const FieldCurves& other)
        : byKind(other.byKind), all(other.all), binsOfCurve(other.binsOfCurve), beyond(other.beyond)
    {
    }
    FieldCurves& operator=(const FieldCurves&) = delete;

    // A record of a kind that the station sent at a time of the input's clock.
    void take(const KindModel& kind, const void* record, const StationId& station, double seconds);

    const std::map<Key, FieldTrack>& tracks() const { return all; }
    // Which of a record's elements gives the first of these fields' values for this key; 0 also
    // where the message itself does.
    static std::optional<std::size_t> elementWith(const FollowedFields& fields, const void* record,
                                                  const Key& key, double value);
    // Values of keys for which there was no room.
    std::uint64_t others() const { return beyond; }

private:
    // Nothing where the record has no key.
    static std::optional<Key> keyOf(const FollowedFields& fields, const void* record,
                                    const StationId& station);
    void takeRecord(const FollowedFields& fields, const void* record, const StationId& station,
                    double seconds);
    FieldTrack* trackOf(const FollowedFields& fields, const void* record, const Key& key);

    std::vector<std::vector<FollowedFields>> byKind;    // by the number of the kind
    using Tracks = std::map<Key, FieldTrack>;

    Tracks all;
    std::size_t binsOfCurve;
    std::array<Tracks::value_type*, 1024> recent{};    // where to look first, see trackOf()
    std::uint64_t beyond = 0;
};

// What those who look after corrections want to see of satellites: for each kind of element with a
// satellite and a correction, a rate or an accuracy, these. Elements of the same kind share a
// group, so that it does not matter in which message they come.
struct SatelliteFields {
    const KindModel* element = nullptr;
    std::vector<FieldPath> values{};          // quantities
    std::optional<std::size_t> accuracy{};    // which of the values it is
};

struct FollowedSatellites {
    std::vector<FollowedFields> fields;
    std::vector<SatelliteFields> groups;
};

FollowedSatellites satelliteFields(const FormatModel& model);
