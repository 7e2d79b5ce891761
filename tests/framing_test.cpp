// Framing: parity, finding messages in byte streams, writing them.
#include "framing/Framer.h"
#include "framing/StreamWriter.h"
#include "framing/parity.h"
#include "support/ReadFrames.h"
#include "support/StreamBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace framing {
namespace {

using Kind = Frame::Kind;
using Sizes = std::vector<std::size_t>;

FoundInput read(const Bytes& stream)
{
    return readInput(InputForm::stream, stream);
}

TEST(Parity, AgreesWithTheEquations)
{
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::uint32_t data = random() & dataMask;
        const std::uint32_t previous = random() & 3;
        const bool d29 = (previous & 2) != 0;
        const bool d30 = (previous & 1) != 0;
        ASSERT_EQ(parityOf(data, d29, d30), referenceParity(data, d29, d30));

        const std::uint32_t word = encodeWord(data, previous);
        ASSERT_EQ(word & 0x3F, referenceParity(data, d29, d30));
        const std::uint32_t received = previous << 30 | word;
        ASSERT_TRUE(hasGoodParity(received));
        ASSERT_EQ(dataOf(received), data);
        // Up to three wrong bits among the 32 are always noticed.
        const std::uint32_t wrong = 1U << random() % 32 | 1U << random() % 32 | 1U << random() % 32;
        ASSERT_FALSE(hasGoodParity(received ^ wrong));
    }
}

TEST(StreamWriter, KeepsTheParityStateFromMessageToMessage)
{
    std::mt19937 random(2);
    StreamBuilder expected;
    StreamWriter writer;
    Bytes stream;
    for (const std::size_t dataWords : Sizes{0, 1, 31, 5, 17}) {
        const Bytes message = expected.addRandom(dataWords, random);
        ASSERT_TRUE(writer.append(message, stream));
    }
    EXPECT_EQ(stream, expected.bytes());
}

// Messages of all sizes behind any number of leading bits, with positions and counters.
TEST(Framer, FindsMessagesAtEveryBitPhase)
{
    for (unsigned phase = 0; phase < bitsPerWord; ++phase) {
        std::mt19937 random(100 + phase);
        StreamBuilder builder;
        builder.addNoise(phase, random);
        std::vector<FoundFrame> expected;
        for (const std::size_t dataWords : Sizes{5, 31, 0, 1, 30, 0, 12}) {
            const std::size_t begin = builder.bitCount() / 6;
            const Bytes message = builder.addRandom(dataWords, random);
            expected.push_back({.kind = Kind::message,
                                .begin = begin,
                                .end = (builder.bitCount() + 5) / 6,
                                .bytes = message,
                                .number = expected.size() + 1});
        }
        const FoundInput found = read(builder.bytes());
        EXPECT_EQ(found.frames, expected) << "phase " << phase;
        EXPECT_EQ(found.counters.bytesRead, builder.bytes().size());
        EXPECT_EQ(found.counters.bytesSkipped, (phase + 5) / 6);
    }
}

// A capture may begin with a message whatever the two bits were that stood before it.
TEST(Framer, FindsAMessageAtTheVeryStartWithoutWaitingForMore)
{
    std::mt19937 random(4);
    for (std::uint32_t previous = 0; previous < 4; ++previous) {
        StreamBuilder builder;
        builder.addBits(previous, 2);
        const Bytes message = builder.addRandom(3, random);
        builder.erase(0, 2);
        const Bytes stream = builder.bytes();
        Framer framer;
        framer.push(stream);
        const Frame* const frame = framer.next();
        ASSERT_NE(frame, nullptr) << "previous bits " << previous;
        EXPECT_EQ(Bytes(frame->bytes().begin(), frame->bytes().end()), message);
    }
}

// Words that look like headers are no reason to doubt a message in a stream that has no damage.
TEST(Framer, LosesNothingOfALongCleanStream)
{
    std::mt19937 random(13);
    StreamWriter writer;
    Bytes stream;
    std::vector<Bytes> messages;
    for (std::size_t i = 0; i < 20000; ++i) {
        // Words that begin with preambles, and half of these with the last station as well.
        Bytes message = makeMessage(20, random, 268 + random() % 2);
        const std::size_t word = 2 + random() % 20;
        message[word * bytesPerWord] = preamble;
        message[word * bytesPerWord + 1] = 1;
        message[word * bytesPerWord + 2] = 12;
        ASSERT_TRUE(writer.append(message, stream));
        messages.push_back(message);
    }
    const FoundInput found = read(stream);
    EXPECT_TRUE(found.messages() == messages);
    EXPECT_EQ(found.frames.size(), messages.size());
}

