#include "check/Counters.h"

#include "framing/Header.h"

std::uint64_t Counters::Station::fitsOfSystems() const
{
    std::uint64_t sum = 0;
    for (const auto& [system, track] : systems) {
        sum += track.fits();
    }
    return sum;
}

// A message of unknown system belongs to the system that expects its number.
std::uint32_t Counters::systemFor(const Station& station, std::uint32_t system,
                                  const Heard& heard) const
{
    if (system != unknown || station.next.empty()) {
        return system;
    }
    for (const auto& [known, number] : station.next) {
        if (number == heard.sequence) {
            return known;
        }
    }
    return station.next.begin()->first;
}

void Counters::add(const StationId& id, std::uint32_t system, const Heard& heard)
{
    all.add(heard);
    Station& station = stations[id];
    station.whole.add(heard);
    const std::uint32_t own = systemFor(station, system, heard);
    station.systems[own].add(heard);
    station.next[own] = (heard.sequence + 1) % framing::sequenceNumbers;
}

void Counters::restart(const StationId& id)
{
    all.restart();
    Station& station = stations[id];
    station.whole.restart();
    for (auto& [system, track] : station.systems) {
        track.restart();
    }
}

void Counters::settle()
{
    all.settle();
    for (auto& [id, station] : stations) {
        station.whole.settle();
        for (auto& [system, track] : station.systems) {
            track.settle();
        }
    }
}

std::vector<Counters::Counted> Counters::chosen()
{
    std::vector<Counted> counted;
    std::uint64_t fits = 0;
    for (auto& [id, station] : stations) {
        if (!station.countsSystems()) {
            counted.push_back({&station.whole, id});
        } else {
            for (auto& [system, track] : station.systems) {
                counted.push_back({&track, id, system});
            }
        }
        fits += std::max(station.whole.fits(), station.fitsOfSystems());
    }
    return all.fits() > fits ? std::vector<Counted>{{&all}} : counted;
}
