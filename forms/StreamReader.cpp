#include "forms/StreamReader.h"

std::string StreamReader::damage() const
{
    switch (frame == nullptr ? framing::Verdict::undecided : frame->verdict) {
    case framing::Verdict::badParity:
        return "bad parity in word " + std::to_string(frame->failedWord);
    case framing::Verdict::noPreamble:
        return "no preamble where a message had to begin";
    default:
        return "its words do not belong together";
    }
}

std::vector<framing::WordFacts> StreamReader::words() const
{
    std::vector<framing::WordFacts> words(framer.frameWords());
    for (std::size_t i = 0; i < words.size(); ++i) {
        words[i] = framer.frameWord(i);
    }
    return words;
}

ReaderCounters StreamReader::counters() const
{
    constexpr unsigned bitsPerByte = 6;
    const framing::FramerCounters seen = framer.counters();
    return {.bytesRead = seen.bytesRead,
            .bytesSkipped = seen.bytesSkipped + seen.bitsOutsideMessages / bitsPerByte,
            .form = "stream"};
}
