#include "commands/convert/SplitSink.h"

#include "forms/TimeStamp.h"

#include <algorithm>

namespace {

// As such files are commonly called.
std::string extensionOf(InputForm form)
{
    const std::string name = nameOf(form);
    return form == InputForm::stream ? ".rtcm2" : name == "aivdm" ? ".nmea" : "." + name;
}

// "2026-11-23T14"
std::string hourText(std::int64_t microseconds)
{
    return ::timeText(microseconds).substr(0, std::string_view("2026-11-23T14").size());
}

std::string numberedHour(std::int64_t number)
{
    const std::string digits = std::to_string(number);
    return "hour-" + std::string(3 - std::min<std::size_t>(digits.size(), 3), '0') + digits;
}

}    // namespace

SplitSink::SplitSink(OutputFiles& outputs, const FormatModel& model,
                     const SplitOptions& splitOptions, std::uint64_t& messages)
    : files(outputs), options(splitOptions), prototype(nowhere, options.copy),
      clock(model, options.date), written(messages)
{
}

void SplitSink::take(const Found& found)
{
    if (!counts(found)) {
        prototype.take(found);    // which may say why it does not count
        return;
    }
    const std::string name = nameOf(found) + extensionOf(options.copy.form);
    Output& file = files.file(name);
    const auto part = parts.try_emplace(name, file, options.copy).first;
    part->second.take(found);
    ++written;
}

std::string SplitSink::nameOf(const Found& found)
{
    const framing::Header header = framing::headerOf(found.bytes);
    switch (options.by) {
    case SplitBy::station:
        return "station-" + std::to_string(header.station);
    case SplitBy::type:
        return "type-" + std::to_string(header.type);
    case SplitBy::hour:
        return hourOf(header, *found.envelope);
    case SplitBy::mmsi:
        break;
    }
    return found.envelope->sender ? "mmsi-" + std::to_string(found.envelope->sender->mmsi)
                                  : "mmsi-none";
}

std::string SplitSink::hourOf(const framing::Header& header, const Envelope& envelope)
{
    if (envelope.received) {
        receivedHour = hourText(*envelope.received);
    }
    if (!receivedHour.empty()) {
        return receivedHour;
    }
    const std::optional<std::int64_t> time = clock.read(header, envelope);
    if (!time) {
        return "hour-unknown";
    }
    return options.date ? hourText(*time)
                        : numberedHour(std::max<std::int64_t>(*time, 0) / HourClock::hour);
}
