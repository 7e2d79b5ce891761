// One form of input: turns bytes into packed messages.
#pragma once

#include "Frame.h"

#include <cstdint>
#include <span>

// What a reader has seen so far; final after the last frame.
struct ReaderCounters {
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesSkipped = 0;    // bytes that belong to no message
    const char* form = "";             // the input's form, for people; empty if not found out yet
};

// However the input is cut into pushes, the frames are the same.
class PacketReader {
public:
    virtual ~PacketReader() = default;

    // `bytes` must stay valid until next() has returned null; only then may be pushed again.
    virtual void push(std::span<const std::uint8_t> bytes) = 0;

    // No more bytes will come; next() then delivers what was still waiting for them.
    virtual void finish() = 0;

    // The next frame, valid until the following call, or null when more bytes are needed.
    virtual const framing::Frame* next() = 0;

    virtual ReaderCounters counters() const = 0;
};
