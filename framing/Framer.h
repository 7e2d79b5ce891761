// Finds messages in a stream of bytes.
#pragma once

#include "framing/Candidate.h"
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

// A byte of the input that carries bits of a word.
struct Carrier {
    std::uint64_t offset = 0;
    std::uint8_t byte = 0;
};

// A word of a frame as it was received.
struct WordFacts {
    std::uint64_t byteOffset = 0;    // byte of the input in which the first bit stands
    unsigned bit = 0;          // which of the byte's six bits that is, in the order sent, from 0
    std::uint32_t data = 0;    // 24 data bits, with the inversion undone
    bool hasGoodParity = false;
    bool isInverted = false;       // the data bits were sent inverted
    std::uint32_t received = 0;    // all bits as they came, the first one sent highest
    std::size_t carrierCount = 0;
    std::array<Carrier, 6> carriers{};    // one more than a word fills, if it begins inside one
};

// A message may begin at any bit of the stream. Its words must all have good parity, its first word
// the preamble, upright or inverted. What the preamble and the parity of the first word say of the
// two bits before the message counts, not those bits themselves: a message is found even when what
// stood before it is damaged or missing.
//
// Each such place is a candidate and gets one verdict (see Verdict.h). Right after a message the
// next one is expected. If that fails, and no text stands there, it is one damaged frame, and the
// search goes on from the next bit. In a search a preamble alone means little: a candidate that
// fails there is reported as damaged only when both its header words were good. The end of the
// input inside a message gives one truncated frame for the whole input, on the same terms (of an
// expected message one good word is enough).
//
// Expected messages, those of the same station as the last one, and one that begins with the first
// bit of the stream or where a damaged one should have ended are delivered as soon as they are
// complete, unless a header of the same station or of the last stands inside them. All others wait
// for what follows: mostly one or two words, at most the length of a message and two words.
//
// Memory is constant, and the frames do not depend on how the stream is cut into pushes.
class Framer {
public:
    // The first byte pushed is this one of the input; those before count as read and skipped.
    explicit Framer(std::uint64_t firstByte = 0) : window_(firstByte) {}

    // `bytes` must stay valid until next() has returned null; only then may be pushed again.
    void push(std::span<const std::uint8_t> bytes);

    // False while bytes pushed before are unread, and after finish().
    bool takesBytes() const { return pending_.empty() && !finished_; }

    // No more bytes will come; next() then delivers what was still waiting for them.
    void finish() { finished_ = true; }

    // The next frame, valid until the following call, or null when more bytes are needed.
    const Frame* next();

    // No frame to come begins before this byte of the input.
    std::uint64_t doneUpTo() const;

    FramerCounters counters() const;

    // The words of the current frame, and of a damaged one the word that failed; valid until the
    // following call of next().
    std::size_t frameWords() const { return frameWords_; }
    WordFacts frameWord(std::size_t word) const;

private:
    enum class State { searching, reading, judging };
    enum class Step { again, deliver, starve };

    Step advance();
    Step search();
    Step read();
    Step judge();
    Step conclude();

    enum class Words { good, bad, missing };
    Words readWords();
    Step accept();
    Step skipText();
    Step fail(Verdict verdict);
    Step moveOn();
    bool worthReporting() const;
    void deliver(Verdict verdict, std::size_t words);
    bool refill();

    Candidate candidate() const { return {window_, begin_, inputEnded()}; }
    Verdict weigh() const;
    bool isLikely() const;
    bool needsWeighing() const;
    Rival rivalAt(std::size_t word) const;
    bool inputEnded() const { return finished_ && pending_.empty(); }
    bool ofLastStation(std::size_t word) const
    {
        return lastHeader_ && lastHeader_->station == stationOf(word);
    }
    unsigned stationOf(std::size_t word) const;

    SextetWindow window_;
    std::span<const std::uint8_t> pending_;
    bool finished_ = false;

    State state_ = State::searching;
    std::uint64_t begin_ = SextetWindow::firstBit;    // of the message looked for or looked at
    bool expected_ = false;                           // begin_ follows an accepted message
    std::size_t wordsWanted_ = 0;                     // words of the message, as far as known
    std::uint64_t damagedEnd_ = 0;                    // where the last damaged message should end
    std::uint64_t frameBegin_ = SextetWindow::firstBit;
    std::size_t frameWords_ = 0;
    std::uint64_t lastBegin_ = SextetWindow::firstBit;    // of the last message accepted
    std::uint64_t lastEnd_ = SextetWindow::firstBit;
    std::optional<Header> lastHeader_;    // of the last message accepted
    bool toldTruncation_ = false;
    bool concluded_ = false;

    FramerCounters counters_;
    Frame frame_;
};

}    // namespace framing
