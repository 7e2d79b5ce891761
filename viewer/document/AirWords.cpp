#include "viewer/document/AirWords.h"

#include "framing/StreamWriter.h"

AirWord airWordOf(const framing::WordFacts& word)
{
    AirWord result{.byte = word.byteOffset,
                   .bit = word.bit,
                   .data = word.data,
                   .goodParity = word.hasGoodParity,
                   .inverted = word.isInverted,
                   .received = word.received};
    for (const framing::Carrier& carrier : std::span(word.carriers).first(word.carrierCount)) {
        result.carriers.push_back({carrier.offset, carrier.byte});
    }
    return result;
}

std::vector<AirWord> wordsToSend(std::span<const std::uint8_t> packed)
{
    std::vector<std::uint8_t> stream;
    framing::StreamWriter().append(packed, stream);
    framing::Framer framer;
    framer.push(stream);
    const framing::Frame* frame = framer.next();
    framer.finish();
    frame = frame != nullptr ? frame : framer.next();
    std::vector<AirWord> words;
    for (std::size_t i = 0; frame != nullptr && i < framer.frameWords(); ++i) {
        words.push_back(airWordOf(framer.frameWord(i)));
    }
    return words;
}
