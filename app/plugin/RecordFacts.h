// Reads facts of messages from the codec's records, through the table of members.
#pragma once

#include "RTCM2_format.h"
#include "plugin/MessageFacts.h"

#include <vector>

class RecordFacts : public MessageFactsReader {
public:
    RecordFacts(const FieldParts& parts, std::span<const KindModel* const> models);

    const MessageFacts* read(std::span<const std::uint8_t> packed) override;

private:
    // Where a kind keeps what is counted; null where it has no such member.
    struct Kind {
        const KindModel* model = nullptr;    // null for kinds that are not wanted
        const RTCM2_member_s* station = nullptr;
        const RTCM2_member_s* time = nullptr;
        const RTCM2_member_s* text = nullptr;
        const RTCM2_member_s* elements = nullptr;     // sub-records that name satellites
        const RTCM2_member_s* satellite = nullptr;    // in the elements
        const RTCM2_member_s* system = nullptr;       // in the elements
    };

    static Kind kindOf(const RTCM2_kind_s& row, const FieldParts& parts);
    void readFacts(const Kind& kind);
    void readSatellites(const Kind& kind);

    RTCM2_message_s message;
    std::vector<Kind> kinds;    // by kind value
    MessageFacts facts;
};
