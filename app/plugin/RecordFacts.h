// Reads facts of messages from the codec's records, through the table of members.
#pragma once

#include "MemberTable.h"
#include "MessageFacts.h"

#include <vector>

class RecordFacts : public MessageFactsReader {
public:
    RecordFacts(const FieldParts& parts, std::span<const KindModel* const> models);

    const MessageFacts* read(std::span<const std::uint8_t> packed) override;

private:
    // Where a kind keeps what is counted; null where it has no such member.
    struct Kind {
        const KindModel* model = nullptr;    // null for kinds that are not wanted
        const rtcm2::KindRow* row = nullptr;
        const rtcm2::MemberRow* station = nullptr;
        const rtcm2::MemberRow* time = nullptr;
        const rtcm2::MemberRow* text = nullptr;
        const rtcm2::MemberRow* elements = nullptr;     // sub-records that name satellites
        const rtcm2::MemberRow* satellite = nullptr;    // in the elements
        const rtcm2::MemberRow* system = nullptr;       // in the elements
    };

    static Kind kindOf(const rtcm2::KindRow& row, const FieldParts& parts);
    void readFacts(const Kind& kind);
    void readSatellites(const Kind& kind);

    RTCM2_message_s message;
    std::vector<Kind> kinds;    // by kind value
    MessageFacts facts;
};
