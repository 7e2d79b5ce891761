// Fills an index with what a session finds.
#pragma once

#include "viewer/document/MessageIndex.h"

#include "format/BriefLine.h"
#include "session/HourClock.h"
#include "session/Sink.h"

#include <vector>

class IndexSink : public Sink {
public:
    // Null where nobody asks for the times.
    IndexSink(const FormatModel& model, MessageIndex& filled, ReceiveTimes* receiveTimes);

    void take(const Found& found) override;
    bool isDone() const override { return full; }

private:
    void readRecord(IndexEntry& entry, const Found& found) const;
    void readHeader(IndexEntry& entry, const Found& found);

    MessageIndex& index;
    ReceiveTimes* times;
    std::vector<BriefLine> lines;    // by the number of the kind
    HourClock clock;
    bool full = false;
};
