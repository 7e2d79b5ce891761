// Packed messages as the byte stream of the air.
#pragma once

#include "forms/PacketWriter.h"
#include "framing/StreamWriter.h"

class StreamPacketWriter : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override
    {
        return writer.append(packed, out);
    }

private:
    framing::StreamWriter writer;
};
