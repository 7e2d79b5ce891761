// Words with good parity in a byte stream.
#pragma once

#include "forms/Witness.h"
#include "framing/Framer.h"

class StreamWitness : public Witness {
public:
    void look(std::span<const std::uint8_t> seen) override;
    void finish() override;
    bool isCertain() const override { return certain; }
    bool vouches() const override { return true; }
    std::unique_ptr<PacketReader> makeReader(std::uint64_t firstByte) const override;

private:
    void drain();

    framing::Framer framer;
    std::size_t lookedAt = 0;
    std::size_t words = 0;    // in a row
    bool certain = false;
};
