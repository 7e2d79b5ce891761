// Finds out by itself which form the input has.
#pragma once

#include "forms/InputForm.h"

#include <vector>

// Keeps the first bytes and lets the readers of all forms try them, until one form is certain: by
// its first good message where parity or digits vouch for it, or where nothing speaks for another
// form; else by several in a row. When nothing has decided after some KB or at the end, the form
// with the most to show for itself is taken, and a stream where there is none. Which form that is
// depends on the bytes alone, not on how they are cut into pushes.
class AutoReader : public PacketReader {
public:
    AutoReader();
    ~AutoReader() override;

    void push(std::span<const std::uint8_t> bytes) override;
    void finish() override;
    const framing::Frame* next() override;
    std::string damage() const override { return chosen ? chosen->damage() : std::string(); }
    std::span<const std::uint8_t> recorded() const override;
    ReaderCounters counters() const override;

private:
    struct Trial;

    void tryNextByte();
    void drain(Trial& trial);
    bool isCertain(const Trial& trial) const;
    bool mayBeStream(const Trial& trial) const;
    InputForm likeliestForm() const;
    unsigned messagesNeeded(const Trial& trial) const;
    void decide(InputForm form);

    std::vector<Trial> trials;
    std::vector<std::uint8_t> seen;    // while undecided, and until the chosen reader has read it
    std::size_t streamBytes = 0;       // of those, how many have the form of a stream's bytes
    std::span<const std::uint8_t> pending;
    bool finished = false;
    std::unique_ptr<PacketReader> chosen;
};
