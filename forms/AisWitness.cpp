#include "forms/AisWitness.h"

void AisWitness::look(std::span<const std::uint8_t> seen)
{
    reader.push(seen.subspan(lookedAt));
    lookedAt = seen.size();
    drain();
}

void AisWitness::finish()
{
    reader.finish();
    drain();
}

std::unique_ptr<PacketReader> AisWitness::makeReader(std::uint64_t firstByte) const
{
    return std::make_unique<AisReader>(firstByte);
}

void AisWitness::drain()
{
    while (const framing::Frame* frame = reader.next()) {
        certain = certain || frame->kind == framing::Frame::Kind::message;
    }
}
