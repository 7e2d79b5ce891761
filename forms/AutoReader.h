// Finds out by itself which form the input has.
#pragma once

#include "forms/FormSearch.h"
#include "forms/PacketReader.h"

// Keeps the first bytes until their form is found, and has them read by the reader of that form. An
// input whose form is not found in the first megabyte, or before it ends, gives no frame but a
// problem.
class AutoReader : public PacketReader {
public:
    void push(std::span<const std::uint8_t> bytes) override;
    void finish() override { finished = true; }
    const framing::Frame* next() override;
    std::string damage() const override { return chosen ? chosen->damage() : std::string(); }
    std::span<const std::uint8_t> recorded() const override;
    std::vector<framing::WordFacts> words() const override
    {
        return chosen ? chosen->words() : std::vector<framing::WordFacts>();
    }
    const Envelope* envelope() const override { return chosen ? chosen->envelope() : nullptr; }
    std::uint64_t doneUpTo() const override { return chosen ? chosen->doneUpTo() : 0; }
    ReaderCounters counters() const override;
    std::string problem() const override { return problemText; }

private:
    void look();
    void conclude();

    // While undecided, and until the chosen reader has read what it has seen.
    std::unique_ptr<FormSearch> search = std::make_unique<FormSearch>();
    std::span<const std::uint8_t> pending;
    std::uint64_t bytesUnread = 0;    // of an input with a problem
    bool finished = false;
    std::unique_ptr<PacketReader> chosen;
    Certainty certainty = Certainty::unsure;
    std::string problemText;
};
