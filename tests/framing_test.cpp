// Framing: parity, finding messages in byte streams, writing them.
#include "Framer.h"
#include "StreamWriter.h"
#include "parity.h"
#include "support/StreamBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace framing {
namespace {

using Sizes = std::vector<std::size_t>;

struct Found {
    Frame::Kind kind;
    Bytes bytes;
    std::uint64_t number;
    std::uint64_t begin;
    std::uint64_t end;
    unsigned failedWord;

    bool operator==(const Found&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Found& found)
{
    return out << "{kind " << static_cast<int>(found.kind) << ", " << found.bytes.size()
               << " bytes, no. " << found.number << ", at " << found.begin << ".." << found.end
               << ", word " << found.failedWord << '}';
}

struct Result {
    std::vector<Found> frames;
    FramerCounters counters;

    std::vector<Bytes> messages() const
    {
        std::vector<Bytes> messages;
        for (const Found& frame : frames) {
            if (frame.kind == Frame::Kind::message) {
                messages.push_back(frame.bytes);
            }
        }
        return messages;
    }
};

void collect(Framer& framer, std::vector<Found>& frames)
{
    while (const Frame* frame = framer.next()) {
        const auto bytes = frame->bytes();
        frames.push_back({frame->kind, Bytes(bytes.begin(), bytes.end()), frame->number,
                          frame->beginOffset, frame->endOffset, frame->failedWord});
    }
}

Result read(const Bytes& stream, const std::function<std::size_t()>& chunk)
{
    Framer framer;
    Result result;
    for (std::size_t at = 0; at < stream.size();) {
        // A block of the exact size, so that a sanitizer sees any read beyond it.
        const std::size_t size = std::min(chunk(), stream.size() - at);
        const auto from = stream.begin() + static_cast<std::ptrdiff_t>(at);
        const Bytes block(from, from + static_cast<std::ptrdiff_t>(size));
        framer.push(block);
        collect(framer, result.frames);
        at += size;
    }
    framer.finish();
    collect(framer, result.frames);
    result.counters = framer.counters();
    return result;
}

Result read(const Bytes& stream)
{
    return read(stream, [&] { return stream.size(); });
}

void append(Bytes& stream, std::string_view text)
{
    stream.insert(stream.end(), text.begin(), text.end());
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
        const Bytes message = makeMessage(dataWords, random);
        expected.addMessage(message);
        ASSERT_TRUE(writer.append(message, stream));
    }
    EXPECT_EQ(stream, expected.bytes());
}

TEST(StreamWriter, EndsLinesAndRefusesWhatNoReaderWouldFind)
{
    std::mt19937 random(3);
    const Bytes message = makeMessage(2, random);
    StreamWriter writer(StreamWriter::LineEnds::afterEachMessage);
    Bytes stream;
    ASSERT_TRUE(writer.append(message, stream));
    EXPECT_EQ(stream.size(), 22U);
    EXPECT_EQ(Bytes(stream.end() - 2, stream.end()), (Bytes{'\r', '\n'}));

    Bytes shorter(message.begin(), message.end() - 3);
    Bytes broken(message.begin(), message.end() - 1);
    Bytes other = message;
    other[0] = 0x99;
    for (const Bytes& wrong : {Bytes{}, Bytes(3, 0x66), shorter, broken, other}) {
        EXPECT_FALSE(writer.append(wrong, stream));
    }
    ASSERT_TRUE(writer.append(message, stream));
    EXPECT_EQ(read(stream).messages(), (std::vector<Bytes>{message, message}));
}

// Messages of all sizes behind any number of leading bits, with positions and counters.
TEST(Framer, FindsMessagesAtEveryBitPhase)
{
    for (unsigned phase = 0; phase < bitsPerWord; ++phase) {
        std::mt19937 random(100 + phase);
        StreamBuilder builder;
        builder.addNoise(phase, random);
        std::vector<Found> expected;
        std::size_t words = 0;
        for (const std::size_t dataWords : Sizes{5, 31, 0, 1, 30, 0, 12}) {
            const Bytes message = makeMessage(dataWords, random);
            const std::size_t begin = builder.bitCount() / 6;
            builder.addMessage(message);
            expected.push_back({Frame::Kind::message, message, expected.size() + 1, begin,
                                (builder.bitCount() + 5) / 6, 0});
            words += dataWords + 2;
        }
        const Bytes stream = builder.bytes();
        const Result result = read(stream);
        EXPECT_EQ(result.frames, expected) << "phase " << phase;
        EXPECT_EQ(result.counters.bytesRead, stream.size());
        EXPECT_EQ(result.counters.bytesSkipped, 0U);
        EXPECT_EQ(result.counters.bitsOutsideMessages, stream.size() * 6 - words * bitsPerWord);
        EXPECT_EQ(result.counters.messages, expected.size());
        EXPECT_EQ(result.counters.words, words);
    }
}

// A capture may begin with a message whatever the two bits were that stood before it.
TEST(Framer, FindsAMessageAtTheVeryStart)
{
    std::mt19937 random(4);
    for (std::uint32_t previous = 0; previous < 4; ++previous) {
        const Bytes message = makeMessage(3, random);
        StreamBuilder builder;
        builder.addBits(previous, 2);
        builder.addMessage(message);
        builder.erase(0, 2);
        Framer framer;
        const Bytes stream = builder.bytes();
        framer.push(stream);
        std::vector<Found> frames;
        collect(framer, frames);    // without waiting for more
        ASSERT_EQ(frames.size(), 1U) << "previous bits " << previous;
        EXPECT_EQ(frames[0].bytes, message);
    }
}

// Words that look like headers are no reason to doubt a message in a stream that has no damage.
TEST(Framer, LosesNothingOfALongCleanStream)
{
    std::mt19937 random(13);
    StreamWriter writer;
    Bytes stream;
    constexpr std::size_t count = 20000;
    for (std::size_t i = 0; i < count; ++i) {
        // Words that begin with preambles, and half of these with the last station as well.
        Bytes message = makeMessage(20, random, 268 + random() % 2);
        const std::size_t word = 2 + random() % 20;
        message[word * bytesPerWord] = preamble;
        message[word * bytesPerWord + 1] = 1;
        message[word * bytesPerWord + 2] = 12;
        ASSERT_TRUE(writer.append(message, stream));
    }
    const Result result = read(stream);
    EXPECT_EQ(result.counters.messages, count);
    EXPECT_EQ(result.frames.size(), count);
}

TEST(Framer, SkipsTextAnywhere)
{
    std::mt19937 random(5);
    StreamBuilder builder;
    builder.addNoise(3, random);
    std::vector<Bytes> messages;
    for (int i = 0; i < 8; ++i) {
        messages.push_back(makeMessage(static_cast<std::size_t>(i), random));
        builder.addMessage(messages.back());
    }
    const Bytes plain = builder.bytes();
    Bytes stream;
    std::vector<std::size_t> places;    // of the bytes of `plain` in `stream`
    for (const std::uint8_t byte : plain) {
        if (random() % 3 == 0) {
            append(stream, random() % 2 == 0 ? "\r\n" : "$12:34 \x80\xFF* ");
        }
        places.push_back(stream.size());
        stream.push_back(byte);
    }
    const Result result = read(stream);
    EXPECT_EQ(result.messages(), messages);
    EXPECT_EQ(result.counters.bytesSkipped, stream.size() - plain.size());
    const Result reference = read(plain);
    ASSERT_EQ(result.frames.size(), reference.frames.size());
    for (std::size_t i = 0; i < result.frames.size(); ++i) {
        EXPECT_EQ(result.frames[i].begin, places[reference.frames[i].begin]);
        EXPECT_EQ(result.frames[i].end, places[reference.frames[i].end - 1] + 1);
    }
}

// Noise, text, damage and good messages, enough to go round the window many times.
Bytes mixedStream(unsigned seed, std::size_t messages)
{
    std::mt19937 random(seed);
    StreamBuilder builder;
    for (std::size_t i = 0; i < messages; ++i) {
        const std::size_t before = builder.bitCount();
        builder.addMessage(makeMessage(random() % 32, random));
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
            append(stream, "\r\n");
        }
    }
    return stream;
}

