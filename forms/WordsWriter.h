// Packed messages as words that a receiver recorded.
#pragma once

#include "forms/PacketWriter.h"

// Parity as the words have it in a stream, where they follow each other; data bits always upright.
class WordsWriter : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override;

private:
    std::uint32_t lastWord = 0;
};
