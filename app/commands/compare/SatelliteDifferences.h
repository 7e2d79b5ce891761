// How the corrections of satellites differ between two inputs.
#pragma once

#include "commands/compare/MessageStore.h"
#include "format/FormatModel.h"

#include <map>
#include <string>
#include <vector>

// Mean, spread and largest amount of numbers that are not kept.
struct Spread {
    std::uint64_t count = 0;
    double mean = 0;
    double squares = 0;    // of the distances from the mean
    double largest = 0;    // amount

    void add(double number);
    double deviation() const;    // standard deviation; 0 of a single number
};

// Numbers of the satellites of one group, by the field that tells them.
struct SatelliteSpread {
    std::vector<Spread> fields;       // as many as the group's plan has
    std::uint64_t otherIssues = 0;    // times the two were for different data of the satellite
};

class SatelliteDifferences {
public:
    // The corrections and rates in the elements of a kind, with what they are known by.
    struct Plan {
        const FieldModel* elements = nullptr;
        const FieldModel* satellite = nullptr;
        const FieldModel* issue = nullptr;    // null where there is none
        std::vector<const FieldModel*> quantities{};
    };
    struct System {
        std::map<std::int64_t, SatelliteSpread> satellites;    // by number
        std::vector<Spread> common;    // what was the same for all of them, by field
        std::uint64_t alone = 0;       // differences of a satellite that was the only one
    };
    using Key = std::pair<MessageGroup, const RTCM2_system_s*>;    // of the satellites, or null

    explicit SatelliteDifferences(const FormatModel& model);

    // The name of a satellite of a group.
    std::string nameOf(const Key& key, std::int64_t satellite) const;

    // Null for a type without corrections.
    const Plan* planOf(unsigned type) const;

    // Two messages of one group and time, which come group by group.
    void add(const StoredMessage& message, const void* inA, const void* inB);
    // After the last one.
    void finish();

    const std::map<Key, System>& systems() const { return found; }

private:
    struct Sample {
        const RTCM2_system_s* system = nullptr;
        std::int64_t satellite = 0;
        std::int64_t issue = 0;
        std::size_t values = 0;    // where they begin among all
    };
    // What the messages of one input tell at one time.
    struct Epoch {
        std::vector<Sample> samples;
        std::vector<double> values;    // no number where there is none
    };
    struct Difference {
        std::int64_t satellite;
        double value;
    };

    static Plan planOf(const KindModel& kind);
    static void read(const Plan& plan, const void* record, Epoch& epoch);
    void compareSystem(std::span<const Sample> inA, std::span<const Sample> inB);
    void compareSatellite(SatelliteSpread& satellite, const Sample& inA, const Sample& inB);
    static double medianOf(const std::vector<Difference>& all);
    static void addDifferences(System& system, const std::vector<Difference>& all,
                               std::size_t field);

    std::map<unsigned, Plan> plans;    // by type
    std::map<Key, System> found;
    MessageGroup group;    // of the epoch in work
    std::uint16_t time = 0;
    Epoch a;
    Epoch b;
    std::vector<std::vector<Difference>> differences;    // of the system in work, by field
};
