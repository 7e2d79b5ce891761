#include "framing/Framer.h"
#include "framing/Header.h"
#include "framing/RTCM2_framing.h"
#include "framing/StreamWriter.h"
#include "framing/parity.h"

#include <new>

struct RTCM2_framer_s {
    framing::Framer framer;
};

namespace {

using framing::Verdict;

struct Said {
    Verdict verdict;
    const char* text;
};

// By their number in C.
constexpr Said verdicts[] = {
    {Verdict::accepted, "a message"},
    {Verdict::noPreamble, "no preamble where a message had to begin"},
    {Verdict::badParity, "bad parity"},
    {Verdict::cutOff, "the input ends inside it"},
    {Verdict::hidesOthers, "its words do not belong together"},
};

// Only these five are delivered.
std::int32_t numberOf(Verdict verdict)
{
    std::int32_t number = 0;
    while (verdicts[number].verdict != verdict) {
        ++number;
    }
    return number;
}

}    // namespace

RTCM2_framer_s* RTCM2_framer_new(void)
{
    try {
        return new RTCM2_framer_s;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void RTCM2_framer_free(RTCM2_framer_s* framer)
{
    delete framer;
}

std::int32_t RTCM2_framer_push(RTCM2_framer_s* framer, const std::uint8_t* bytes, std::size_t size)
{
    if (!framer->framer.takesBytes()) {
        return 0;
    }
    framer->framer.push({bytes, size});
    return 1;
}

void RTCM2_framer_finish(RTCM2_framer_s* framer)
{
    framer->framer.finish();
}

std::int32_t RTCM2_framer_next(RTCM2_framer_s* framer, RTCM2_frame_s* frame)
{
    const framing::Frame* const next = framer->framer.next();
    if (next == nullptr) {
        return 0;
    }
    frame->verdict = numberOf(next->verdict);
    frame->failed_word = next->failedWord;
    frame->number = next->number;
    frame->begin = next->beginOffset;
    frame->end = next->endOffset;
    frame->packed = next->bytes().data();
    frame->size = next->bytes().size();
    return 1;
}

std::uint32_t RTCM2_framer_words(const RTCM2_framer_s* framer)
{
    return static_cast<std::uint32_t>(framer->framer.frameWords());
}

std::int32_t RTCM2_framer_word(const RTCM2_framer_s* framer, std::uint32_t index,
                               RTCM2_word_s* word)
{
    if (index >= framer->framer.frameWords()) {
        return 0;
    }
    const framing::WordFacts facts = framer->framer.frameWord(index);
    word->byte = facts.byteOffset;
    word->bit = facts.bit;
    word->data = facts.data;
    word->good_parity = facts.hasGoodParity ? 1 : 0;
    word->inverted = facts.isInverted ? 1 : 0;
    word->received = facts.received;
    word->carrier_count = static_cast<std::uint32_t>(facts.carrierCount);
    for (std::size_t i = 0; i < facts.carrierCount; ++i) {
        word->carriers[i] = {facts.carriers[i].offset, facts.carriers[i].byte};
    }
    return 1;
}

void RTCM2_framer_counters(const RTCM2_framer_s* framer, RTCM2_framing_counters_s* counters)
{
    const framing::FramerCounters seen = framer->framer.counters();
    counters->bytes_read = seen.bytesRead;
    counters->bytes_skipped = seen.bytesSkipped;
    counters->bits_outside_messages = seen.bitsOutsideMessages;
}

const char* RTCM2_verdict_text(std::int32_t verdict)
{
    const bool known = verdict >= 0 && verdict < static_cast<std::int32_t>(std::size(verdicts));
    return known ? verdicts[verdict].text : nullptr;
}

std::int32_t RTCM2_read_header(const std::uint8_t* packed, std::size_t size,
                               RTCM2_framing_header_s* header)
{
    if (size < framing::headerWords * framing::bytesPerWord || packed[0] != framing::preamble) {
        return 0;
    }
    const framing::Header read = framing::headerOf({packed, size});
    *header = {read.type, read.station, read.zCount, read.sequence, read.dataWords, read.health};
    return 1;
}

std::uint32_t RTCM2_word_parity(std::uint32_t data, std::uint32_t last_bits)
{
    return framing::parityOf(data & framing::dataMask, (last_bits & 2) != 0, (last_bits & 1) != 0);
}

std::size_t RTCM2_write_message(const std::uint8_t* packed, std::size_t size,
                                std::uint32_t* last_bits, std::uint8_t* stream,
                                std::size_t capacity)
{
    const std::size_t needed = size / framing::bytesPerWord * framing::streamBytesPerWord;
    if (needed > capacity || !framing::isWholeMessage({packed, size})) {
        return 0;
    }
    *last_bits = framing::writeWords({packed, size}, *last_bits, stream) & 3;
    return needed;
}
