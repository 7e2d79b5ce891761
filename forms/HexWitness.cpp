#include "forms/HexWitness.h"

void HexWitness::look(std::span<const std::uint8_t> seen)
{
    reader.push(seen.subspan(lookedAt));
    lookedAt = seen.size();
    drain();
}

void HexWitness::finish()
{
    reader.finish();
    drain();
}

std::unique_ptr<PacketReader> HexWitness::makeReader(std::uint64_t firstByte) const
{
    return std::make_unique<HexReader>(firstByte);
}

void HexWitness::drain()
{
    using Kind = framing::Frame::Kind;
    while (const framing::Frame* frame = reader.next()) {
        certain = certain || frame->kind == Kind::message;
        hasDamage = hasDamage || frame->kind == Kind::damaged;
        cutOff = frame->kind == Kind::truncated && frame->wordCount >= framing::headerWords;
    }
}
