// Reads an input cut into pieces, and keeps all frames.
#pragma once

#include "forms/InputForm.h"

#include <algorithm>
#include <functional>
#include <ostream>
#include <random>
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

    bool operator==(const FoundFrame&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const FoundFrame& found)
{
    return out << "{kind " << static_cast<int>(found.kind) << ", no. " << found.number << ", at "
               << found.begin << ".." << found.end << ", " << found.bytes.size() << " bytes, "
               << found.recorded.size() << " recorded, '" << found.damage << "'}";
}

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

    std::ptrdiff_t damaged() const
    {
        return std::count_if(frames.begin(), frames.end(), [](const FoundFrame& frame) {
            return frame.kind == framing::Frame::Kind::damaged;
        });
    }
};

inline void collectFrames(PacketReader& reader, std::vector<FoundFrame>& frames)
{
    while (const framing::Frame* frame = reader.next()) {
        const auto bytes = frame->bytes();
        const auto recorded = reader.recorded();
        const bool damaged = frame->kind == framing::Frame::Kind::damaged;
        frames.push_back({.kind = frame->kind,
                          .begin = frame->beginOffset,
                          .end = frame->endOffset,
                          .damage = damaged ? reader.damage() : std::string(),
                          .bytes = Bytes(bytes.begin(), bytes.end()),
                          .number = frame->number,
                          .recorded = Bytes(recorded.begin(), recorded.end())});
    }
}

inline std::size_t wholeInput()
{
    return std::size_t{1} << 30;
}

// `pieceSize` gives the size of the next piece each time.
inline FoundInput readInput(InputForm form, const Bytes& input,
                            const std::function<std::size_t()>& pieceSize = wholeInput)
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

// Ways to cut an input into pieces.
inline std::vector<std::function<std::size_t()>> waysToCut()
{
    const auto random = std::make_shared<std::mt19937>(7U);
    return {wholeInput, [] { return std::size_t{1}; },
            [random] { return std::size_t{1} + (*random)() % 40; }};
}
