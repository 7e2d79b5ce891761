// Packed messages in hexadecimal, one a line.
#pragma once

#include "forms/PacketWriter.h"

class HexWriter : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override;
};
