// Lines of hexadecimal digits that are exactly as long as the message in them says.
#pragma once

#include "forms/HexReader.h"
#include "forms/Witness.h"

class HexWitness : public Witness {
public:
    void look(std::span<const std::uint8_t> seen) override;
    void finish() override;
    bool isCertain() const override { return certain; }
    bool fits() const override { return cutOff && !hasDamage; }
    bool vouches() const override { return true; }
    std::unique_ptr<PacketReader> makeReader(std::uint64_t firstByte) const override;

private:
    void drain();

    HexReader reader;
    std::size_t lookedAt = 0;
    bool certain = false;
    bool cutOff = false;       // the input ends inside a line that begins with a header
    bool hasDamage = false;    // lines that are something else
};
