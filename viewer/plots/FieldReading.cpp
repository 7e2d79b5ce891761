#include "viewer/plots/FieldReading.h"

#include "viewer/plots/EntryFinder.h"

#include "filter/MessageFilter.h"
#include "plugin/Decoding.h"
#include "session/Session.h"
#include "session/SwitchKinds.h"

#include <algorithm>

namespace {

class TimedSink : public Sink {
public:
    TimedSink(const FieldReading& whatIsRead, const IndexTimes::Places& places,
              const FieldReading::Take& taker)
        : reading(whatIsRead), finder(reading.index, places.from, places.until), taken(taker)
    {
    }

    void take(const Found& found) override
    {
        const auto place = found.hasRecord() ? finder.placeOf(found) : std::nullopt;
        const auto seconds = place ? reading.times.timeAt(*place) : std::nullopt;
        if (seconds && *seconds >= reading.range.low && *seconds <= reading.range.high) {
            taken(found, *place, *seconds);
        }
    }

private:
    const FieldReading& reading;
    EntryFinder finder;
    const FieldReading::Take& taken;
};

ByteRange bytesOf(const MessageIndex& index, const IndexTimes::Places& places)
{
    ByteRange bytes{.begin = UINT64_MAX, .end = 0};
    for (std::size_t place = places.from; place < places.until; ++place) {
        bytes.begin = std::min<std::uint64_t>(bytes.begin, index[place].begin);
        bytes.end = std::max<std::uint64_t>(bytes.end, index[place].begin + 1);
    }
    return bytes;
}

MessageFilter filterFor(const FieldReading& reading)
{
    FilterOptions options;
    for (const KindModel* kind : reading.kinds) {
        options.kinds.push_back(kind->name);
    }
    return {reading.format, options};
}

}    // namespace

std::string FieldReading::read(const Take& take, const Stop& isAskedToStop,
                               std::atomic<double>& done) const
{
    done = 0;
    const IndexTimes::Places places = times.placesIn(range, from);
    if (places.from >= places.until || kinds.empty()) {
        return {};
    }
    const ByteRange bytes = bytesOf(index, places);
    const MessageFilter filter = filterFor(*this);
    Decoding decoding;
    switchKinds(*decoding.decoder, format, filter);
    Session session(format, decoding.driver, filter, {.form = input.form, .range = bytes});
    std::string problem;
    double readSoFar = 0;
    SessionOptions options{.onError = OnError::skip, .mode = input.mode};
    options.tell = [&problem](const std::string& text) { problem = text; };
    options.isAskedToEnd = isAskedToStop;
    options.keep = [&](std::span<const std::uint8_t> some) {
        readSoFar += static_cast<double>(some.size());
        done = std::min(1.0, readSoFar / static_cast<double>(bytes.end - bytes.begin));
    };
    TimedSink sink(*this, places, take);
    session.run({input.name}, options, sink);
    return problem;
}
