// Framing through its C interface: messages out of streams, words, headers, writing.
#include "framing/RTCM2_framing.h"
#include "support/SlowFramer.h"
#include "support/StreamBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>

namespace {

using Sizes = std::vector<std::size_t>;

struct Found {
    std::vector<slow::Frame> frames;
    RTCM2_framing_counters_s counters{};

    std::vector<Bytes> messages() const
    {
        std::vector<Bytes> messages;
        for (const slow::Frame& frame : frames) {
            if (frame.verdict == "message") {
                messages.push_back(frame.packed);
            }
        }
        return messages;
    }
    std::size_t others() const { return frames.size() - messages().size(); }
};

// As the slow framer says it.
std::string textOf(const RTCM2_frame_s& frame)
{
    switch (frame.verdict) {
    case RTCM2_VERDICT_ACCEPTED:
        return "message";
    case RTCM2_VERDICT_BAD_PARITY:
        return "bad parity in word " + std::to_string(frame.failed_word);
    case RTCM2_VERDICT_CUT_OFF:
        return "cut off";
    default:
        return RTCM2_verdict_text(frame.verdict);
    }
}

// Each word of the frame against the bits of a stream that has no text.
void checkWords(const RTCM2_framer_s* framer, const RTCM2_frame_s& frame, const Bytes& stream)
{
    const std::uint32_t words = RTCM2_framer_words(framer);
    ASSERT_EQ(words, frame.size / 3 + (frame.failed_word > 0 ? 1 : 0));
    RTCM2_word_s word{};
    EXPECT_EQ(RTCM2_framer_word(framer, words, &word), 0);
    for (std::uint32_t i = 0; i < words; ++i) {
        ASSERT_EQ(RTCM2_framer_word(framer, i, &word), 1);
        if (frame.verdict != RTCM2_VERDICT_NO_PREAMBLE) {
            EXPECT_EQ(word.good_parity, i + 1 != frame.failed_word);
        }
        std::uint32_t sent = 0;
        std::size_t byte = word.byte;
        std::uint32_t carriers = 0;
        for (unsigned bit = word.bit, left = 30; left > 0; --left, ++bit) {
            for (; bit > 5 || stream[byte] >> 6 != 1; bit = bit > 5 ? bit - 6 : bit) {
                ++byte;
            }
            carriers += bit == 0 || left == 30 ? 1 : 0;
            EXPECT_EQ(word.carriers[carriers - 1].position, byte);
            EXPECT_EQ(word.carriers[carriers - 1].value, stream[byte]);
            sent = sent << 1 | (stream[byte] >> bit & 1U);
        }
        EXPECT_EQ(word.carrier_count, carriers);
        EXPECT_EQ(word.received, sent);
        EXPECT_EQ(word.data, (word.inverted != 0 ? sent ^ 0x3FFFFFFF : sent) >> 6);
        if (i < frame.size / 3) {
            const std::uint8_t* const packed = frame.packed + std::size_t{3} * i;
            EXPECT_EQ(word.data, packed[0] * 65536U + packed[1] * 256U + packed[2]);
        }
    }
}

std::size_t wholly()
{
    return 1000000;
}

Found read(const Bytes& stream, const std::function<std::size_t()>& pieceSize = wholly,
           bool hasText = true)
{
    RTCM2_framer_s* const framer = RTCM2_framer_new();
    Found found;
    RTCM2_frame_s frame{};
    const auto take = [&] {
        while (RTCM2_framer_next(framer, &frame) != 0) {
            found.frames.push_back({textOf(frame), frame.begin, frame.end,
                                    Bytes(frame.packed, frame.packed + frame.size)});
            EXPECT_EQ(frame.number, found.frames.size());
            if (!hasText) {
                checkWords(framer, frame, stream);
            }
        }
        EXPECT_EQ(RTCM2_framer_words(framer), 0U);
    };
    for (std::size_t at = 0; at < stream.size();) {
        const std::size_t size = std::min(pieceSize(), stream.size() - at);
        EXPECT_EQ(RTCM2_framer_push(framer, &stream[at], size), 1);
        EXPECT_EQ(RTCM2_framer_push(framer, &stream[at], size), 0) << "the first is unread";
        take();
        at += size;
    }
    RTCM2_framer_finish(framer);
    EXPECT_EQ(RTCM2_framer_push(framer, nullptr, 0), 0) << "after the end";
    take();
    RTCM2_framer_counters(framer, &found.counters);
    EXPECT_EQ(found.counters.bytes_read, stream.size());
    RTCM2_framer_free(framer);
    return found;
}

Bytes textMessage(std::string_view text, unsigned station)
{
    Bytes message = {0x66,
                     static_cast<std::uint8_t>(16 << 2 | station >> 8),
                     static_cast<std::uint8_t>(station),
                     0x10,
                     0,
                     0};
    message.insert(message.end(), text.begin(), text.end());
    message.resize((message.size() + 2) / 3 * 3);
    message[5] = static_cast<std::uint8_t>((message.size() / 3 - 2) << 3);
    return message;
}

TEST(Words, ParityIsThatOfTheEquations)
{
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::uint32_t data = random() & 0xFFFFFF;
        const std::uint32_t last = random() & 3;
        ASSERT_EQ(RTCM2_word_parity(data, last), referenceParity(data, last > 1, last % 2 == 1));
    }
}

