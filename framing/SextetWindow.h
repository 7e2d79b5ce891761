// The part of a stream that is being worked on, as a row of bits.
#pragma once

#include "framing/TextLine.h"
#include "framing/bigEndian.h"
#include "framing/parity.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace framing {

// Takes bytes of the form 01xxxxxx, six bits each, least significant bit first, and skips all
// others. Bits have absolute positions: the first one of the stream is at `firstBit`; zeros stand
// before it, so that the first word of a stream, too, has bits before it.
class SextetWindow {
public:
    static constexpr std::uint64_t firstBit = 8;

    // The first byte that it takes is this one of the input; those before count as skipped.
    explicit SextetWindow(std::uint64_t firstByte = 0);

    // Takes bytes as long as there is room; returns how many were taken.
    std::size_t append(std::span<const std::uint8_t> bytes);

    bool hasRoom() const { return endBit_ - base_ + bitsPerGroup <= capacityBits; }

    // Makes room. Bits before `bit` must not be asked for any more.
    void dropBefore(std::uint64_t bit);

    // One past the last bit taken.
    std::uint64_t endBit() const { return endBit_; }

    // The 32-bit words of parity.h, one every 30 bits from a bit on.
    class Words {
    public:
        std::uint32_t operator[](std::size_t word) const
        {
            return static_cast<std::uint32_t>(loadBits(bits_, index_ + word * bitsPerWord) >> 32);
        }

    private:
        friend class SextetWindow;
        Words(const std::uint8_t* bits, std::uint64_t index) : bits_(bits), index_(index) {}

        const std::uint8_t* bits_;
        std::uint64_t index_;
    };

    // Valid until bits are appended or dropped.
    Words wordsFrom(std::uint64_t bit) const { return {bits_.data(), bit - 2 - base_}; }

    // The first place at or after `from` where a preamble stands, upright or inverted. When there
    // is none, the first place that further bytes must decide.
    std::uint64_t findPreamble(std::uint64_t from) const;

    // Offset in the input of the byte that carries a bit.
    std::uint64_t byteOffsetOf(std::uint64_t bit) const;

    // No bit from this one on stands in a byte before the one of this offset, also of those that
    // have not come in.
    std::uint64_t earliestByteOf(std::uint64_t bit) const
    {
        return bit < endBit_ ? byteOffsetOf(bit) : bytesTaken_;
    }

    // Which of that byte's six bits it is, in the order sent, from 0.
    static unsigned bitOfByte(std::uint64_t bit)
    {
        return static_cast<unsigned>((bit - firstBit) % bitsPerSextet);
    }

    // The first bit of the byte behind that one.
    static std::uint64_t endOfByte(std::uint64_t bit)
    {
        return bit - bitOfByte(bit) + bitsPerSextet;
    }

    // That byte, of which no bit was dropped.
    std::uint8_t byteAt(std::uint64_t bit) const
    {
        return byteOf((bit - firstBit) / bitsPerSextet);
    }

    // Looks for a line of text from the first byte on that carries no bit before `bit`.
    TextLine textBehind(std::uint64_t bit, bool inputEnded) const;

    // Takes a line of text out, as if its bytes had been skipped like others. The bits behind it
    // move forward to its place.
    void cut(const TextLine& line);

    std::uint64_t bytesTaken() const { return bytesTaken_; }
    std::uint64_t bytesSkipped() const { return bytesTaken_ - sextetsTaken(); }

private:
    // Sextets that follow each other in the input without a byte between them.
    struct Run {
        std::uint64_t sextet;
        std::uint64_t offset;
        Gap before;
    };
    using Runs = std::vector<Run>;

    static constexpr std::size_t bitsPerSextet = 6;
    static constexpr std::size_t groupBytes = 8;    // are taken at once where possible
    static constexpr std::size_t bitsPerGroup = groupBytes * bitsPerSextet;
    static constexpr std::size_t capacitySextets = 2048;
    static constexpr std::size_t capacityBits = capacitySextets * bitsPerSextet;
    static constexpr std::size_t overhang = 8;    // loads and stores take eight bytes at once

    std::uint64_t sextetsTaken() const { return (endBit_ - firstBit) / bitsPerSextet; }
    std::size_t appendGroups(std::span<const std::uint8_t> bytes);
    std::size_t appendPart(std::span<const std::uint8_t> bytes);
    void putSextets(std::uint64_t joined, unsigned count);
    Runs::const_iterator runAfter(std::uint64_t sextet) const;
    std::uint8_t byteOf(std::uint64_t sextet) const;

    // At least 57 bits from an index on, left-aligned.
    static std::uint64_t loadBits(const std::uint8_t* bits, std::uint64_t index)
    {
        return loadBig(bits + index / 8) << (index % 8);
    }

    std::array<std::uint8_t, capacityBits / 8 + overhang> bits_{};
    std::uint64_t base_ = 0;    // position of the first bit in bits_; a multiple of 8
    std::uint64_t endBit_ = firstBit;
    std::uint64_t bytesTaken_;
    bool inGap_ = true;    // the next sextet begins a new run
    Gap gap_;              // what stands before that
    Runs runs_;
};

}    // namespace framing
