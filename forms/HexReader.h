// Text with a packed message a line, in hexadecimal.
#pragma once

#include "forms/PacketReader.h"

// Digits of either case; blanks anywhere and 0x before a byte are allowed; empty lines and lines
// that begin with # are skipped. Every other line is exactly one message, or else a damaged frame;
// more bytes than the header declares are damage, too. The last line needs no line end; if its
// message is not complete, it is truncated. A frame stands from the first to the last character of
// its line that is no blank. Lines may have any length.
class HexReader : public PacketReader {
public:
    void push(std::span<const std::uint8_t> bytes) override;
    void finish() override { finished = true; }
    const framing::Frame* next() override;
    std::string damage() const override { return problem; }
    ReaderCounters counters() const override
    {
        return {.bytesRead = offset + pending.size(), .bytesSkipped = skipped, .form = "hex"};
    }

private:
    // A line as far as it was read.
    struct Line {
        std::uint64_t begin = 0;       // of the line
        std::uint64_t first = 0;       // its first character that is no blank
        std::uint64_t last = 0;        // one past the last such character
        std::uint64_t digits = 0;      // hexadecimal digits
        std::uint64_t stranger = 0;    // the first character that is none
        bool isEmpty = true;           // blanks only
        bool isComment = false;
        bool hasStranger = false;
        bool afterZero = false;    // the last character was a 0 that began a byte
    };

    void take(std::uint8_t character);
    void takeDigit(int digit);
    bool endLine(bool inputEnded);
    bool fillFrame(bool inputEnded);
    std::string findProblem() const;
    std::span<const std::uint8_t> lineBytes() const;

    std::span<const std::uint8_t> pending;
    bool finished = false;
    std::uint64_t offset = 0;    // of the next character
    Line line;
    std::uint64_t skipped = 0;
    framing::Frame frame;
    std::string problem;
};
