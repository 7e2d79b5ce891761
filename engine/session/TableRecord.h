// A record that is decoded through the table, for kinds that the decoder reports to nobody.
#pragma once

#include "RTCM2_format.h"

#include <cstdint>
#include <span>

class TableRecord {
public:
    TableRecord() { message.kind = RTCM2_MESSAGE_NULL; }
    ~TableRecord() { RTCM2_free_message(&message); }
    TableRecord(const TableRecord&) = delete;
    TableRecord& operator=(const TableRecord&) = delete;

    // Takes the place of what was decoded before. The bits consumed, or a negative code; the
    // members before the one that did not fit can be read then, too, but no elements.
    std::int32_t decode(const RTCM2_kind_s& kind, std::span<const std::uint8_t> packed)
    {
        RTCM2_free_message(&message);
        std::uint32_t bit = 0;
        return RTCM2_decode_record(kind.kind, packed.data(),
                                   static_cast<std::uint16_t>(packed.size()), &bit, &message);
    }
    const void* get() const { return &message; }
    void* get() { return &message; }

private:
    RTCM2_message_s message;
};
