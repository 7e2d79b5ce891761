// Text with a packed message a line, in hexadecimal.
#pragma once

#include "forms/PacketReader.h"

#include <array>
#include <optional>

// A line holds one message, behind a label if there is one: words of other characters, or of digits
// that do not begin with the preamble. A time stamp in the first 40 characters of it tells when the
// message was received. Digits are of either case; blanks
// between them and 0x before a byte are allowed. Empty lines and lines that begin with # are
// skipped. Every other line is exactly one message, or else a damaged frame; more bytes than the
// header declares are damage, too. The last line needs no line end; if its message is not complete,
// it is truncated. A frame stands from the first character of its message, or else of its line, to
// the last character of the line that is no blank. Lines may have any length.
class HexReader : public PacketReader {
public:
    // The first byte pushed is this one of the input; those before count as skipped.
    explicit HexReader(std::uint64_t firstByte = 0)
        : offset(firstByte), line{.begin = firstByte}, skipped(firstByte)
    {
    }

    void push(std::span<const std::uint8_t> bytes) override;
    void finish() override { finished = true; }
    const framing::Frame* next() override;
    std::string damage() const override { return problem; }
    std::uint64_t doneUpTo() const override { return line.isEmpty ? offset : line.first; }
    const Envelope* envelope() const override { return told.received ? &told : nullptr; }
    ReaderCounters counters() const override
    {
        return {.bytesRead = offset + pending.size(), .bytesSkipped = skipped, .form = "hex"};
    }

private:
    // A line as far as it was read.
    struct Line {
        std::uint64_t begin = 0;       // of the line
        std::uint64_t first = 0;       // its first character that is no blank
        std::uint64_t message = 0;     // the first character of the message, if there are digits
        std::uint64_t last = 0;        // one past the last character that is no blank
        std::uint64_t digits = 0;      // hexadecimal digits of the message
        std::uint64_t stranger = 0;    // the first character that is no digit
        bool isEmpty = true;           // blanks only
        bool isComment = false;
        bool hasStranger = false;
        bool inWord = false;       // the last character was no blank
        bool inLabel = false;      // neither will the rest of this word be of the message
        bool afterZero = false;    // the last character was a 0 that began a byte
    };

    void take(std::uint8_t character);
    void takeBlank();
    void takeDigit(int digit);
    void beginWord();
    void beginLabel();
    bool endLine(bool inputEnded);
    bool fillFrame(bool inputEnded);
    std::string findProblem() const;
    std::optional<std::int64_t> timeOfLabel() const;
    std::span<const std::uint8_t> lineBytes() const;

    std::span<const std::uint8_t> pending;
    bool finished = false;
    std::uint64_t offset;    // of the next character
    Line line;
    std::array<char, 40> label{};    // the first characters of the line
    std::uint64_t skipped;
    framing::Frame frame;
    Envelope told;
    std::string problem;
};
