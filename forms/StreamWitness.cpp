#include "forms/StreamWitness.h"

#include "forms/StreamReader.h"

void StreamWitness::look(std::span<const std::uint8_t> seen)
{
    framer.push(seen.subspan(lookedAt));
    lookedAt = seen.size();
    drain();
}

void StreamWitness::finish()
{
    framer.finish();
    drain();
}

std::unique_ptr<PacketReader> StreamWitness::makeReader() const
{
    return std::make_unique<StreamReader>();
}

// The words of a damaged or cut message vouch as well, as far as they are good.
void StreamWitness::drain()
{
    constexpr unsigned placesPerByte = 6;
    while (const framing::Frame* frame = framer.next()) {
        words += frame->wordCount;
        certain = certain || (words > 1 && isNoAccident(words, placesPerByte * frame->endOffset));
        if (frame->kind != framing::Frame::Kind::message) {
            words = 0;
        }
    }
}
