// From a receiver's recorded words to the decoder.
#include "QLX_DiffCorrIn_RTCM2Extractor.h"

#include "AbstractDecoder.h"
#include "DecoderDriver.h"
#include "MessageInfo.h"
#include "Plugin.h"
#include "QLX_DiffCorrIn_Message.h"
#include "support/MessageHelpers.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr unsigned relabellingMode = 3;

QByteArray array(const Bytes& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()),
            static_cast<decltype(QByteArray().size())>(bytes.size())};
}

Bytes unit(std::uint32_t value)
{
    return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 24)};
}

// The first unit of a message, with parity bits and the two bits above the data set.
std::uint32_t headerUnit(unsigned type, unsigned station)
{
    return 0xC000003FU | 0x66U << 22 | type << 16 | station << 6;
}

// A message of a type and station with two data words, as a receiver records it.
Bytes recorded(unsigned type, unsigned station)
{
    Bytes bytes;
    for (const std::uint32_t value :
         {headerUnit(type, station), 0x123410U << 6, 0x400000U << 6, 0x00AAAAU << 6}) {
        const Bytes next = unit(value);
        bytes.insert(bytes.end(), next.begin(), next.end());
    }
    return bytes;
}

// Shows what is done to the payload.
class Peek : public QLX_DiffCorrIn_RTCM2Extractor {
public:
    explicit Peek(unsigned char value)
        : QLX_DiffCorrIn_RTCM2Extractor(nullptr, nullptr, nullptr, value)
    {
    }

    Bytes preprocess(const Bytes& payload)
    {
        rawData = array(payload);
        preprocessRawData();
        return {rawData.begin(), rawData.end()};
    }
};

TEST(Extractor, PacksWholeUnits)
{
    const Bytes first = unit(0x3FFFFFFFU);    // all data and parity bits
    const Bytes second = unit(0x123456U << 6 | 0x15);
    const struct {
        Bytes payload;
        Bytes packed;
    } cases[] = {
        {{}, {}},
        {{1}, {}},
        {{1, 2, 3}, {}},
        {first, {0xFF, 0xFF, 0xFF}},
        {second, {0x12, 0x34, 0x56}},
        {{0x3F, 0, 0, 0xC0}, {0, 0, 0}},    // only bits that do not belong to the data
        {{0, 0, 0, 0x20, 0x40, 0, 0, 0}, {0x80, 0, 0, 0, 0, 1}},
        {{0, 0, 0, 0x20, 0x40, 0, 0, 0, 0xFF, 0xFF, 0xFF}, {0x80, 0, 0, 0, 0, 1}},
    };
    for (const unsigned char mode : {std::uint8_t{0}, std::uint8_t{3}}) {
        Peek extractor(mode);
        for (const auto& test : cases) {
            EXPECT_EQ(extractor.preprocess(test.payload), test.packed)
                << test.payload.size() << " bytes, mode " << int{mode};
        }
    }
}

TEST(Extractor, RelabelsInOneModeOnly)
{
    const struct {
        unsigned char mode;
        unsigned type;
        unsigned station;
        unsigned relabelled;
    } cases[] = {
        {3, 1, 63, 1}, {3, 1, 64, 44}, {3, 1, 70, 44}, {3, 1, 73, 44},  {3, 1, 74, 1},
        {3, 1, 0, 1},  {3, 2, 70, 2},  {3, 9, 70, 9},  {3, 33, 70, 33}, {3, 1, 70 + 128, 1},
        {0, 1, 70, 1}, {2, 1, 70, 1},  {4, 1, 70, 1},  {131, 1, 70, 1}, {255, 1, 70, 1},
    };
    for (const auto& test : cases) {
        Peek extractor(test.mode);
        const unsigned station = test.station;
        const Bytes expected = {0x66,
                                static_cast<std::uint8_t>(test.relabelled << 2 | station >> 8),
                                static_cast<std::uint8_t>(station),
                                0xFF,
                                0xFF,
                                0xFF};
        Bytes payload = unit(headerUnit(test.type, station));
        payload.insert(payload.end(), 4, 0xFF);
        EXPECT_EQ(extractor.preprocess(payload), expected)
            << "mode " << int{test.mode} << ", type " << test.type << ", station " << station;
    }
}