TEST(Writing, GivesTheStreamThatBitsGive)
{
    std::mt19937 random(2);
    StreamBuilder expected;
    Bytes stream(1000);
    std::size_t size = 0;
    std::uint32_t lastBits = 0;
    for (const std::size_t dataWords : Sizes{0, 1, 31, 5, 17}) {
        Bytes message = expected.addRandom(dataWords, random);
        const std::size_t needed = message.size() / 3 * 5;
        const auto write = [&](std::size_t capacity) {
            return RTCM2_write_message(message.data(), message.size(), &lastBits, &stream[size],
                                       capacity);
        };
        EXPECT_EQ(write(needed - 1), 0U);
        message[0] ^= 1;
        EXPECT_EQ(write(needed), 0U) << "no preamble";
        message[0] ^= 1;
        message[5] ^= 8;
        EXPECT_EQ(write(needed), 0U) << "another length";
        message[5] ^= 8;
        EXPECT_EQ(write(needed), needed);
        size += needed;
    }
    stream.resize(size);
    EXPECT_EQ(stream, expected.bytes());
}

TEST(Header, IsReadFromAPackedMessage)
{
    const Bytes packed = {0x66, 0x27, 0x72, 0xBB, 0x7E, 0xFD};
    RTCM2_framing_header_s header{};
    ASSERT_EQ(RTCM2_read_header(packed.data(), packed.size(), &header), 1);
    EXPECT_EQ(header.type, 9U);
    EXPECT_EQ(header.station, 882U);
    EXPECT_EQ(header.z_count, 5999U);
    EXPECT_EQ(header.sequence, 6U);
    EXPECT_EQ(header.data_words, 31U);
    EXPECT_EQ(header.health, 5U);
    EXPECT_EQ(RTCM2_read_header(packed.data(), 5, &header), 0);
    EXPECT_EQ(RTCM2_read_header(packed.data() + 1, 5, &header), 0);
    EXPECT_EQ(RTCM2_verdict_text(5), nullptr);
}

// Texts in which bits look like the header of the station that sends them, alone, one after the
// other, and with lines of text between them, at any bit phase.
TEST(Framer, LosesNoMessageToWhatItsOwnTextLooksLike)
{
    struct Case {
        std::string_view text;
        unsigned station;
    };
    for (const Case& each : {Case{" do not use for navigation", 882}, Case{"frequency", 613}}) {
        for (const std::string_view line :
             {"", "$GPGGA,092750,5321.68,N,00630.33,W,1,8,1.03,61.7,M,55.2,M,,*76\r\n",
              "ICY 200 OK\r\n\r\n", "\r\n!AIVDM,1,1,,A,177KQJ5000G?tO`K>RA1wUbN0TKH,0*5C\r\n",
              "Hello world 5\r\nError 1\r\n"}) {
            for (unsigned phase = 0; phase < 6; ++phase) {
                StreamBuilder builder;
                builder.addBits(0, phase);
                const Bytes message = textMessage(each.text, each.station);
                Sizes ends;
                for (int i = 0; i < 5; ++i) {
                    builder.addMessage(message);
                    ends.push_back(builder.bitCount() / 6);
                }
                Bytes stream = builder.bytes();
                for (std::size_t i = ends.size(); i-- > 0;) {
                    const auto end = std::min(ends[i] + (phase > 0 ? 1 : 0), stream.size());
                    stream.insert(stream.begin() + static_cast<std::ptrdiff_t>(end), line.begin(),
                                  line.end());
                }
                const Found found = read(stream);
                EXPECT_EQ(found.messages(), std::vector<Bytes>(5, message))
                    << each.text << " '" << line << "' phase " << phase;
                EXPECT_EQ(found.others(), 0U) << "'" << line << "' phase " << phase;
            }
        }
    }
}

