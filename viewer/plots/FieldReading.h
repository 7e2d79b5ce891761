// Reads the messages of some kinds in a stretch of a document again.
#pragma once

#include "viewer/document/Input.h"
#include "viewer/plots/IndexTimes.h"

#include "format/FormatModel.h"

#include <atomic>
#include <functional>
#include <string>
#include <vector>

// What is read, and from where. It outlives its reading.
struct FieldReading {
    const FormatModel& format;
    Input input;    // a file
    const MessageIndex& index;
    IndexTimes times;
    std::vector<const KindModel*> kinds;
    Range range;             // of time
    std::size_t from = 0;    // place of the index to begin with

    using Take = std::function<void(const Found& found, std::size_t place, double seconds)>;
    using Stop = std::function<bool()>;

    // What went wrong, for people; empty where nothing did. `done` becomes the share of it that was
    // read, from 0 to 1.
    std::string read(const Take& take, const Stop& isAskedToStop, std::atomic<double>& done) const;
};