TEST(Extractor, DoesNotRelabelAPartOfAUnit)
{
    Peek extractor(relabellingMode);
    Bytes payload = unit(headerUnit(1, 70));
    payload.pop_back();
    EXPECT_TRUE(extractor.preprocess(payload).empty());
}

// What reaches a decoder from blocks with and without a mode byte of their own.
class Listener : public AbstractDecoder {
public:
    Listener() : AbstractDecoder(QStringLiteral("listener"), nullptr) {}

    int decodeMessage(const unsigned char* buffer, unsigned int maxlength) override
    {
        heard.emplace_back(buffer, buffer + maxlength);
        return 1;
    }
    void enableAllMessages() override {}
    void disableAllMessages() override {}

    std::vector<Bytes> heard;

private:
    void enableMessageEnum(int) override {}
    void disableMessageEnum(int) override {}
    bool isEnabledMessageEnum(int) const override { return true; }
};

void emitBlock(MessageSource& source, const Bytes& payload, std::optional<unsigned char> mode)
{
    const auto* block = new QLX_DiffCorrIn_Message(array(payload), mode);
    block->addReference();
    Q_EMIT source.newMessage(block);
    block->removeReference();
}

TEST(Extractor, HandsBlocksToTheDecoder)
{
    MessageSource source;
    Listener listener;
    const auto extractor = plugin::makeExtractor(&source, &listener, relabellingMode);
    emitBlock(source, recorded(1, 70), std::nullopt);
    emitBlock(source, recorded(1, 70), 0);
    emitBlock(source, {}, std::nullopt);
    emitBlock(source, {1, 2, 3}, std::nullopt);
    ASSERT_EQ(listener.heard.size(), 2U);
    EXPECT_EQ(listener.heard[0],
              (Bytes{0x66, 44 << 2, 70, 0x12, 0x34, 0x10, 0x40, 0, 0, 0, 0xAA, 0xAA}));
    EXPECT_EQ(listener.heard[1],
              (Bytes{0x66, 1 << 2, 70, 0x12, 0x34, 0x10, 0x40, 0, 0, 0, 0xAA, 0xAA}));
}

// All the way: what the driver makes of recorded messages.
TEST(Extractor, RelabelledMessagesAreDecodedAndReportedToNobody)
{
    const int before = liveMessages();
    {
        const auto decoder = plugin::makeDecoder();
        DecoderDriver driver(*decoder, plugin::isSwitchedOff, plugin::makeExtractor);
        int signalCount = 0;
        const auto count = [&signalCount] { ++signalCount; };
        QObject::connect(decoder.get(), &MessageSource::newMessage, count);
        QObject::connect(decoder.get(), &MessageSource::newEvent, count);

        Outcome outcome = driver.extract(recorded(1, 70), relabellingMode);
        EXPECT_EQ(outcome.kind, Outcome::Kind::unreported);
        EXPECT_GT(outcome.result, 0);
        EXPECT_EQ(outcome.message, nullptr);
        EXPECT_EQ(signalCount, 0);

        outcome = driver.extract(recorded(1, 70), 0);
        EXPECT_EQ(outcome.kind, Outcome::Kind::message);
        ASSERT_NE(outcome.message, nullptr);
        EXPECT_EQ(outcome.message->getMessageInfo()->getName(), "Message Type 1");

        outcome = driver.extract(recorded(1, 74), relabellingMode);
        EXPECT_EQ(outcome.kind, Outcome::Kind::message);

        outcome = driver.extract(recorded(60, 70), relabellingMode);
        EXPECT_EQ(outcome.kind, Outcome::Kind::unknownType);

        decoder->disableAllMessages();
        outcome = driver.extract(recorded(1, 74), relabellingMode);
        EXPECT_EQ(outcome.kind, Outcome::Kind::switchedOff);
        EXPECT_EQ(outcome.message, nullptr);
    }
    EXPECT_EQ(liveMessages(), before);
}

}    // namespace
