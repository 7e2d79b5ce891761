// The byte stream of the air and of casters: six bits a byte, words with parity.
#pragma once

#include "forms/PacketReader.h"
#include "framing/Framer.h"

class StreamReader : public PacketReader {
public:
    // The first byte pushed is this one of the input; those before count as skipped.
    explicit StreamReader(std::uint64_t firstByte = 0) : framer(firstByte) {}

    void push(std::span<const std::uint8_t> bytes) override { framer.push(bytes); }
    void finish() override { framer.finish(); }
    const framing::Frame* next() override
    {
        frame = framer.next();
        return frame;
    }
    std::string damage() const override;
    std::vector<framing::WordFacts> words() const override;
    std::uint64_t doneUpTo() const override { return framer.doneUpTo(); }
    ReaderCounters counters() const override;

private:
    framing::Framer framer;
    const framing::Frame* frame = nullptr;
};
