// Packed messages as AIS message 17, in sentences.
#pragma once

#include "forms/PacketWriter.h"

#include <string>

// Sentences of at most 82 characters with their line end. The envelope has to name the sender;
// without one, nothing is appended. A time of reception stands in a tag block before the first
// sentence: in seconds, or in milliseconds where it has some. Of bits that were not heard none is
// written.
class AisWriter : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override;
    void setEnvelope(const Envelope& given) override { envelope = given; }

private:
    void appendTagBlock(std::string& text) const;

    Envelope envelope;
    unsigned sequence = 0;    // of the next message of several sentences
};
