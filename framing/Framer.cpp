#include "framing/Framer.h"

#include "framing/parity.h"

#include <algorithm>
#include <cassert>
#include <optional>

namespace framing {
namespace {

// Before begin_: a message to go back over (see fail()) and the two bits before it.
constexpr std::uint64_t keptBits = maxWords * bitsPerWord + 2;

bool beginsWithPreamble(std::uint32_t data)
{
    return data >> 16 == preamble;
}

// The data of a word that can begin a message. The polarity of the preamble gives the last bit of
// the word before; the bit before that is the one with which parity is good, if there is one.
std::optional<std::uint32_t> firstWordOf(std::uint32_t received)
{
    constexpr std::uint32_t d29 = 0x80000000U;
    constexpr std::uint32_t d30 = 0x40000000U;
    const std::uint32_t upright = received & ~(d29 | d30);
    const std::uint32_t word = beginsWithPreamble(dataOf(upright)) ? upright : upright | d30;
    if (beginsWithPreamble(dataOf(word)) && (hasGoodParity(word) || hasGoodParity(word | d29))) {
        return dataOf(word);
    }
    return std::nullopt;
}

void putWord(std::span<std::uint8_t> packed, std::size_t word, std::uint32_t data)
{
    std::uint8_t* const bytes = &packed[word * bytesPerWord];
    bytes[0] = static_cast<std::uint8_t>(data >> 16);
    bytes[1] = static_cast<std::uint8_t>(data >> 8);
    bytes[2] = static_cast<std::uint8_t>(data);
}

}    // namespace

void Framer::push(std::span<const std::uint8_t> bytes)
{
    assert(pending_.empty() && "bytes pushed before are still unread");
    pending_ = bytes;
}

const Frame* Framer::next()
{
    for (;;) {
        Step step = advance();
        if (step == Step::starve && !refill()) {
            if (!finished_) {
                return nullptr;
            }
            step = conclude();
            if (step == Step::starve) {
                return nullptr;
            }
        }
        if (step == Step::deliver) {
            return &frame_;
        }
    }
}

FramerCounters Framer::counters() const
{
    FramerCounters counters = counters_;
    counters.bytesRead = window_.bytesTaken();
    counters.bytesSkipped = window_.bytesSkipped();
    return counters;
}

bool Framer::refill()
{
    if (pending_.empty()) {
        return false;
    }
    if (!window_.hasRoom()) {
        window_.dropBefore(std::max(begin_, keptBits) - keptBits);
    }
    pending_ = pending_.subspan(window_.append(pending_));
    return true;
}

Framer::Step Framer::advance()
{
    switch (state_) {
    case State::searching:
        return search();
    case State::verifying:
        return verify();
    case State::weighing:
        return weigh();
    }
    return Step::starve;
}

Framer::Step Framer::search()
{
    for (;;) {
        if (!expected_) {
            begin_ = window_.findPreamble(begin_);
        }
        frame_.wordCount = 0;
        wordsWanted_ = headerWords;
        if (!has(1)) {
            return Step::starve;
        }
        if (const auto data = firstWordOf(wordAt(0))) {
            putWord(frame_.storage, 0, *data);
            frame_.wordCount = 1;
            if (begin_ >= lastEnd_ || ofLastStation(0)) {
                state_ = State::verifying;
                return Step::again;
            }
        }
        if (expected_) {
            return fail();
        }
        ++begin_;
    }
}

Framer::Step Framer::verify()
{
    for (;;) {
        switch (readWords()) {
        case Words::bad:
            return fail();
        case Words::missing:
            return Step::starve;
        case Words::good:
            break;
        }
        const std::size_t declared = declaredWords(frame_.bytes());
        if (wordsWanted_ == declared) {
            break;
        }
        wordsWanted_ = declared;
    }
    if (bitOfWord(wordsWanted_) <= lastEnd_) {
        return moveOn();
    }
    state_ = State::weighing;
    return Step::again;
}

// Takes the words wanted into the frame as far as they have come in and are good.
Framer::Words Framer::readWords()
{
    const SextetWindow::Words words = window_.wordsFrom(begin_);
    const std::size_t present = (window_.endBit() - begin_) / bitsPerWord;
    const std::size_t limit = std::min(wordsWanted_, present);
    std::size_t word = frame_.wordCount;
    while (word < limit && hasGoodParity(words[word])) {
        putWord(frame_.storage, word, dataOf(words[word]));
        ++word;
    }
    frame_.wordCount = word;
    if (word == wordsWanted_) {
        return Words::good;
    }
    return word < limit ? Words::bad : Words::missing;
}

// All words are good, but do they make a message? Two ways lead astray. Inside a longer message
// that was damaged a word that looks like a preamble is followed by good words as well, through the
// rest of that message and on through those after it; it hardly ever names the station heard
// before. And where whole words are missing, the two pieces left may fit together by chance. Either
// way good words that begin no message stand behind the supposed end, or real messages begin
// inside.
Framer::Step Framer::weigh()
{
    const bool likely = expected_ || begin_ == SextetWindow::firstBit || ofLastStation(0);
    const bool hides = hidesMessages();
    if (likely && !hides) {
        return accept();
    }
    if (hides && !likely) {
        return moveOn();
    }
    if (hides && endsWithTheNext()) {
        return fail();
    }
    const bool inputEnded = finished_ && pending_.empty();
    if (!has(wordsWanted_ + 1)) {
        return inputEnded ? accept() : Step::starve;
    }
    const std::uint32_t after = wordAt(wordsWanted_);
    const bool begins = hasGoodParity(after) && beginsWithPreamble(dataOf(after));
    if (begins || (!hides && !hasGoodParity(after))) {
        return accept();
    }
    if (hides) {
        return fail();
    }
    if (!has(wordsWanted_ + 2)) {
        return inputEnded ? moveOn() : Step::starve;
    }
    return hasGoodParity(wordAt(wordsWanted_ + 1)) ? moveOn() : accept();
}

// The input has ended where more words were needed.
Framer::Step Framer::conclude()
{
    if (state_ == State::verifying) {
        if (!worthReporting() || toldTruncation_) {
            return moveOn();
        }
        toldTruncation_ = true;
        deliver(Frame::Kind::truncated, window_.endBit());
        moveOn();
        return Step::deliver;
    }
    if (!concluded_) {
        concluded_ = true;
        counters_.bitsOutsideMessages += window_.endBit() - lastEnd_;
    }
    return Step::starve;
}

Framer::Step Framer::accept()
{
    const std::uint64_t end = bitOfWord(wordsWanted_);
    deliver(Frame::Kind::message, end);
    counters_.bitsOutsideMessages += std::max(begin_, lastEnd_) - lastEnd_;
    lastBegin_ = begin_;
    lastEnd_ = end;
    lastStation_ = stationOf(0);
    begin_ = end;
    expected_ = true;
    state_ = State::searching;
    return Step::deliver;
}

Framer::Step Framer::fail()
{
    if (!worthReporting()) {
        return moveOn();
    }
    const bool wordFailed = frame_.wordCount < wordsWanted_;
    const std::size_t words = frame_.wordCount + (wordFailed ? 1 : 0);
    deliver(Frame::Kind::damaged, bitOfWord(words));
    frame_.failedWord = static_cast<std::uint8_t>(wordFailed ? words : 0);
    if (frame_.wordCount >= headerWords && begin_ >= damagedEnd_) {
        damagedEnd_ = bitOfWord(wordsWanted_);
    }
    if (expected_ && frame_.wordCount == 0) {
        // If bits are missing, the next message may have begun before the end of the last one:
        // where bits were cut out of that, the first words of the next may fill it up by chance.
        begin_ = lastBegin_;
    }
    moveOn();
    return Step::deliver;
}

bool Framer::worthReporting() const
{
    return expected_ || (frame_.wordCount >= headerWords && begin_ >= lastEnd_);
}

// Searches on from the next bit.
Framer::Step Framer::moveOn()
{
    ++begin_;
    expected_ = false;
    state_ = State::searching;
    return Step::again;
}

void Framer::deliver(Frame::Kind kind, std::uint64_t end)
{
    frame_.kind = kind;
    frame_.failedWord = 0;
    ++frame_.number;
    frame_.beginOffset = window_.byteOffsetOf(begin_);
    frame_.endOffset = window_.byteOffsetOf(end - 1) + 1;
}

// True when that many words from begin_ on have come in.
bool Framer::has(std::size_t words) const
{
    return bitOfWord(words) <= window_.endBit();
}

std::uint64_t Framer::bitOfWord(std::size_t word) const
{
    return begin_ + word * bitsPerWord;
}

std::uint32_t Framer::wordAt(std::size_t word) const
{
    return window_.wordsFrom(begin_)[word];
}

// The station, ten bits, that a header beginning with `word` names.
int Framer::stationOf(std::size_t word) const
{
    const std::uint8_t* const bytes = &frame_.storage[word * bytesPerWord];
    return (bytes[1] & 3) << 8 | bytes[2];
}

// The time, 13 bits in units of 0.6 s of the hour, and the sequence number, three bits, that a
// header beginning with `word` tells.
unsigned Framer::timeOf(std::size_t word) const
{
    const std::uint8_t* const bytes = &frame_.storage[(word + 1) * bytesPerWord];
    return static_cast<unsigned>(bytes[0] << 5 | bytes[1] >> 3);
}

unsigned Framer::sequenceOf(std::size_t word) const
{
    return frame_.storage[(word + 1) * bytesPerWord + 1] & 7U;
}

bool Framer::ofLastStation(std::size_t word) const
{
    return stationOf(word) == lastStation_;
}

// True when other messages begin inside this one: one of the station heard before or of the same,
// one that begins where a damaged message should have ended and ends with this one, or several that
// do so. By chance that hardly happens.
bool Framer::hidesMessages() const
{
    for (std::size_t word = 1; word < wordsWanted_; ++word) {
        if (frame_.storage[word * bytesPerWord] != preamble) {
            continue;
        }
        const std::size_t messages = messagesFrom(word);
        if (ofLastStation(word) || stationOf(word) == stationOf(0) || messages > 1 ||
            (messages == 1 && bitOfWord(word) == damagedEnd_)) {
            return true;
        }
    }
    return false;
}

// True when the message that the station sends after this one, by its time and sequence number,
// stands inside this one and ends with it: as many words are missing before it as it has itself.
bool Framer::endsWithTheNext() const
{
    constexpr unsigned unitsPerHour = 6000;
    constexpr unsigned unitsPerMinute = 100;
    for (std::size_t word = headerWords; word < wordsWanted_; ++word) {
        const unsigned wait = (timeOf(word) + unitsPerHour - timeOf(0)) % unitsPerHour;
        if (messagesFrom(word) > 0 && stationOf(word) == stationOf(0) && wait < unitsPerMinute &&
            sequenceOf(word) == (sequenceOf(0) + 1) % 8) {
            return true;
        }
    }
    return false;
}

// How many messages lie end to end from `word` to the end of the frame; 0 when they do not.
std::size_t Framer::messagesFrom(std::size_t word) const
{
    const std::span<const std::uint8_t> bytes = frame_.bytes();
    std::size_t messages = 0;
    while (word < wordsWanted_) {
        if (bytes[word * bytesPerWord] != preamble || word + headerWords > wordsWanted_) {
            return 0;
        }
        word += declaredWords(bytes.subspan(word * bytesPerWord));
        ++messages;
    }
    return word == wordsWanted_ ? messages : 0;
}

}    // namespace framing
