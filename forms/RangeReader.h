// The messages that begin in a range of an input's bytes.
#pragma once

#include "forms/FormSearch.h"
#include "forms/InputForm.h"

#include <cstdint>
#include <memory>

struct ByteRange {
    std::uint64_t begin = 0;
    std::uint64_t end = UINT64_MAX;    // one past the last byte
    std::uint64_t firstNumber = 1;     // of the first message, or what else is found, in it

    bool has(std::uint64_t byte) const { return byte >= begin && byte < end; }
};

// Which messages there are depends on what stands before them. So it begins to read a good way
// before its range, that all ranges together give what the whole input does: each frame, also a
// damaged or truncated one, belongs to the range in which its first byte stands. It reads on behind
// the range until that is certain of all of them. Numbers count in the range,
// from the one that it names, and bytes in the input.
//
// A packed message can be found by its preamble alone. A reader that begins in the middle takes
// other bytes for messages at first, but what it takes wrongly does not fit together for long,
// unless the input repeats itself byte by byte.
class RangeReader : public PacketReader {
public:
    // Of an input of this form.
    RangeReader(InputForm form, const ByteRange& bytes);
    // Of an input whose form was looked for at its beginning.
    RangeReader(const FormSearch& search, const ByteRange& bytes);

    // The byte of the input from which on its bytes have to be pushed.
    std::uint64_t firstByte() const { return first; }

    void push(std::span<const std::uint8_t> bytes) override;
    void finish() override;
    const framing::Frame* next() override;
    std::string damage() const override { return reader->damage(); }
    std::span<const std::uint8_t> recorded() const override { return reader->recorded(); }
    std::vector<framing::WordFacts> words() const override { return reader->words(); }
    const Envelope* envelope() const override { return reader->envelope(); }
    std::uint64_t doneUpTo() const override { return reader ? reader->doneUpTo() : range.end; }
    bool isComplete() const override { return doneUpTo() >= range.end; }
    ReaderCounters counters() const override;
    std::string problem() const override { return problemText; }

private:
    void count(const framing::Frame& seen);

    ByteRange range;
    std::uint64_t first;
    std::unique_ptr<PacketReader> reader;    // null where the form was not found
    Certainty certainty;
    std::string problemText;
    std::uint64_t pushedUpTo;        // of the input
    std::uint64_t messagesUpTo;      // where the last message ended
    std::uint64_t inMessages = 0;    // bytes of the range
    std::uint64_t found = 0;         // in the range
    framing::Frame frame;
};
