#include "forms/StreamReader.h"

std::string StreamReader::damage() const
{
    if (frame == nullptr || frame->failedWord == 0) {
        return "its words do not belong together";
    }
    return "bad parity in word " + std::to_string(frame->failedWord);
}

ReaderCounters StreamReader::counters() const
{
    constexpr unsigned bitsPerByte = 6;
    const framing::FramerCounters seen = framer.counters();
    return {.bytesRead = seen.bytesRead,
            .bytesSkipped = seen.bytesSkipped + seen.bitsOutsideMessages / bitsPerByte,
            .form = "stream"};
}