TEST(Framer, GivesTheSameHoweverTheStreamIsCut)
{
    const Bytes stream = mixedStream(6, 400);
    const Result whole = read(stream);
    ASSERT_GT(whole.counters.messages, 250U);
    ASSERT_GT(whole.counters.damaged, 50U);
    std::mt19937 random(7);
    const std::vector<std::function<std::size_t()>> cuts = {[] { return 1; }, [] { return 7; },
                                                            [&] { return 1 + random() % 60; },
                                                            [&] { return 1 + random() % 5000; }};
    for (const auto& cut : cuts) {
        const Result result = read(stream, cut);
        EXPECT_EQ(result.frames, whole.frames);
        EXPECT_EQ(result.counters.bitsOutsideMessages, whole.counters.bitsOutsideMessages);
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
        const std::vector<Bytes> good = {makeMessage(4, random), makeMessage(6, random),
                                         makeMessage(0, random)};
        builder.addMessage(good[0]);
        const std::size_t begin = builder.bitCount();
        builder.addMessage(makeMessage(dataWords, random));
        const std::size_t end = builder.bitCount();
        builder.addMessage(good[1]);
        builder.addMessage(good[2]);
        for (std::size_t bit = begin; bit < end; ++bit) {
            builder.flip(bit);
            const Result result = read(builder.bytes());
            builder.flip(bit);
            ASSERT_EQ(result.messages(), good) << "bit " << bit - begin;
            const Found& damaged = result.frames.at(1);
            ASSERT_EQ(damaged.kind, Frame::Kind::damaged);
            ASSERT_EQ(damaged.begin, begin / 6);
            // The last two bits of a word enter the next one as well, but fail in their own first.
            const std::size_t word = (bit - begin) / bitsPerWord;
            ASSERT_EQ(damaged.failedWord, word + 1);
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
            sent.push_back(makeMessage(random() % 10, random));
            builder.addMessage(sent.back());
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

// The bits just before a message are wrong, but its own words are good.
TEST(Framer, NeedsNothingFromBeforeAMessage)
{
    std::mt19937 random(8);
    for (std::uint32_t wrong = 0; wrong < 4; ++wrong) {
        StreamBuilder builder;
        const Bytes first = makeMessage(3, random);
        const Bytes second = makeMessage(2, random);
        builder.addMessage(first);
        builder.addMessage(makeMessage(4, random));
        const std::size_t end = builder.bitCount();
        builder.addMessage(second);
        builder.flip(end - 20);
        for (unsigned bit = 0; bit < 2; ++bit) {
            if ((wrong >> bit & 1) != 0) {
                builder.flip(end - 1 - bit);
            }
        }
        EXPECT_EQ(read(builder.bytes()).messages(), (std::vector<Bytes>{first, second}));
    }
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
            Bytes message = makeMessage(10, random);
            message[4 * 3] = 0x66;
            message[5 * 3 + 2] = static_cast<std::uint8_t>((decoy.decoyWords - 2) << 3);
            std::vector<Bytes> good;
            for (const std::size_t dataWords : Sizes{6, 5, 2, 7, 3}) {
                const auto station = static_cast<unsigned>(100 + good.size() * stationStep);
                good.push_back(makeMessage(dataWords, random, station));
            }
            StreamBuilder builder;
            builder.addMessage(good[0]);
            const std::size_t begin = builder.bitCount();
            builder.addMessage(message);
            for (std::size_t i = 1; i < good.size(); ++i) {
                builder.addMessage(good[i]);
            }
            builder.flip(begin + decoy.flippedWord * bitsPerWord + 13);
            const Result result = read(builder.bytes());
            EXPECT_EQ(result.messages(), good);
            EXPECT_EQ(result.counters.damaged, 1U);
        }
    }
}

// Words are missing behind a header, and the messages that follow fill it up with good words.
TEST(Framer, DoesNotSwallowMessagesAfterMissingWords)
{
    for (const std::size_t declared : Sizes{3, 7, 12, 30}) {
        std::mt19937 random(static_cast<unsigned>(50 + declared));
        StreamBuilder builder;
        std::vector<Bytes> good = {makeMessage(4, random)};
        builder.addMessage(good[0]);
        const Bytes cut = makeMessage(declared, random);
        builder.addMessage(std::span(cut).first(headerWords * bytesPerWord));
        for (const std::size_t dataWords : Sizes{6, 3, 9, 1, 12, 5}) {
            good.push_back(makeMessage(dataWords, random));
            builder.addMessage(good.back());
        }
        const Result result = read(builder.bytes());
        EXPECT_EQ(result.messages(), good) << declared << " words declared";
        EXPECT_EQ(result.counters.damaged, 1U);
        EXPECT_EQ(result.frames.at(1).failedWord, 0U);
    }
}

// As many words are missing as the next message has, and the pieces fit: the message after the hole
// would be taken for the missing part, as the one behind it begins where both say.
TEST(Framer, DoesNotTakeTheNextMessageForMissingWords)
{
    std::mt19937 random(60);
    const auto numbered = [&](std::size_t dataWords, unsigned number) {
        Bytes message = makeMessage(dataWords, random);
        message[3] = 0x5E;
        message[4] = static_cast<std::uint8_t>(0x90 | number);
        return message;
    };
    const Bytes first = numbered(4, 6);
    const Bytes cut = numbered(13, 7);
    const Bytes next = numbered(5, 0);
    const Bytes last = numbered(3, 1);
    StreamBuilder builder;
    builder.addMessage(first);
    builder.addMessage(std::span(cut).first(cut.size() - next.size()));
    builder.addMessage(next);
    builder.addMessage(last);
    const Result result = read(builder.bytes());
    EXPECT_EQ(result.messages(), (std::vector<Bytes>{first, next, last}));
    EXPECT_EQ(result.counters.damaged, 1U);
}

// What counts as damaged or truncated, and what does not.
TEST(Framer, ReportsTheEndOfTheInputInsideAMessage)
{
    std::mt19937 random(10);
    const Bytes first = makeMessage(3, random);
    StreamBuilder builder;
    builder.addMessage(first);
    builder.addMessage(makeMessage(4, random));
    const Bytes stream = builder.bytes();
    for (std::size_t size = 25; size < stream.size(); ++size) {
        const Result result = read(Bytes(stream.begin(), stream.begin() + static_cast<long>(size)));
        ASSERT_EQ(result.messages(), std::vector<Bytes>{first});
        // Expected there, one good word is enough.
        ASSERT_EQ(result.counters.truncated, size < 30 ? 0U : 1U) << size;
        ASSERT_EQ(result.counters.damaged, 0U);
        if (size >= 30) {
            const Found& cut = result.frames.at(1);
            EXPECT_EQ(cut.begin, 25U);
            EXPECT_EQ(cut.end, size);
            EXPECT_EQ(cut.bytes.size(), (size - 25) / 5 * 3);
        }
    }
}

TEST(Framer, ReportsDamageInASearchOnlyBehindAGoodHeader)
{
    for (const std::size_t word : {0U, 1U, 2U, 6U}) {
        std::mt19937 random(11);
        const Bytes next = makeMessage(1, random);
        StreamBuilder builder;
        builder.addNoise(8, random);
        builder.addMessage(makeMessage(5, random));
        builder.addMessage(next);
        builder.flip(8 + word * bitsPerWord + 3);
        const Result result = read(builder.bytes());
        EXPECT_EQ(result.messages(), std::vector<Bytes>{next});
        EXPECT_EQ(result.counters.damaged, word < 2 ? 0U : 1U) << "word " << word;
    }
}

TEST(Framer, FindsNothingInEmptyInputAndLittleInNoise)
{
    EXPECT_TRUE(read({}).frames.empty());
    std::mt19937 random(12);
    Bytes noise(1000000);
    for (std::uint8_t& byte : noise) {
        byte = static_cast<std::uint8_t>(0x40 | (random() & 0x3F));
    }
    // A header is good by chance once in 2^18 bits, and few of them declare few words.
    const Result result = read(noise);
    EXPECT_LE(result.counters.messages, 3U);
    EXPECT_LE(result.counters.damaged, 50U);
}

}    // namespace
}    // namespace framing
