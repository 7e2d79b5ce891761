// Some of the frames of an input, one behind the other in memory, so that a thread can hand them to
// another one at little cost.
#pragma once

#include "forms/Envelope.h"
#include "framing/Frame.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class FrameBatch {
public:
    struct Entry {
        framing::Frame::Kind kind;
        bool isRecording;    // the bytes are a receiver's own
        std::uint16_t size;
        std::uint32_t offset;    // of the bytes in the batch
        std::uint64_t number;    // and the others as in framing::Frame
        std::uint64_t begin;
        std::uint64_t end;
        std::uint32_t problem;     // index of its text
        std::uint32_t envelope;    // index of what came with it
    };

    static constexpr std::size_t room = 64;    // frames

    bool isFull() const { return count == room; }
    bool isEmpty() const { return count == 0; }
    void clear();
    // To be called while there is room. `recorded` are the frame's units in a receiver's recording,
    // or nothing; `problem` is what is wrong with a frame that is no message.
    void add(const framing::Frame& frame, std::span<const std::uint8_t> recorded,
             std::string problem);
    // What came with the frame that was added last.
    void setEnvelope(const Envelope& envelope);

    std::span<const Entry> entries() const { return std::span(frames).first(count); }
    std::span<const std::uint8_t> bytesOf(const Entry& entry) const
    {
        return std::span(bytes).subspan(entry.offset, entry.size);
    }
    const std::string& problemOf(const Entry& entry) const { return problems[entry.problem]; }
    const Envelope& envelopeOf(const Entry& entry) const { return envelopes[entry.envelope]; }

private:
    static constexpr std::size_t mostBytes = framing::maxWords * 4;    // of a recorded message

    std::size_t count = 0;
    std::size_t used = 0;    // of the bytes
    std::array<Entry, room> frames;
    std::array<std::uint8_t, room * mostBytes> bytes;
    std::vector<std::string> problems;
    std::vector<Envelope> envelopes{Envelope{}};    // the first one is that of most frames
};
