#include "forms/StreamWitness.h"

#include "forms/StreamReader.h"
#include "forms/UnitForm.h"

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

std::unique_ptr<PacketReader> StreamWitness::makeReader(std::uint64_t firstByte) const
{
    return std::make_unique<StreamReader>(firstByte);
}

// The good words of a damaged or cut message vouch as well, but its number of words does not, which
// makes one word less.
void StreamWitness::drain()
{
    constexpr unsigned placesPerByte = 6;
    while (const framing::Frame* frame = framer.next()) {
        const bool isWhole = frame->kind == framing::Frame::Kind::message;
        const std::span<const std::uint8_t> bytes = frame->bytes();
        words += wordsThatTell(frame->wordCount, [&](std::size_t word) {
            return packedUnits.data(&bytes[word * framing::bytesPerWord]);
        });
        const std::size_t vouching = words - (isWhole || words == 0 ? 0 : 1);
        certain = certain || isNoAccident(vouching, placesPerByte * frame->endOffset);
        if (!isWhole) {
            words = 0;
        }
    }
}
