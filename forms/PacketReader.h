// One form of input: turns bytes into packed messages.
#pragma once

#include "forms/Envelope.h"
#include "framing/Framer.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

// How a reader comes to its form.
enum class Certainty : std::uint8_t {
    given,      // it was asked for
    vouched,    // parity, or lines exactly as long as they say, vouch for it
    likely,     // no other form fits, but nothing in this one would show if it were wrong
    unsure,     // not found out (yet)
};

// What a reader has seen so far; final after the last frame.
struct ReaderCounters {
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesSkipped = 0;    // bytes that belong to no good message
    const char* form = "";             // the input's form, for people; empty if not found out
    Certainty certainty = Certainty::given;    // of that form
};

// However the input is cut into pushes, the frames are the same. Memory does not grow with the
// input, and a message is delivered as soon as it is certain.
class PacketReader {
public:
    virtual ~PacketReader() = default;

    // `bytes` must stay valid until next() has returned null; only then may be pushed again.
    virtual void push(std::span<const std::uint8_t> bytes) = 0;

    // No more bytes will come; next() then delivers what was still waiting for them.
    virtual void finish() = 0;

    // The next frame, valid until the following call, or null when more bytes are needed.
    virtual const framing::Frame* next() = 0;

    // What is wrong with the current frame, if it is damaged; for people.
    virtual std::string damage() const = 0;

    // The current frame's message as a receiver recorded it, one unit of four bytes a word; empty
    // for inputs of other forms. Valid as long as the frame.
    virtual std::span<const std::uint8_t> recorded() const { return {}; }

    // The words of the current frame as they were received; none for inputs of forms without
    // parity.
    virtual std::vector<framing::WordFacts> words() const { return {}; }

    // What came with the current frame; null for inputs of forms that have nothing but messages.
    // Valid as long as the frame.
    virtual const Envelope* envelope() const { return nullptr; }

    // No frame to come begins before this byte of the input, as far as the reader can tell.
    virtual std::uint64_t doneUpTo() const { return 0; }

    // Whether it wants no more bytes, though there may be some.
    virtual bool isComplete() const { return false; }

    virtual ReaderCounters counters() const = 0;

    // Why the input cannot be read, for people, once that is known; empty where all is well. No
    // frame comes from such an input.
    virtual std::string problem() const { return {}; }
};
