#include "forms/RangeReader.h"

#include <algorithm>

namespace {

// Hundreds of the longest messages: what was heard last and what stands damaged before the range
// counts there as it does in the whole input.
constexpr std::uint64_t lookBack = 1 << 16;

std::uint64_t firstByteFor(const ByteRange& range, std::uint64_t bytesBefore)
{
    return std::max(bytesBefore, range.begin - std::min(range.begin, lookBack));
}

}    // namespace

RangeReader::RangeReader(InputForm form, const ByteRange& bytes)
    : range(bytes), first(firstByteFor(bytes, 0)), reader(makeReader(form, first)),
      certainty(Certainty::given), pushedUpTo(first), messagesUpTo(range.begin)
{
}

RangeReader::RangeReader(const FormSearch& search, const ByteRange& bytes)
    : range(bytes),
      first(firstByteFor(bytes, search.winner() != nullptr ? search.winner()->bytesBefore() : 0)),
      reader(search.winner() != nullptr ? search.winner()->makeReader(first) : nullptr),
      certainty(search.certainty()), problemText(search.problem()), pushedUpTo(first),
      messagesUpTo(range.begin)
{
}

void RangeReader::push(std::span<const std::uint8_t> bytes)
{
    pushedUpTo += bytes.size();
    if (reader != nullptr) {
        reader->push(bytes);
    }
}

void RangeReader::finish()
{
    if (reader != nullptr) {
        reader->finish();
    }
}

const framing::Frame* RangeReader::next()
{
    while (const framing::Frame* const seen = reader != nullptr ? reader->next() : nullptr) {
        count(*seen);
        if (range.has(seen->beginOffset)) {
            frame = *seen;
            frame.number = range.firstNumber + found++;
            return &frame;
        }
    }
    return nullptr;
}

// Two messages may share a byte, and the first and last one reach beyond the range.
void RangeReader::count(const framing::Frame& seen)
{
    if (seen.kind != framing::Frame::Kind::message) {
        return;
    }
    const std::uint64_t begin = std::max(seen.beginOffset, messagesUpTo);
    const std::uint64_t end = std::min(seen.endOffset, range.end);
    inMessages += std::max(begin, end) - begin;
    messagesUpTo = std::max(messagesUpTo, end);
}

ReaderCounters RangeReader::counters() const
{
    const std::uint64_t end = std::clamp(pushedUpTo, range.begin, range.end);
    const std::uint64_t bytes = end - range.begin;
    return {.bytesRead = bytes,
            .bytesSkipped = bytes - std::min(bytes, inMessages),
            .form = reader != nullptr ? reader->counters().form : "",
            .certainty = certainty};
}
