#include "framing/Framer.h"

#include "framing/parity.h"

#include <algorithm>
#include <cassert>

namespace framing {
namespace {

// Before begin_: a message to go back over (see fail()) and the two bits before it.
constexpr std::uint64_t keptBits = maxWords * bitsPerWord + 2;

Frame::Kind kindOf(Verdict verdict)
{
    switch (verdict) {
    case Verdict::accepted:
        return Frame::Kind::message;
    case Verdict::cutOff:
        return Frame::Kind::truncated;
    default:
        return Frame::Kind::damaged;
    }
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
    frameWords_ = 0;
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

// A search that follows an expected message goes back over the last one (see fail()).
std::uint64_t Framer::doneUpTo() const
{
    return window_.earliestByteOf(expected_ ? lastBegin_ + 1 : begin_);
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
    case State::reading:
        return read();
    case State::judging:
        return judge();
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
        const Candidate here = candidate();
        if (!here.has(1)) {
            return Step::starve;
        }
        if (const auto data = firstWordOf(here.wordAt(0))) {
            putWord(frame_.storage, 0, *data);
            frame_.wordCount = 1;
            state_ = State::reading;
            return Step::again;
        }
        if (expected_) {
            return skipText();
        }
        ++begin_;
    }
}

// No message begins where one had to. That is no damage where text stands.
Framer::Step Framer::skipText()
{
    const TextLine line = window_.textBehind(begin_, inputEnded());
    if (line.isOpen()) {
        return Step::starve;
    }
    if (line.isText()) {
        window_.cut(line);
        return Step::again;
    }
    const std::uint32_t received = candidate().wordAt(0);
    return fail(beginsWithPreamble(dataOf(received)) ? Verdict::badParity : Verdict::noPreamble);
}

Framer::Step Framer::read()
{
    for (;;) {
        switch (readWords()) {
        case Words::bad:
            return fail(Verdict::badParity);
        case Words::missing:
            return Step::starve;
        case Words::good:
            break;
        }
        const std::size_t declared = declaredWords(frame_.bytes());
        if (wordsWanted_ == declared) {
            state_ = State::judging;
            return Step::again;
        }
        wordsWanted_ = declared;
    }
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

Framer::Step Framer::judge()
{
    const Verdict verdict = weigh();
    switch (verdict) {
    case Verdict::accepted:
        return accept();
    case Verdict::undecided:
        return Step::starve;
    case Verdict::hidesOthers:
        return isLikely() ? fail(verdict) : moveOn();
    default:
        return moveOn();
    }
}

// All words are good, but do they make a message?
Verdict Framer::weigh() const
{
    const Candidate here = candidate();
    const std::uint64_t end = here.bitOfWord(wordsWanted_);
    const unsigned station = stationOf(0);
    if (begin_ < lastEnd_) {
        const Sequel chain = here.at(end).chainTo(lastEnd_, station).sequel;
        if (!countsInsideAnother(ofLastStation(0), end > lastEnd_, chain)) {
            return chain == Sequel::unknown ? Verdict::undecided : Verdict::overlaps;
        }
    }
    if (isLikely() && !needsWeighing()) {
        return Verdict::accepted;
    }
    const Standing own = {.likely = isLikely(), .sequel = here.at(end).sequelOf(station)};
    if (own.sequel == Sequel::unknown) {
        return Verdict::undecided;
    }
    if (leadsNowhere(own)) {
        return Verdict::leadsNowhere;
    }
    bool undecided = false;
    for (std::size_t word = 1; word < wordsWanted_; ++word) {
        if (frame_.storage[word * bytesPerWord] == preamble) {
            const Rival rival = rivalAt(word);
            if (outweighs(rival, own)) {
                return Verdict::hidesOthers;
            }
            undecided |= couldOutweigh(rival, own);
        }
    }
    return undecided ? Verdict::undecided : Verdict::accepted;
}

Rival Framer::rivalAt(std::size_t word) const
{
    const Candidate here = candidate();
    const std::uint64_t end = here.bitOfWord(wordsWanted_);
    const Candidate inside = here.at(here.bitOfWord(word));
    const Candidate::Chain chain = inside.chainTo(end);
    const Header own = headerOf(frame_.bytes());
    return {.sequel = chain.sequel,
            .isExpected = inside.followsOn(own) || inside.followsOn(lastHeader_.value_or(own)),
            .endsTogether = chain.end == end};
}

bool Framer::isLikely() const
{
    return expected_ || begin_ == SextetWindow::firstBit || begin_ == damagedEnd_ ||
           ofLastStation(0);
}

// True when a header of the station heard before or of the same one seems to stand inside.
bool Framer::needsWeighing() const
{
    for (std::size_t word = 1; word < wordsWanted_; ++word) {
        if (frame_.storage[word * bytesPerWord] == preamble &&
            (ofLastStation(word) || stationOf(word) == stationOf(0))) {
            return true;
        }
    }
    return false;
}

// The input has ended where more words were needed.
Framer::Step Framer::conclude()
{
    if (state_ == State::reading) {
        if (!worthReporting() || toldTruncation_) {
            return moveOn();
        }
        toldTruncation_ = true;
        deliver(Verdict::cutOff, frame_.wordCount);
        frame_.endOffset = window_.byteOffsetOf(window_.endBit() - 1) + 1;
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
    const std::uint64_t end = candidate().bitOfWord(wordsWanted_);
    deliver(Verdict::accepted, wordsWanted_);
    counters_.bitsOutsideMessages += std::max(begin_, lastEnd_) - lastEnd_;
    lastBegin_ = begin_;
    lastEnd_ = end;
    lastHeader_ = headerOf(frame_.bytes());
    begin_ = end;
    expected_ = true;
    state_ = State::searching;
    return Step::deliver;
}

Framer::Step Framer::fail(Verdict verdict)
{
    if (!worthReporting()) {
        return moveOn();
    }
    const bool wordFailed = verdict == Verdict::badParity || verdict == Verdict::noPreamble;
    const std::size_t words = frame_.wordCount + (wordFailed ? 1 : 0);
    deliver(verdict, words);
    frame_.failedWord = static_cast<std::uint8_t>(wordFailed ? words : 0);
    if (frame_.wordCount >= headerWords && begin_ >= damagedEnd_) {
        damagedEnd_ = candidate().bitOfWord(wordsWanted_);
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

void Framer::deliver(Verdict verdict, std::size_t words)
{
    const std::uint64_t end = candidate().bitOfWord(words);
    frame_.kind = kindOf(verdict);
    frame_.verdict = verdict;
    frame_.failedWord = 0;
    ++frame_.number;
    frame_.beginOffset = window_.byteOffsetOf(begin_);
    frame_.endOffset = window_.byteOffsetOf(end - 1) + 1;
    frameBegin_ = begin_;
    frameWords_ = words;
}

WordFacts Framer::frameWord(std::size_t word) const
{
    const std::uint64_t bit = frameBegin_ + word * bitsPerWord;
    const std::uint32_t received = window_.wordsFrom(bit)[0];
    const auto first = word == 0 ? firstWordOf(received) : std::nullopt;
    const std::uint32_t data = first.value_or(dataOf(received));
    WordFacts facts{.byteOffset = window_.byteOffsetOf(bit),
                    .bit = window_.bitOfByte(bit),
                    .data = data,
                    .hasGoodParity = first.has_value() || hasGoodParity(received),
                    .isInverted = data != (received >> 6 & dataMask),
                    .received = received & wordMask};
    for (std::uint64_t next = bit; next < bit + bitsPerWord; next = window_.endOfByte(next)) {
        facts.carriers[facts.carrierCount++] = {window_.byteOffsetOf(next), window_.byteAt(next)};
    }
    return facts;
}

// The station that a header beginning with `word` names.
unsigned Framer::stationOf(std::size_t word) const
{
    const std::uint8_t* const bytes = &frame_.storage[word * bytesPerWord];
    return (bytes[1] & 3U) << 8 | bytes[2];
}

}    // namespace framing
