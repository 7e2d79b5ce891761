// One form of output: turns packed messages into bytes.
#pragma once

#include "forms/Envelope.h"

#include <cstdint>
#include <span>
#include <vector>

class PacketWriter {
public:
    virtual ~PacketWriter() = default;

    // Appends a packed message to `out`, every data bit as it is. Returns false, and appends
    // nothing, when `packed` does not begin with the preamble or has not the words that its header
    // declares: no reader would find it again.
    [[nodiscard]] virtual bool append(std::span<const std::uint8_t> packed,
                                      std::vector<std::uint8_t>& out) = 0;

    // What comes with the messages that are appended from now on, for forms that have a place for
    // it.
    virtual void setEnvelope(const Envelope&) {}
};
