// Binary messages one after another, a word in a unit of a few bytes.
#pragma once

#include "forms/PacketReader.h"
#include "forms/UnitForm.h"

#include <algorithm>
#include <array>

// Every message is as long as its header says, and the next one follows, from the first byte of the
// input on; between packed messages a line end may stand. Where the form has parity, a message has
// to have it; otherwise what has the preamble and room is taken for a message. Where a message had
// to begin and does not, that is one damaged frame. The search for the next one then begins inside
// the last message, which may have lost bytes and taken in the beginning of the next instead;
// without parity it takes only a message that is followed by another preamble or by the end of the
// input. A partial unit at the end of a recording is dropped.
//
// Each message begins and ends behind where the one before does, and so do the frames that are
// none; only the first message after a damaged frame may begin before that frame.
class UnitReader : public PacketReader {
public:
    // The first byte pushed is this one of the input; those before count as skipped.
    explicit UnitReader(const UnitForm& unitForm, std::uint64_t firstByte = 0)
        : form(unitForm), windowBegin(firstByte), begin(firstByte), lastBegin(firstByte),
          lastEnd(firstByte), skipped(firstByte)
    {
    }

    void push(std::span<const std::uint8_t> bytes) override;
    void finish() override { finished = true; }
    const framing::Frame* next() override;
    std::string damage() const override;
    std::span<const std::uint8_t> recorded() const override;
    std::uint64_t doneUpTo() const override
    {
        return expected ? std::min(begin, searchBegin()) : begin;
    }
    ReaderCounters counters() const override;

private:
    enum class Step { again, deliver, starve };
    enum class Room { enough, missing, unknown };

    void skipLineEnd();

    Step take();
    Step search();
    Step accept();
    Step fail();
    Step truncate();
    void deliver(framing::Frame::Kind kind, std::size_t units, std::size_t bytes);
    void conclude();
    bool refill();

    // Where the search begins once no message stands where one had to: inside the last message.
    std::uint64_t searchBegin() const { return (lastEnd > lastBegin ? lastBegin : begin) + 1; }
    Room room();
    bool isGood() const { return form.goodWords == nullptr || goodWords() == wordsWanted; }
    std::size_t goodWords() const;
    Room roomBehind() const;
    bool inputEnded() const { return finished && pending.empty(); }
    std::uint64_t end() const { return windowBegin + filled; }
    std::size_t available() const { return static_cast<std::size_t>(end() - begin); }
    const std::uint8_t* at(std::uint64_t offset) const { return &window[offset - windowBegin]; }
    std::uint32_t dataAt(std::size_t unit) const { return form.data(at(begin + unit * form.size)); }

    static constexpr std::size_t windowBytes = 4096;
    static constexpr std::size_t longestLineEnd = 2;    // CR LF

    const UnitForm& form;
    std::span<const std::uint8_t> pending;
    bool finished = false;

    std::array<std::uint8_t, windowBytes> window{};
    std::size_t filled = 0;
    std::uint64_t windowBegin = 0;    // offset in the input of the window's first byte

    bool expected = true;           // a message has to begin at `begin`
    std::uint64_t begin = 0;        // of the message looked for
    std::size_t wordsWanted = 0;    // words of that message, as far as known
    std::uint64_t lastBegin = 0;    // of the last message accepted
    std::uint64_t lastEnd = 0;
    bool concluded = false;

    std::uint64_t skipped = 0;
    framing::Frame frame;
    std::span<const std::uint8_t> units;    // of the current frame
};
