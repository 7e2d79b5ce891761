// What can be found about a place where a message may begin, and the rules by which it is found.
#pragma once

#include <cstdint>

namespace framing {

enum class Verdict : std::uint8_t {
    accepted,        // a message
    noPreamble,      // no message begins where one had to: what stands there is no preamble
    badParity,       // a word has bad parity
    cutOff,          // the input ended before the last word
    overlaps,        // lies in the last message accepted, and nothing says that it counts more
    hidesOthers,     // messages that count more begin inside
    leadsNowhere,    // of an unknown station, and good words that begin no message follow
    undecided,       // more bytes must say
};

// What stands behind the last of some good words, the weakest first.
enum class Sequel : std::uint8_t {
    broken,      // the words themselves are not all good
    nowhere,     // good words that begin no message
    open,        // a bad word or the end of the input, which say nothing
    stranger,    // the first word of a message of another station
    message,     // the first word of a message of the same station
    unknown,     // more bytes must say
};

// What speaks for a candidate all words of which are good.
struct Standing {
    bool likely = false;    // it stands where a message has to, or is of the last station
    Sequel sequel = Sequel::unknown;
};

// A message that begins inside a candidate, at one of its words, or a chain of several that lie end
// to end.
struct Rival {
    Sequel sequel = Sequel::unknown;    // of the chain
    bool isExpected = false;            // by its header, the station sent it after the candidate or
                                        // after the last message accepted
    bool endsTogether = false;          // the chain ends where the candidate does
};

// What has to stand behind a candidate, so that no rival counts more by what stands behind it.
constexpr Sequel sufficient(const Rival& rival, const Standing& own)
{
    return own.likely && !rival.isExpected ? Sequel::stranger : Sequel::message;
}

// Words that look like a header stand in many messages; the station of such a message hardly ever
// is the one heard. Where words are missing, though, what is left of a message and those after it
// make a candidate as good as a message, and hide one that is whole. And a word inside a damaged
// message may look like a header, and hide the messages behind. The one counts behind which more
// speaks for it; if that does not decide, the first one.
//
// Three things count more. What the station would send next is real: even where its own words are
// damaged it shows that the candidate is made of pieces, unless a message follows that. Behind a
// candidate that is likely any station may send, unless such a message stands inside. And of two
// that end together the one inside counts if the station would send it next, or if the candidate is
// not even likely.
constexpr bool outweighs(const Rival& rival, const Standing& own)
{
    if (rival.sequel == Sequel::unknown) {
        return false;
    }
    if (rival.sequel <= Sequel::nowhere) {
        return rival.isExpected && own.sequel <= Sequel::open;
    }
    const bool wins = rival.endsTogether && (rival.isExpected || !own.likely);
    const bool suffices = own.sequel >= sufficient(rival, own);
    return (rival.sequel > own.sequel && !suffices) || (rival.sequel >= own.sequel && wins);
}

// The same, when more bytes must say.
constexpr bool couldOutweigh(const Rival& rival, const Standing& own)
{
    return rival.sequel == Sequel::unknown && own.sequel < sufficient(rival, own);
}

// Inside a damaged message a word that looks like a preamble is followed by good words as well,
// through the rest of that message and those after it. Such a candidate ends anywhere.
constexpr bool leadsNowhere(const Standing& own)
{
    return !own.likely && own.sequel == Sequel::nowhere;
}

// Whether a candidate that begins inside the last message accepted counts nevertheless: that was
// then put together from pieces. `chain` is what follows it, or the messages behind it, at the end
// of that message or later.
constexpr bool countsInsideAnother(bool ofItsStation, bool reachesFurther, Sequel chain)
{
    return (ofItsStation && reachesFurther) || chain == Sequel::stranger ||
           chain == Sequel::message;
}

}    // namespace framing
