// What the list shows of each message of an input without reading it again.
#pragma once

#include "viewer/document/GrowingList.h"

#include "session/Found.h"

#include <cstdint>

// One message, or a stretch of the input that gave none; its number in the input is one more than
// its place in the index.
struct IndexEntry {
    static constexpr std::uint32_t noTime = UINT32_MAX;
    static constexpr std::uint16_t none = UINT16_MAX;
    static constexpr std::int64_t notSent = INT64_MIN;

    std::uint64_t begin : 48;    // byte of the input in which it begins
    std::uint64_t what : 8;      // a Found::What
    std::uint64_t isShort : 8;
    std::int64_t sent;        // microseconds as HourClock tells them, or notSent
    std::uint32_t size;       // bytes of the input
    std::uint32_t time;       // milliseconds of the hour, or noTime
    std::uint32_t mmsi;       // of the sender by AIS; 0 where there is none
    std::uint16_t station;    // or none
    std::uint16_t type;       // of the message, or none

    Found::What kindOfFind() const { return static_cast<Found::What>(what); }
    std::uint64_t end() const { return begin + size; }
    bool hasRecord() const
    {
        return kindOfFind() == Found::What::message || kindOfFind() == Found::What::unreported ||
               kindOfFind() == Found::What::unknownType;
    }
};
static_assert(sizeof(IndexEntry) == 32);

using MessageIndex = GrowingList<IndexEntry, std::size_t{1} << 16, 1024>;
// When each message was received, in microseconds since 1970, or 0; only of live inputs.
using ReceiveTimes = GrowingList<std::int64_t, std::size_t{1} << 16, 1024>;
// Places in an index, in their order.
using Selection = GrowingList<std::uint32_t, std::size_t{1} << 16, 1024>;

// How many of the chosen ones among the first `count` stand before a place in the index.
inline std::size_t countBefore(const Selection& chosen, std::size_t count, std::size_t place)
{
    std::size_t first = 0;
    while (count > 0) {
        const std::size_t half = count / 2;
        const bool isBefore = chosen[first + half] < place;
        first += isBefore ? half + 1 : 0;
        count = isBefore ? count - half - 1 : half;
    }
    return first;
}
