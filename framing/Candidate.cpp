#include "framing/Candidate.h"

#include "framing/parity.h"

namespace framing {

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

Sequel Candidate::sequelOf(unsigned station) const
{
    switch (goodUpTo(1)) {
    case Words::bad:
        return Sequel::open;
    case Words::missing:
        return inputEnded_ ? Sequel::open : Sequel::unknown;
    case Words::good:
        break;
    }
    if (beginsMessage()) {
        return stationOf(dataOf(wordAt(0))) == station ? Sequel::message : Sequel::stranger;
    }
    switch (goodUpTo(2)) {
    case Words::bad:
        return Sequel::open;
    case Words::missing:
        return inputEnded_ ? Sequel::nowhere : Sequel::unknown;
    case Words::good:
        break;
    }
    return Sequel::nowhere;
}

Candidate::Chain Candidate::chainTo(std::uint64_t end, unsigned before) const
{
    Candidate link = *this;
    unsigned station = before;
    for (bool first = true; link.begin_ < end; first = false) {
        const Words head = link.goodHeader();
        if (!first && head == Words::good && link.header().station == station) {
            return {Sequel::message, link.begin_};
        }
        const Words all = head == Words::good ? link.goodUpTo(link.header().words()) : head;
        if (all != Words::good) {
            const bool known = all == Words::bad || inputEnded_;
            return {known ? Sequel::broken : Sequel::unknown, link.begin_};
        }
        station = link.header().station;
        link.begin_ = link.bitOfWord(link.header().words());
    }
    return {link.sequelOf(station), link.begin_};
}

Candidate::Words Candidate::goodHeader() const
{
    return has(1) && !beginsMessage() ? Words::bad : goodUpTo(headerWords);
}

bool Candidate::followsOn(const Header& earlier) const
{
    return goodHeader() == Words::good && follows(header(), earlier);
}

// Whether the first `count` words are good, as far as they have come in.
Candidate::Words Candidate::goodUpTo(std::size_t count) const
{
    const SextetWindow::Words words = window_->wordsFrom(begin_);
    for (std::size_t word = 0; word < count; ++word) {
        if (!has(word + 1)) {
            return Words::missing;
        }
        if (!hasGoodParity(words[word])) {
            return Words::bad;
        }
    }
    return Words::good;
}

bool Candidate::beginsMessage() const
{
    return beginsWithPreamble(dataOf(wordAt(0)));
}

}    // namespace framing
