// What is counted in the messages of an input.
#pragma once

#include "format/FormatModel.h"
#include "forms/PacketReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

// Counts occurrences of at most `capacity` different keys; all others together.
template <class Key>
class BoundedCounts {
public:
    explicit BoundedCounts(std::size_t keys = 1000) : capacity(keys) {}

    void add(const Key& key, std::uint64_t times = 1)
    {
        const auto known = counts.find(key);
        if (known != counts.end()) {
            known->second += times;
        } else if (counts.size() < capacity) {
            counts.emplace(key, times);
        } else {
            beyond += times;
        }
    }

    void add(const BoundedCounts& more)
    {
        for (const auto& [key, times] : more.counts) {
            add(key, times);
        }
        beyond += more.beyond;
    }

    // The most frequent first, equally frequent ones by key.
    std::vector<std::pair<Key, std::uint64_t>> sorted() const
    {
        std::vector<std::pair<Key, std::uint64_t>> entries(counts.begin(), counts.end());
        std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
            return a.second != b.second ? a.second > b.second : a.first < b.first;
        });
        return entries;
    }

    // Occurrences of keys for which there was no room.
    std::uint64_t others() const { return beyond; }
    bool isEmpty() const { return counts.empty() && beyond == 0; }

private:
    std::size_t capacity;
    std::unordered_map<Key, std::uint64_t> counts;
    std::uint64_t beyond = 0;
};

// The time field through a row of messages.
class TimeSpan {
public:
    // `wrap` is where the field starts again from 0; 0 if it never does. Larger times are left out.
    void add(std::uint64_t time, std::uint64_t wrap);
    // Goes on with the messages of another input; what lies between the two is unknown.
    void add(const TimeSpan& later);

    std::optional<std::uint64_t> first() const { return firstTime; }
    std::optional<std::uint64_t> last() const { return lastTime; }
    // From the first to the last message, in units of the field. A step of less than half a wrap
    // backwards counts as such; of longer gaps only what is left after whole wraps is known.
    std::int64_t elapsed() const { return units; }
    // Steps from a message to the next one in this time.
    std::uint64_t steps() const { return stepCount; }

private:
    std::optional<std::uint64_t> firstTime;
    std::optional<std::uint64_t> lastTime;
    std::int64_t units = 0;
    std::uint64_t stepCount = 0;
};

struct StationStats {
    std::uint64_t messages = 0;
    TimeSpan time;

    void add(const StationStats& later);
};

// How often each satellite of a kind of message was seen.
class SatelliteCounts {
public:
    static constexpr std::size_t maxSystems = 4;
    static constexpr std::size_t maxSatellites = 256;

    void add(std::uint64_t system, std::uint64_t satellite, std::uint64_t times = 1);
    void add(const SatelliteCounts& more);

    // Calls back with system, satellite and count, in order.
    template <class Function>
    void forEach(Function function) const
    {
        for (std::size_t system = 0; system < counts.size(); ++system) {
            for (std::size_t satellite = 0; satellite < maxSatellites; ++satellite) {
                if (counts[system][satellite] != 0) {
                    function(system, satellite, counts[system][satellite]);
                }
            }
        }
    }

    // Sightings with larger numbers than there is room for.
    std::uint64_t others() const { return beyond; }

private:
    std::vector<std::array<std::uint64_t, maxSatellites>> counts;    // as many systems as seen
    std::uint64_t beyond = 0;
};

struct KindStats {
    static constexpr std::size_t maxStations = 4096;

    std::uint64_t messages = 0;
    std::map<std::uint64_t, StationStats> stations;
    StationStats otherStations;    // without a station, or of more than there is room for
    SatelliteCounts satellites;

    // The station's own entry, or the one for all others.
    StationStats& of(std::uint64_t station);
    void add(const KindStats& later);
};

struct Stats {
    static constexpr std::size_t maxTexts = 200;

    std::string input;    // empty for the total of several
    std::string form;     // of the input; empty where it is not known, and for the total
    ReaderCounters read;

    std::uint64_t messages = 0;      // that passed the filter
    std::uint64_t unreported = 0;    // of kinds that are reported to nobody
    std::uint64_t damaged = 0;
    std::uint64_t truncated = 0;
    std::uint64_t unknown = 0;    // of no known type
    std::uint64_t misfit = 0;     // of known types, but with content that does not fit

    std::map<const KindModel*, KindStats> kinds;
    BoundedCounts<std::string> texts{maxTexts};    // bytes of the messages
    BoundedCounts<std::string> events;
    BoundedCounts<int> unreportedTypes;
    BoundedCounts<int> unknownTypes;

    void add(const Stats& later);

    // The kinds of which there are messages, by type number and name.
    std::vector<const KindModel*> sortedKinds() const;
};
