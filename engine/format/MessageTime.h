// When messages were sent, and in the time of which system of satellites.
#pragma once

#include "format/FormatModel.h"

// The time that messages of a kind carry: a number of units that starts again from 0, as the hour
// does. Messages of different systems count in different times, which are not to be compared.
struct MessageTime {
    const FieldModel* field = nullptr;    // null: they carry none that is known in seconds
    double secondsPerUnit = 1;
    std::uint64_t wrap = 0;    // units; larger numbers are no times

    std::uint64_t of(const void* record) const
    {
        return static_cast<std::uint64_t>(RTCM2_reader_integer(&field->reader, record, 0));
    }
};

MessageTime timeOf(const KindModel& kind);

// Tells which of the format's systems messages of a kind belong to, as an index from 0.
class MessageSystem {
public:
    explicit MessageSystem(const KindModel& kind);

    // RTCM2_system_count() where it is unknown.
    std::uint32_t of(const void* record) const
    {
        return isAlwaysThis ? index : indexOf(RTCM2_system_of(record));
    }

private:
    static std::uint32_t indexOf(const RTCM2_system_s* system);

    bool isAlwaysThis;
    std::uint32_t index;
};

// The system of an index; null for an unknown one.
inline const RTCM2_system_s* systemAt(std::uint32_t index)
{
    return RTCM2_system(static_cast<std::int32_t>(index));
}
