#include "viewer/document/AirWords.h"

#include "framing/RTCM2_framing.h"

#include <array>
#include <memory>
#include <new>

namespace {

struct FreeFramer {
    void operator()(RTCM2_framer_s* framer) const { RTCM2_framer_free(framer); }
};

AirWord airWordOf(const RTCM2_word_s& word, std::uint64_t first)
{
    AirWord result{.byte = first + word.byte,
                   .bit = word.bit,
                   .data = word.data,
                   .goodParity = word.good_parity != 0,
                   .inverted = word.inverted != 0,
                   .received = word.received};
    for (const RTCM2_carrier_s& carrier : std::span(word.carriers).first(word.carrier_count)) {
        result.carriers.push_back({first + carrier.position, carrier.value});
    }
    return result;
}

std::vector<AirWord> wordsOf(const RTCM2_framer_s* framer, std::uint64_t first)
{
    std::vector<AirWord> words;
    RTCM2_word_s word;
    for (std::uint32_t i = 0; RTCM2_framer_word(framer, i, &word) != 0; ++i) {
        words.push_back(airWordOf(word, first));
    }
    return words;
}

}    // namespace

std::vector<AirWord> airWordsAt(std::uint64_t begin, std::span<const std::uint8_t> bytes,
                                std::uint64_t first)
{
    const std::unique_ptr<RTCM2_framer_s, FreeFramer> framer(RTCM2_framer_new());
    if (framer == nullptr) {
        throw std::bad_alloc();
    }
    RTCM2_framer_push(framer.get(), bytes.data(), bytes.size());
    RTCM2_frame_s frame;
    for (bool isOver = false;; isOver = true) {
        while (RTCM2_framer_next(framer.get(), &frame) != 0) {
            if (first + frame.begin == begin) {
                return wordsOf(framer.get(), first);
            }
        }
        if (isOver) {
            return {};
        }
        RTCM2_framer_finish(framer.get());
    }
}

std::vector<AirWord> wordsToSend(std::span<const std::uint8_t> packed)
{
    std::array<std::uint8_t, RTCM2_WORDS_MAX * RTCM2_STREAM_WORD_BYTES> stream{};
    std::uint32_t lastBits = 0;
    const std::size_t size =
        RTCM2_write_message(packed.data(), packed.size(), &lastBits, stream.data(), stream.size());
    return airWordsAt(0, std::span(stream).first(size), 0);
}
