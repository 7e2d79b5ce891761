// Reads an input cut into pieces, and keeps all frames.
#pragma once

#include "forms/InputForm.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

struct FoundFrame {
    framing::Frame::Kind kind;
    std::uint64_t begin;
    std::uint64_t end;
    std::string damage{};    // of damaged frames
    Bytes bytes;
    std::uint64_t number;
    Bytes recorded{};
    Envelope envelope{};

    bool operator==(const FoundFrame&) const = default;
};

struct FoundInput {
    std::vector<FoundFrame> frames;
    ReaderCounters counters;

    std::vector<Bytes> messages() const
    {
        std::vector<Bytes> messages;
        for (const FoundFrame& frame : frames) {
            if (frame.kind == framing::Frame::Kind::message) {
                messages.push_back(frame.bytes);
            }
        }
        return messages;
    }
};

inline void collectFrames(PacketReader& reader, std::vector<FoundFrame>& frames)
{
    while (const framing::Frame* frame = reader.next()) {
        const auto bytes = frame->bytes();
        const auto recorded = reader.recorded();
        const Envelope* const told = reader.envelope();
        const bool damaged = frame->kind == framing::Frame::Kind::damaged;
        frames.push_back({.kind = frame->kind,
                          .begin = frame->beginOffset,
                          .end = frame->endOffset,
                          .damage = damaged ? reader.damage() : std::string(),
                          .bytes = Bytes(bytes.begin(), bytes.end()),
                          .number = frame->number,
                          .recorded = Bytes(recorded.begin(), recorded.end()),
                          .envelope = told != nullptr ? *told : Envelope{}});
    }
}

// `pieceSize` gives the size of the next piece each time.
inline FoundInput readInput(
    InputForm form, const Bytes& input,
    const std::function<std::size_t()>& pieceSize = [] { return SIZE_MAX; })
{
    const std::unique_ptr<PacketReader> reader = makeReader(form);
    FoundInput found;
    for (std::size_t at = 0; at < input.size();) {
        const std::size_t size = std::min(pieceSize(), input.size() - at);
        const auto from = input.begin() + static_cast<std::ptrdiff_t>(at);
        // A block of the exact size, so that a sanitizer sees any read beyond it.
        const Bytes piece(from, from + static_cast<std::ptrdiff_t>(size));
        reader->push(piece);
        collectFrames(*reader, found.frames);
        at += size;
    }
    reader->finish();
    collectFrames(*reader, found.frames);
    found.counters = reader->counters();
    return found;
}
