// Which messages of two inputs are the same ones.
#pragma once

#include "commands/compare/MessageStore.h"

#include <span>
#include <vector>

// Indices of two messages of one group and time.
struct MessagePair {
    std::uint32_t a;
    std::uint32_t b;
    bool isSame;    // of one sequence number, too: the same message
};

// Times are those of an hour, so that time and sequence come again. Group by group, messages that
// occur once in both inputs, bit by bit, are found first, and of these the longest row that stands
// in the same order in both; between two of them messages of the same time and sequence are found
// in the same way. What is left is matched in order: the first of a time and sequence with the
// first. That takes little more time than to sort the messages.
class Alignment {
public:
    Alignment(const MessageStore& first, const MessageStore& second);

    // Group by group, those of a group in the order of the first input.
    const std::vector<MessagePair>& pairs() const { return matched; }
    // Messages of the first input that the second one lacks, and the other way, in their order.
    const std::vector<std::uint32_t>& onlyA() const { return lonelyA; }
    const std::vector<std::uint32_t>& onlyB() const { return lonelyB; }

private:
    using Indices = std::span<const std::uint32_t>;
    using Signature = std::uint64_t (Alignment::*)(const MessageStore&, std::uint32_t) const;

    void alignGroup(Indices inA, Indices inB);
    void alignBetween(Indices inA, Indices inB, const Signature* levels);
    void alignInOrder(Indices inA, Indices inB);
    bool isEqual(std::uint32_t inA, std::uint32_t inB) const;
    void match(std::uint32_t inA, std::uint32_t inB, bool isSame);
    std::vector<MessagePair> anchors(Indices inA, Indices inB, Signature signature) const;
    std::vector<MessagePair> sharedOnce(Indices inA, Indices inB, Signature signature) const;
    void matchLeft(Indices inA, Indices inB, Signature signature, bool isSame);
    void keepLonely();

    std::uint64_t content(const MessageStore& store, std::uint32_t index) const;
    std::uint64_t timeAndSequence(const MessageStore& store, std::uint32_t index) const;
    std::uint64_t time(const MessageStore& store, std::uint32_t index) const;

    const MessageStore& a;
    const MessageStore& b;
    std::vector<bool> takenA;    // is in a pair
    std::vector<bool> takenB;
    std::vector<MessagePair> matched;
    std::vector<std::uint32_t> lonelyA;
    std::vector<std::uint32_t> lonelyB;
};
