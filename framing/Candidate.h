// A place in the stream where a message may begin.
#pragma once

#include "framing/Header.h"
#include "framing/SextetWindow.h"
#include "framing/Verdict.h"

#include <optional>

namespace framing {

constexpr bool beginsWithPreamble(std::uint32_t data)
{
    return data >> 16 == preamble;
}

// The data of a word that can begin a message. The polarity of the preamble gives the last bit of
// the word before; the bit before that is the one with which parity is good, if there is one.
std::optional<std::uint32_t> firstWordOf(std::uint32_t received);

// Words that follow each other from a bit on. What stands beyond the bits that have come in is
// unknown, until the input has ended.
class Candidate {
public:
    Candidate(const SextetWindow& window, std::uint64_t begin, bool inputEnded)
        : window_(&window), begin_(begin), inputEnded_(inputEnded)
    {
    }

    std::uint64_t begin() const { return begin_; }
    std::uint64_t bitOfWord(std::size_t word) const { return begin_ + word * bitsPerWord; }
    bool has(std::size_t words) const { return bitOfWord(words) <= window_->endBit(); }
    std::uint32_t wordAt(std::size_t word) const { return window_->wordsFrom(begin_)[word]; }
    Candidate at(std::uint64_t bit) const { return {*window_, bit, inputEnded_}; }

    // What stands here, behind good words of a message of that station.
    Sequel sequelOf(unsigned station) const;

    // The messages that lie end to end from here, of which the last reaches at least to `end`, and
    // what stands behind them. They may stop before that where one begins that names the station of
    // the one before it. `before` is the station of what ends here.
    struct Chain {
        Sequel sequel;
        std::uint64_t end;
    };
    Chain chainTo(std::uint64_t end, unsigned before = 0) const;

    // True when a good header has come in that the station of `earlier` would send after it
    // (see Header.h).
    bool followsOn(const Header& earlier) const;

private:
    enum class Words { good, bad, missing };
    Words goodUpTo(std::size_t count) const;
    Words goodHeader() const;
    bool beginsMessage() const;
    Header header() const { return headerOf(dataOf(wordAt(0)), dataOf(wordAt(1))); }

    const SextetWindow* window_;
    std::uint64_t begin_;
    bool inputEnded_;
};

}    // namespace framing
