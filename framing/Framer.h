// Finds messages in a stream of bytes.
#pragma once

#include "framing/Frame.h"
#include "framing/SextetWindow.h"

#include <cstdint>
#include <span>

namespace framing {

// All counts are final after finish() and the last next(); before that they say what is decided.
struct FramerCounters {
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesSkipped = 0;           // not of the form 01xxxxxx
    std::uint64_t bitsOutsideMessages = 0;    // damaged and truncated messages included
};

// A message may begin at any bit of the stream. Its words must all have good parity, its first word
// the preamble, upright or inverted. What the preamble and the parity of the first word say of the
// two bits before the message counts, not those bits themselves: a message is found even when what
// stood before it is damaged or missing.
//
// Right after a message the next one is expected. If a word of it fails, or if it does not begin
// with the preamble, that is one damaged frame, and the search goes on from the next bit. In a
// search a preamble alone means little: a message that fails there is reported as damaged only when
// both its header words were good. The end of the input inside a message gives one truncated frame
// for the whole input, on the same terms (of an expected message one good word is enough).
//
// The words of a damaged message are good but for one, and any of them may look like a preamble;
// the pieces of two cut messages may fit together. What has good words is therefore weighed (see
// weigh()) before it is accepted, which may take up to 60 bits of what follows. Expected messages,
// those of the same station as the last one, and one that begins with the first bit of the stream
// are delivered as soon as they are complete, unless another header stands inside them.
//
// Memory is constant, and the frames do not depend on how the stream is cut into pushes.
class Framer {
public:
    // `bytes` must stay valid until next() has returned null; only then may be pushed again.
    void push(std::span<const std::uint8_t> bytes);

    // No more bytes will come; next() then delivers what was still waiting for them.
    void finish() { finished_ = true; }

    // The next frame, valid until the following call, or null when more bytes are needed.
    const Frame* next();

    FramerCounters counters() const;

private:
    enum class State { searching, verifying, weighing };
    enum class Step { again, deliver, starve };

    Step advance();
    Step search();
    Step verify();
    Step weigh();
    Step conclude();

    enum class Words { good, bad, missing };
    Words readWords();
    Step accept();
    Step fail();
    Step moveOn();
    bool worthReporting() const;
    void deliver(Frame::Kind kind, std::uint64_t end);
    bool refill();

    bool has(std::size_t words) const;
    std::uint64_t bitOfWord(std::size_t word) const;
    std::uint32_t wordAt(std::size_t word) const;
    int stationOf(std::size_t word) const;
    unsigned timeOf(std::size_t word) const;
    unsigned sequenceOf(std::size_t word) const;
    bool ofLastStation(std::size_t word) const;
    bool hidesMessages() const;
    bool endsWithTheNext() const;
    std::size_t messagesFrom(std::size_t word) const;

    SextetWindow window_;
    std::span<const std::uint8_t> pending_;
    bool finished_ = false;

    State state_ = State::searching;
    std::uint64_t begin_ = SextetWindow::firstBit;    // of the message looked for or looked at
    bool expected_ = false;                           // begin_ follows an accepted message
    std::size_t wordsWanted_ = 0;                     // words of the message, as far as known
    std::uint64_t damagedEnd_ = 0;                    // where the last damaged message should end
    std::uint64_t lastBegin_ = SextetWindow::firstBit;    // of the last message accepted
    std::uint64_t lastEnd_ = SextetWindow::firstBit;
    int lastStation_ = -1;
    bool toldTruncation_ = false;
    bool concluded_ = false;

    FramerCounters counters_;
    Frame frame_;
};

}    // namespace framing
