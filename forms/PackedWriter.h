// Packed messages one after another, as they are.
#pragma once

#include "forms/PacketWriter.h"

class PackedWriter : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override;
};
