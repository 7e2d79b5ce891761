// The byte stream of the air and of casters: six bits a byte, words with parity.
#pragma once

#include "Framer.h"
#include "PacketReader.h"

class StreamReader : public PacketReader {
public:
    void push(std::span<const std::uint8_t> bytes) override { framer.push(bytes); }
    void finish() override { framer.finish(); }
    const framing::Frame* next() override { return framer.next(); }
    ReaderCounters counters() const override
    {
        const framing::FramerCounters seen = framer.counters();
        return {.bytesRead = seen.bytesRead, .bytesSkipped = seen.bytesSkipped, .form = "stream"};
    }

private:
    framing::Framer framer;
};
