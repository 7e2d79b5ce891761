// Packed messages in hexadecimal, one a line, behind the time of reception if there is one.
#pragma once

#include "forms/PacketWriter.h"

class HexWriter : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override;
    void setEnvelope(const Envelope& envelope) override { received = envelope.received; }

private:
    std::optional<std::int64_t> received;
};
