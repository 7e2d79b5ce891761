// Sentences of AIS with good checksums.
#pragma once

#include "forms/AisReader.h"
#include "forms/Witness.h"

// A message in them is certain. Sentences of other messages may stand between those of any other
// form, so that they tell the form only where nothing else is found.
class AisWitness : public Witness {
public:
    void look(std::span<const std::uint8_t> seen) override;
    void finish() override;
    bool isCertain() const override { return certain; }
    bool vouches() const override { return true; }
    std::unique_ptr<PacketReader> makeReader(std::uint64_t firstByte) const override;

    bool hasSentences() const { return reader.hasGoodSentence(); }

private:
    void drain();

    AisReader reader;
    std::size_t lookedAt = 0;
    bool certain = false;
};