// A capture may begin with a message whatever the two bits were that stood before it, and a message
// that is expected comes before anything else.
TEST(Framer, DeliversAsSoonAsAMessageIsComplete)
{
    std::mt19937 random(4);
    for (std::uint32_t previous = 0; previous < 4; ++previous) {
        StreamBuilder builder;
        builder.addBits(previous, 2);
        builder.addRandom(3, random);
        builder.addRandom(2, random);
        builder.erase(0, 2);
        const Bytes stream = builder.bytes();
        RTCM2_framer_s* const framer = RTCM2_framer_new();
        RTCM2_frame_s frame{};
        for (const auto& [begin, end] : {std::pair(0, 25), std::pair(25, 45)}) {
            RTCM2_framer_push(framer, &stream[static_cast<std::size_t>(begin)],
                              static_cast<std::size_t>(end - begin));
            EXPECT_EQ(RTCM2_framer_next(framer, &frame), 1) << "previous bits " << previous;
            EXPECT_EQ(RTCM2_framer_next(framer, &frame), 0);
        }
        RTCM2_framer_free(framer);
    }
}

// Any bits lost anywhere, across boundaries and at them: every message of which nothing is missing
// is found. What was never sent is accepted only if the pieces of a message fit by chance.
TEST(Framer, FindsEveryWholeMessageAroundLostBits)
{
    std::size_t neverSent = 0;
    constexpr unsigned rounds = 1000;
    for (unsigned seed = 0; seed < rounds; ++seed) {
        std::mt19937 random(seed);
        StreamBuilder builder;
        builder.addNoise(seed % 30, random);
        Sizes begins;
        std::vector<Bytes> sent;
        for (int i = 0; i < 8; ++i) {
            begins.push_back(builder.bitCount());
            sent.push_back(builder.addRandom(random() % 10, random));
        }
        begins.push_back(builder.bitCount());
        const std::size_t from = seed % 4 == 0 ? begins[2 + random() % 4]
                                               : begins[2] + random() % (begins[6] - begins[2]);
        const std::size_t count = std::min<std::size_t>(1 + random() % 500, begins[8] - from);
        builder.erase(from, count);
        const Bytes stream = builder.bytes();
        const std::vector<Bytes> messages = read(stream, wholly, false).messages();
        for (std::size_t i = 0; i < sent.size(); ++i) {
            if (begins[i + 1] <= from || begins[i] >= from + count) {
                ASSERT_EQ(std::count(messages.begin(), messages.end(), sent[i]), 1)
                    << "seed " << seed;
            }
        }
        neverSent += static_cast<std::size_t>(
            std::count_if(messages.begin(), messages.end(), [&](const Bytes& message) {
                return std::find(sent.begin(), sent.end(), message) == sent.end();
            }));
    }
    EXPECT_LE(neverSent, rounds / 100);
}

// Messages of two stations, with many words that look like headers of one of them, and with damage
// of every kind: all is as in the slow framer, however the stream is cut.
TEST(Framer, AgreesWithTheSlowFramer)
{
    for (unsigned seed = 0; seed < 1500; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](std::size_t limit) { return random() % limit; };
        StreamBuilder builder;
        builder.addNoise(seed % 3 * below(40), random);
        // Some streams are longer than what the framer keeps of them.
        const unsigned count = seed % 100 == 0 ? 600 : 12;
        for (unsigned i = 0; i < count; ++i) {
            Bytes message = makeMessage(below(10), random, 268 + i % 3 % 2);
            message[3] = 0;
            message[4] = static_cast<std::uint8_t>(i % 8);
            for (std::size_t at = 6; at < message.size(); at += 3) {
                if (below(3) == 0) {
                    const Bytes header = makeMessage(below(10), random, 268 + i % 2);
                    const auto end = std::min(at + 6, message.size());
                    std::copy_n(header.begin(), end - at, &message[at]);
                }
            }
            builder.addMessage(message);
        }
        for (std::size_t changes = below(count / 2); changes > 0 && builder.bitCount() > 900;
             --changes) {
            const std::size_t bit = below(builder.bitCount() - 400);
            builder.flip(bit);
            if (below(2) == 0) {
                builder.erase(bit - bit % 30, below(2) == 0 ? 30 * below(12) : below(300));
            }
        }
        Bytes stream = builder.bytes();
        constexpr std::string_view line = "\r\nEnd 5\r\nZ$GPGSA,A,3,10,`*0A\n";
        for (std::size_t lines = below(3); lines > 0; --lines) {
            const auto at = static_cast<std::ptrdiff_t>(below(stream.size()) / 5 * 5);
            stream.insert(stream.begin() + at, line.begin(), line.end());
        }
        const Found found = read(stream, [&] { return 1 + below(seed % 2 == 0 ? 12 : 200); });
        const slow::Framed slowly = slow::frame(stream);
        ASSERT_EQ(found.frames, slowly.frames) << "seed " << seed;
        ASSERT_EQ(found.counters.bytes_skipped, slowly.bytesSkipped) << "seed " << seed;
        ASSERT_EQ(found.counters.bits_outside_messages, slowly.bitsOutside) << "seed " << seed;
    }
}

}    // namespace
