// Writes the messages of a session again, each to the file of the station, type, hour or sender
// that it belongs to.
#pragma once

#include "base/OutputFiles.h"
#include "export/CopySink.h"
#include "session/HourClock.h"

#include <map>
#include <string>

enum class SplitBy { station, type, hour, mmsi };

struct SplitOptions {
    SplitBy by = SplitBy::station;
    CopyOptions copy{};
    std::optional<std::int64_t> date{};    // near which the first input begins
};

// Every file is an output of its own, from its first byte on. The hour is that of the receipt of a
// message or, where that is not known, of the time that it carries, which is followed through all
// inputs; without a date, hours are numbered from the first one.
class SplitSink : public Sink {
public:
    // Everything given must outlive the sink. The caller closes the files; `messages` are those in
    // them.
    SplitSink(OutputFiles& outputs, const FormatModel& model, const SplitOptions& splitOptions,
              std::uint64_t& messages);

    bool counts(const Found& found) const override { return prototype.counts(found); }
    void take(const Found& found) override;
    void pause() override { files.flush(); }
    bool isDone() const override { return files.failed(); }
    bool writesAlong() const override { return false; }

private:
    std::string nameOf(const Found& found);
    std::string hourOf(const framing::Header& header, const Envelope& envelope);

    OutputFiles& files;
    SplitOptions options;
    Output nowhere;    // nothing is written to it
    CopySink prototype;
    HourClock clock;
    std::string receivedHour;    // of the last message that tells it
    std::map<std::string, CopySink> parts;
    std::uint64_t& written;
};
