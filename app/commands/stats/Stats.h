// What is counted in the messages of an input.
#pragma once

#include "format/MessageTime.h"
#include "session/StationId.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

// A map with room for `capacity` keys and one value for all other keys together.
template <class Map, std::size_t capacity>
struct Bounded {
    using Key = typename Map::key_type;
    using Value = typename Map::mapped_type;

    Map values;
    Value others{};

    // The key's own value, or the one for all others.
    Value& of(const Key& key)
    {
        const auto known = values.find(key);
        if (known != values.end()) {
            return known->second;
        }
        return values.size() < capacity ? values[key] : others;
    }

    Bounded& operator+=(const Bounded& more)
    {
        for (const auto& [key, value] : more.values) {
            of(key) += value;
        }
        others += more.others;
        return *this;
    }

    // The greatest values first, equal ones by key.
    std::vector<std::pair<Key, Value>> sorted() const
    {
        std::vector<std::pair<Key, Value>> entries(values.begin(), values.end());
        std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
            return a.second != b.second ? a.second > b.second : a.first < b.first;
        });
        return entries;
    }
};

// How often something occurred.
template <class Key, std::size_t capacity = 1000>
using Counts = Bounded<std::unordered_map<Key, std::uint64_t>, capacity>;

// A station, and the system that its messages belong to, as MessageSystem tells it.
struct Sender {
    StationId station{};
    std::uint32_t system = 0;

    auto operator<=>(const Sender&) const = default;
};

// The messages of a kind from one sender, and the time field through them.
struct StationStats {
    std::uint64_t messages = 0;
    std::optional<std::uint64_t> first;
    std::uint64_t last = 0;    // where there is a first
    // From the first to the last message, in units of the field. A step of less than half a wrap
    // backwards counts as such; of longer gaps only what is left after whole wraps is known.
    std::int64_t elapsed = 0;
    std::uint64_t steps = 0;    // from a message to the next one in this time

    // The time of the next message. At `wrap` the field starts again from 0; larger times are left
    // out.
    void addTime(std::uint64_t time, std::uint64_t wrap);
    // Goes on with the messages of another input; what lies between the two is unknown.
    StationStats& operator+=(const StationStats& later);
};

// How often each satellite of a kind of message was seen.
class SatelliteCounts {
public:
    static constexpr std::uint64_t maxSystems = 4;
    static constexpr std::uint64_t maxSatellites = 256;

    struct Seen {
        std::uint64_t system;
        std::uint64_t satellite;
        std::uint64_t times;
    };

    void add(const Seen& seen)
    {
        const std::uint64_t place = seen.system * maxSatellites + seen.satellite;
        if (seen.satellite < maxSatellites && place < counts.size()) [[likely]] {
            counts[place] += seen.times;
        } else {
            addNew(seen);
        }
    }
    SatelliteCounts& operator+=(const SatelliteCounts& more);

    // By system and satellite.
    std::vector<Seen> sorted() const;
    // Sightings with larger numbers than there is room for.
    std::uint64_t others() const { return beyond; }

private:
    void addNew(const Seen& seen);

    std::vector<std::uint64_t> counts;    // maxSatellites for each system up to the last one seen
    std::uint64_t beyond = 0;
};

struct KindStats {
    std::uint64_t messages = 0;
    // Messages without a station are among the others.
    Bounded<std::map<Sender, StationStats>, 4096> stations;
    SatelliteCounts satellites;

    KindStats& operator+=(const KindStats& later);

    // By station and system; the others, if there are any, last and without either.
    std::vector<std::pair<std::optional<Sender>, StationStats>> allStations() const;
};

// By type number and name.
struct KindOrder {
    bool operator()(const KindModel* a, const KindModel* b) const;
};

struct Stats {
    std::uint64_t messages = 0;      // that passed the filter
    std::uint64_t unreported = 0;    // of kinds that are reported to nobody
    std::uint64_t unknown = 0;       // of no known type
    std::uint64_t misfit = 0;        // of known types, but with content that does not fit
    std::uint64_t shortened = 0;     // of those that passed, what has fewer words than it declares
    std::uint64_t damaged = 0;
    std::uint64_t truncated = 0;
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesSkipped = 0;

    std::map<const KindModel*, KindStats, KindOrder> kinds;    // of which there are messages
    Counts<std::string, 200> texts;                            // bytes of the messages
    Counts<int> unreportedTypes;
    Counts<int> unknownTypes;
    Counts<std::string> events;

    Stats& operator+=(const Stats& later);
    // Whether some messages came by AIS.
    bool haveSenders() const;
};

// The plain numbers and what they are called in JSON and for people, in the order of both.
struct NamedNumber {
    std::uint64_t Stats::*number;
    const char* key;
    const char* words;
};
inline constexpr NamedNumber namedNumbers[] = {
    {&Stats::messages, "messages", "messages"},
    {&Stats::unreported, "unreported", "decoded, but of kinds that are not reported"},
    {&Stats::unknown, "unknown_type", "of unknown type"},
    {&Stats::misfit, "misfit", "with content that does not fit their type"},
    {&Stats::shortened, "short", "shorter than they say"},
    {&Stats::damaged, "damaged", "damaged"},
    {&Stats::truncated, "truncated", "truncated"},
    {&Stats::bytesRead, "bytes_read", "bytes read"},
    {&Stats::bytesSkipped, "bytes_skipped", "bytes skipped"},
};
