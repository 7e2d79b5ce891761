// Sentences of AIS in a text: those of messages 17, which broadcast corrections.
#pragma once

#include "forms/AisAssembly.h"
#include "forms/AisSentence.h"
#include "forms/PacketReader.h"

#include <array>
#include <deque>
#include <string_view>

// A sentence stands on a line, which CR LF, LF or CR ends, behind tag blocks and a label if there
// are any; a time may also stand behind it, after a comma. Everything else, messages of other
// numbers among it, is skipped. A line may have any length.
//
// A frame is the packed message with all words that it declares, what was not heard being fill; it
// stands from the ! of the message's first sentence to the end of its last one. Frames come in the
// order in which their messages end. A broadcast is damaged that has no header of a packed message,
// a sentence of which has a wrong checksum or none, or not all of whose sentences come.
class AisReader : public PacketReader {
public:
    // The first byte pushed is this one of the input; those before count as skipped.
    explicit AisReader(std::uint64_t firstByte = 0) : windowBegin(firstByte) {}

    void push(std::span<const std::uint8_t> bytes) override;
    void finish() override { finished = true; }
    const framing::Frame* next() override;
    std::string damage() const override { return found.damage; }
    const Envelope* envelope() const override { return &found.envelope; }
    std::uint64_t doneUpTo() const override;
    ReaderCounters counters() const override;

    // Whether there was a sentence with a good checksum, whatever its message.
    bool hasGoodSentence() const { return sawGoodSentence; }

private:
    struct Finding {
        framing::Frame frame{};
        Envelope envelope{};
        std::string damage{};
    };
    // The text of a sentence and what goes with it.
    struct Line {
        std::size_t begin;       // in the window: of the line, or what is looked at of it
        std::size_t sentence;    // of the !
        std::size_t end;         // of the text
        std::size_t next;        // behind the end of the line
    };

    bool refill();
    bool search();
    bool isOfOtherMessage(std::string_view text);
    std::optional<Line> lineAt(std::size_t place) const;
    std::size_t beginOfLine(std::size_t place) const;
    void takeLine(const Line& line);
    void takePart(const AisSentence& sentence, const Line& line);
    void countSentence();
    void conclude();
    void deliver(const AisMessage& message);
    std::string readMessage(const AisMessage& message, Finding& finding);
    void add(framing::Frame::Kind kind, const AisMessage& message, Finding finding);
    std::string_view textAt(std::size_t begin, std::size_t end) const
    {
        return {reinterpret_cast<const char*>(window.data() + begin), end - begin};
    }

    static constexpr std::size_t windowBytes = 16384;

    std::span<const std::uint8_t> pending;
    bool finished = false;
    std::array<std::uint8_t, windowBytes> window;
    std::size_t filled = 0;
    std::uint64_t windowBegin;    // offset in the input of the window's first byte
    std::size_t at = 0;           // in the window: of the next byte that is not looked at
    std::size_t lastEnd = 0;      // in the window: behind the last line taken

    AisAssembly assembly;
    std::uint64_t sentences = 0;
    bool sawGoodSentence = false;
    std::uint64_t bytesUsed = 0;    // that go with messages
    std::deque<Finding> ready;
    std::uint64_t frames = 0;
    Finding found;
};
