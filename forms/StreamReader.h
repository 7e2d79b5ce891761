// The byte stream of the air and of casters: six bits a byte, words with parity.
#pragma once

#include "forms/PacketReader.h"
#include "framing/Framer.h"

class StreamReader : public PacketReader {
public:
    void push(std::span<const std::uint8_t> bytes) override { framer.push(bytes); }
    void finish() override { framer.finish(); }
    const framing::Frame* next() override
    {
        frame = framer.next();
        return frame;
    }
    std::string damage() const override;
    ReaderCounters counters() const override;

private:
    framing::Framer framer;
    const framing::Frame* frame = nullptr;
};
