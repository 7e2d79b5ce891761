#include "viewer/document/IndexSink.h"

#include "viewer/document/BriefLines.h"

#include "framing/Header.h"

#include <algorithm>

namespace {

template <class Stored>
Stored storedOr(const std::optional<std::uint64_t>& value, Stored none)
{
    return value ? static_cast<Stored>(std::min<std::uint64_t>(*value, none)) : none;
}

}    // namespace

IndexSink::IndexSink(const FormatModel& model, MessageIndex& filled, ReceiveTimes* receiveTimes)
    : index(filled), times(receiveTimes), lines(briefLines(model)), clock(model)
{
}

void IndexSink::take(const Found& found)
{
    constexpr std::uint64_t longest = UINT32_MAX;
    IndexEntry entry{.begin = found.begin & ((std::uint64_t{1} << 48) - 1),
                     .what = static_cast<std::uint8_t>(found.what),
                     .isShort = found.isShort,
                     .sent = IndexEntry::notSent,
                     .size = static_cast<std::uint32_t>(std::min(found.end - found.begin, longest)),
                     .time = IndexEntry::noTime,
                     .mmsi = found.envelope->sender ? found.envelope->sender->mmsi : 0,
                     .station = IndexEntry::none,
                     .type = IndexEntry::none};
    if (found.hasRecord()) {
        readRecord(entry, found);
    }
    if (found.hasRecord() || found.what == Found::What::misfit) {
        readHeader(entry, found);
    }
    full = !index.append(entry);
    if (times != nullptr) {
        times->append(found.envelope->received.value_or(0));
    }
}

void IndexSink::readRecord(IndexEntry& entry, const Found& found) const
{
    const BriefLine& line = lines[found.kind->number()];
    entry.time = storedOr(line.time(found.record), IndexEntry::noTime);
    entry.station = storedOr(line.station(found.record), IndexEntry::none);
    entry.type = storedOr(line.type(found.record), IndexEntry::none);
}

// What does not fit has a header all the same.
void IndexSink::readHeader(IndexEntry& entry, const Found& found)
{
    if (found.bytes.size() < framing::headerBytes) {
        return;
    }
    const framing::Header header = framing::headerOf(found.bytes);
    entry.sent = clock.read(header, *found.envelope).value_or(IndexEntry::notSent);
    if (!found.hasRecord()) {
        entry.station = static_cast<std::uint16_t>(header.station);
        entry.type = static_cast<std::uint16_t>(header.type);
    }
}