TEST(Framer, SkipsTextAnywhere)
{
    std::mt19937 random(5);
    StreamBuilder builder;
    builder.addNoise(3, random);
    for (std::size_t dataWords = 0; dataWords < 8; ++dataWords) {
        builder.addRandom(dataWords, random);
    }
    const Bytes plain = builder.bytes();
    Bytes stream;
    std::vector<std::size_t> places;    // of the bytes of `plain` in `stream`
    for (const std::uint8_t byte : plain) {
        const std::string_view text = random() % 2 == 0 ? "\r\n" : "$12:34 \x80\xFF* ";
        if (random() % 3 == 0) {
            stream.insert(stream.end(), text.begin(), text.end());
        }
        places.push_back(stream.size());
        stream.push_back(byte);
    }
    FoundInput expected = read(plain);
    ASSERT_EQ(expected.frames.size(), 8U);
    for (FoundFrame& frame : expected.frames) {
        frame.begin = places[frame.begin];
        frame.end = places[frame.end - 1] + 1;
    }
    const FoundInput found = read(stream);
    EXPECT_EQ(found.frames, expected.frames);
    EXPECT_EQ(found.counters.bytesSkipped,
              expected.counters.bytesSkipped + stream.size() - plain.size());
}

// Noise, text, damage and good messages, enough to go round the window many times.
TEST(Framer, GivesTheSameHoweverTheStreamIsCut)
{
    std::mt19937 random(6);
    StreamBuilder builder;
    for (std::size_t i = 0; i < 4000; ++i) {
        const std::size_t before = builder.bitCount();
        builder.addRandom(random() % 32, random);
        if (random() % 4 == 0) {
            builder.flip(before + random() % (builder.bitCount() - before));
        }
        if (random() % 8 == 0) {
            builder.addNoise(random() % 400, random);
        }
    }
    Bytes stream;
    for (const std::uint8_t byte : builder.bytes()) {
        stream.push_back(byte);
        if (random() % 40 == 0) {
            stream.push_back('\n');
        }
    }
    const FoundInput whole = read(stream);
    ASSERT_GT(whole.messages().size(), 2500U);
    ASSERT_GT(whole.damaged(), 500);
    for (const auto& pieceSize : waysToCut()) {
        const FoundInput found = readInput(InputForm::stream, stream, pieceSize);
        EXPECT_TRUE(found.frames == whole.frames);
        EXPECT_EQ(found.counters.bytesSkipped, whole.counters.bytesSkipped);
    }
}

// Every bit of a message in turn: the neighbours stay, the message is reported as damaged in its
// place, and nothing that was not sent is accepted.
TEST(Framer, NoticesEverySingleBitError)
{
    for (const std::size_t dataWords : Sizes{0, 5, 31}) {
        std::mt19937 random(static_cast<unsigned>(dataWords));
        StreamBuilder builder;
        builder.addNoise(11, random);
        std::vector<Bytes> good = {builder.addRandom(4, random)};
        const std::size_t begin = builder.bitCount();
        builder.addRandom(dataWords, random);
        const std::size_t end = builder.bitCount();
        good.push_back(builder.addRandom(6, random));
        good.push_back(builder.addRandom(0, random));
        for (std::size_t bit = begin; bit < end; ++bit) {
            builder.flip(bit);
            const FoundInput found = read(builder.bytes());
            builder.flip(bit);
            ASSERT_EQ(found.messages(), good) << "bit " << bit - begin;
            const FoundFrame& damaged = found.frames.at(1);
            ASSERT_EQ(damaged.kind, Kind::damaged);
            ASSERT_EQ(damaged.begin, begin / 6);
            // The last two bits of a word enter the next one as well, but fail in their own first.
            const std::size_t word = (bit - begin) / bitsPerWord;
            ASSERT_EQ(damaged.damage, bit - begin < 8
                                          ? "no preamble where a message had to begin"
                                          : "bad parity in word " + std::to_string(word + 1));
            ASSERT_EQ(damaged.bytes.size(), word * bytesPerWord);
            ASSERT_EQ(damaged.end, (begin + (word + 1) * bitsPerWord + 5) / 6);
        }
    }
}

// Any bits lost anywhere, across boundaries and at them: every message of which nothing is missing
// is found. What was never sent is accepted only if the pieces of a message fit by chance.
TEST(Framer, FindsEveryWholeMessageAroundLostBits)
{
    std::size_t neverSent = 0;
    constexpr unsigned rounds = 3000;
    for (unsigned seed = 0; seed < rounds; ++seed) {
        std::mt19937 random(seed);
        StreamBuilder builder;
        builder.addNoise(seed % 30, random);
        std::vector<std::size_t> begins;
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
        const std::vector<Bytes> found = read(builder.bytes()).messages();
        for (std::size_t i = 0; i < sent.size(); ++i) {
            if (begins[i + 1] <= from || begins[i] >= from + count) {
                ASSERT_EQ(std::count(found.begin(), found.end(), sent[i]), 1) << "seed " << seed;
            }
        }
        neverSent += static_cast<std::size_t>(
            std::count_if(found.begin(), found.end(), [&](const Bytes& message) {
                return std::find(sent.begin(), sent.end(), message) == sent.end();
            }));
    }
    EXPECT_LE(neverSent, rounds / 100);
}

