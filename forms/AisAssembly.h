// Puts together AIS messages of several sentences.
#pragma once

#include "forms/AisSentence.h"
#include "forms/TagBlock.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// What is kept of a sentence.
struct AisPart {
    std::string payload;
    unsigned fillBits = 0;
    std::string problem;        // why the sentence is not to be used
    std::uint64_t begin = 0;    // its first and last character in the input
    std::uint64_t end = 0;
    std::uint64_t bytes = 0;    // of the input that go with it
    std::optional<std::int64_t> received{};
};

// The sentences of one message by their numbers, those that came.
struct AisMessage {
    std::vector<std::optional<AisPart>> parts;

    bool isBroadcast() const;    // as its first sentence tells
    bool isWhole() const { return firstMissing() == 0; }
    unsigned firstMissing() const;    // number of a sentence, or 0
    bool hasProblem() const;          // one of them
    std::uint64_t begin() const;
    std::uint64_t end() const;
    std::optional<std::int64_t> received() const;    // as the first one tells that knows
};

// Sentences belong together by talker, number of sentences, channel where both name one, and by the
// group of their tag blocks or else by their sequence digit. A sentence that comes again begins a
// new message. They may come in any order and between others. An id is used anew only after nine
// other messages: sentences that come before their first one wait for it through nine sentences of
// any message. A first one waits longer, since recordings join receivers. So no more are kept than
// come in that time.
class AisAssembly {
public:
    // Takes one of several sentences. The result is the message if that is whole or will never be:
    // its problem tells.
    std::optional<AisMessage> add(const AisSentence& sentence, const TagBlock& tags, AisPart part);

    // Sentence number `now` of the input comes. The result is a broadcast that it is too late for.
    std::optional<AisMessage> advance(std::uint64_t now);

    // A broadcast that is incomplete at the end of the input, each time another one.
    std::optional<AisMessage> takeRest();

    // Where the first of the messages begins that wait; UINT64_MAX where none does.
    std::uint64_t earliestBegin() const;

    // A broadcast that the last sentence ended by beginning a new message.
    std::optional<AisMessage> takeLost() { return std::exchange(lost, std::nullopt); }

private:
    struct Key {
        std::string address;
        std::optional<std::uint32_t> group{};
        char sequence = 0;
        char channel = 0;
        std::size_t count = 0;

        bool matches(const Key& other) const;
    };
    struct Waiting {
        Key key;
        std::uint64_t until = 0;    // number of a sentence
        AisMessage message;
    };
    using Place = std::vector<Waiting>::iterator;

    Place placeOf(Key key);
    AisMessage take(Place place);
    void waitOn(Waiting& waiting);

    std::vector<Waiting> all;    // in the order in which they began
    std::optional<AisMessage> lost;
    std::uint64_t number = 0;              // of the sentence in work
    std::uint64_t soonest = UINT64_MAX;    // when one of them has waited long enough, or later
};
