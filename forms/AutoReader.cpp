#include "forms/AutoReader.h"

#include <algorithm>
#include <cassert>

void AutoReader::push(std::span<const std::uint8_t> bytes)
{
    assert(pending.empty() && "bytes pushed before are still unread");
    pending = bytes;
}

const framing::Frame* AutoReader::next()
{
    if (detector) {
        look();
    }
    if (!chosen) {
        if (!detector) {
            bytesUnread += pending.size();
            pending = {};
        }
        return nullptr;
    }
    const framing::Frame* frame = chosen->next();
    if (frame == nullptr && !pending.empty()) {
        // What was seen has been read, or had been before.
        seen = {};
        chosen->push(pending);
        pending = {};
        frame = chosen->next();
    }
    if (frame == nullptr && finished) {
        chosen->finish();
        frame = chosen->next();
    }
    return frame;
}

void AutoReader::look()
{
    const std::size_t count = std::min(pending.size(), longestLook - seen.size());
    seen.insert(seen.end(), pending.begin(), pending.begin() + static_cast<std::ptrdiff_t>(count));
    pending = pending.subspan(count);
    detector->look(seen);
    if (detector->winner() == nullptr && finished && pending.empty()) {
        detector->finish();
        conclude();
    } else if (detector->winner() != nullptr || seen.size() == longestLook) {
        conclude();
    }
}

// All that was to be seen has been.
void AutoReader::conclude()
{
    detector->decide();
    if (const Witness* const winner = detector->winner()) {
        choose(*winner);
    } else {
        problemText = detector->problem();
        bytesUnread = seen.size();
        seen = {};
    }
    detector.reset();
}

void AutoReader::choose(const Witness& witness)
{
    chosen = witness.makeReader();
    sureness = witness.vouches() ? Certainty::vouched : Certainty::likely;
    chosen->push(std::span(seen).subspan(witness.bytesBefore()));
}

std::span<const std::uint8_t> AutoReader::recorded() const
{
    return chosen ? chosen->recorded() : std::span<const std::uint8_t>();
}

ReaderCounters AutoReader::counters() const
{
    ReaderCounters counters;
    if (chosen) {
        counters = chosen->counters();
    } else {
        counters.bytesRead = detector ? seen.size() : bytesUnread;
    }
    counters.bytesRead += pending.size();
    counters.certainty = sureness;
    return counters;
}