// A damaged message of 12 words in which the third data word reads like a header. All words from
// there on are good, also those of the messages after it, over which it may reach.
TEST(Framer, IsNotLedAstrayByAHeaderInsideADamagedMessage)
{
    struct Case {
        const char* what;
        std::size_t decoyWords;
        std::size_t flippedWord;
    };
    // The decoy begins with word 5 of 12; messages of 7, 4 and 9 words follow.
    const Case cases[] = {
        {"ends inside the message", 3, 1}, {"ends inside the next one", 11, 1},
        {"ends inside the third", 25, 0},  {"ends with the next one", 15, 3},
        {"ends with the second", 19, 0},   {"ends with the third", 28, 1},
    };
    for (const Case& decoy : cases) {
        for (const unsigned stationStep : {0U, 1U}) {
            SCOPED_TRACE(decoy.what);
            std::mt19937 random(9);
            StreamBuilder builder;
            std::vector<Bytes> good = {builder.addRandom(6, random, 100)};
            Bytes message = makeMessage(10, random);
            message[4 * 3] = preamble;
            message[5 * 3 + 2] = static_cast<std::uint8_t>((decoy.decoyWords - 2) << 3);
            const std::size_t begin = builder.bitCount();
            builder.addMessage(message);
            for (const std::size_t dataWords : Sizes{5, 2, 7, 3}) {
                const auto station = static_cast<unsigned>(100 + good.size() * stationStep);
                good.push_back(builder.addRandom(dataWords, random, station));
            }
            builder.flip(begin + decoy.flippedWord * bitsPerWord + 13);
            const FoundInput found = read(builder.bytes());
            EXPECT_EQ(found.messages(), good);
            EXPECT_EQ(found.damaged(), 1);
        }
    }
}

// As many words are missing as the next message has, and the pieces fit: the message after the hole
// would be taken for the missing part, as the one behind it begins where both say.
TEST(Framer, DoesNotTakeTheNextMessageForMissingWords)
{
    std::mt19937 random(60);
    std::vector<Bytes> messages;
    for (const std::size_t dataWords : Sizes{4, 13, 5, 3}) {
        Bytes message = makeMessage(dataWords, random);
        message[3] = 0x5E;
        message[4] = static_cast<std::uint8_t>(0x90 | (6 + messages.size()) % 8);
        messages.push_back(message);
    }
    messages[1].resize(messages[1].size() - messages[2].size());
    StreamBuilder builder;
    for (const Bytes& message : messages) {
        builder.addMessage(message);
    }
    messages.erase(messages.begin() + 1);
    const FoundInput found = read(builder.bytes());
    EXPECT_EQ(found.messages(), messages);
    EXPECT_EQ(found.damaged(), 1);
    EXPECT_EQ(found.frames.at(1).damage, "its words do not belong together");
}

// What counts as damaged or truncated, and what does not.
TEST(Framer, ReportsTheEndOfTheInputInsideAMessage)
{
    std::mt19937 random(10);
    StreamBuilder builder;
    const Bytes first = builder.addRandom(3, random);
    builder.addRandom(4, random);
    const Bytes stream = builder.bytes();
    for (std::size_t size = 25; size < stream.size(); ++size) {
        Bytes cutStream = stream;
        cutStream.resize(size);
        const FoundInput found = read(cutStream);
        ASSERT_EQ(found.messages(), std::vector<Bytes>{first});
        // Expected there, one good word is enough.
        ASSERT_EQ(found.frames.size(), size < 30 ? 1U : 2U) << size;
        if (size >= 30) {
            const FoundFrame& cut = found.frames.at(1);
            EXPECT_EQ(cut.kind, Kind::truncated);
            EXPECT_EQ(cut.begin, 25U);
            EXPECT_EQ(cut.end, size);
            EXPECT_EQ(cut.bytes.size(), (size - 25) / 5 * 3);
        }
    }
}

TEST(Framer, ReportsDamageInASearchOnlyBehindAGoodHeader)
{
    for (const std::size_t word : Sizes{0, 1, 2, 6}) {
        std::mt19937 random(11);
        StreamBuilder builder;
        builder.addNoise(8, random);
        builder.addRandom(5, random);
        const Bytes next = builder.addRandom(1, random);
        builder.flip(8 + word * bitsPerWord + 3);
        const FoundInput found = read(builder.bytes());
        EXPECT_EQ(found.messages(), std::vector<Bytes>{next});
        EXPECT_EQ(found.damaged(), word < 2 ? 0 : 1) << "word " << word;
    }
}

TEST(Framer, FindsLittleInNoise)
{
    std::mt19937 random(12);
    StreamBuilder builder;
    builder.addNoise(6000000, random);
    // A header is good by chance once in 2^18 bits, and few of them declare few words.
    const FoundInput found = read(builder.bytes());
    EXPECT_LE(found.messages().size(), 3U);
    EXPECT_LE(found.damaged(), 50);
}

}    // namespace
}    // namespace framing
