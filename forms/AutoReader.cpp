#include "forms/AutoReader.h"

#include <cassert>

void AutoReader::push(std::span<const std::uint8_t> bytes)
{
    assert(pending.empty() && "bytes pushed before are still unread");
    pending = bytes;
}

const framing::Frame* AutoReader::next()
{
    if (search && !chosen) {
        look();
    }
    if (!chosen) {
        if (!search) {
            bytesUnread += pending.size();
            pending = {};
        }
        return nullptr;
    }
    const framing::Frame* frame = chosen->next();
    if (frame == nullptr && !pending.empty()) {
        // What was seen has been read, or had been before.
        search.reset();
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
    pending = search->look(pending);
    if (!search->isDone() && finished) {
        search->finish();
    }
    if (search->isDone()) {
        conclude();
    }
}

// All that was to be seen has been.
void AutoReader::conclude()
{
    certainty = search->certainty();
    if (const Witness* const winner = search->winner()) {
        const std::uint64_t before = winner->bytesBefore();
        chosen = winner->makeReader(before);
        chosen->push(search->seen().subspan(before));
    } else {
        problemText = search->problem();
        bytesUnread = search->seen().size();
        search.reset();
    }
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
        counters.bytesRead = search ? search->seen().size() : bytesUnread;
    }
    counters.bytesRead += pending.size();
    counters.certainty = certainty;
    return counters;
}
