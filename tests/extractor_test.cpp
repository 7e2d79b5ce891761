// From a receiver's recorded words to the decoder.
#include "QLX_DiffCorrIn_RTCM2Extractor.h"

#include "plugin/DecoderDriver.h"
#include "plugin/Plugin.h"
#include "support/MessageHelpers.h"

namespace {

Bytes unit(std::uint32_t value)
{
    return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 24)};
}

// The first unit of a message, with parity bits and the two bits above the data set.
Bytes headerUnit(unsigned type, unsigned station)
{
    return unit(0xC000003FU | 0x66U << 22 | type << 16 | station << 6);
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
        rawData = QByteArray(reinterpret_cast<const char*>(payload.data()),
                             static_cast<decltype(rawData.size())>(payload.size()));
        preprocessRawData();
        return {rawData.begin(), rawData.end()};
    }
};

TEST(Extractor, PacksWholeUnits)
{
    const std::pair<Bytes, Bytes> cases[] = {
        {{}, {}},
        {{0xBF, 0x11, 0x81}, {}},                   // all but the end of a unit to be relabelled
        {unit(0x3FFFFFFFU), {0xFF, 0xFF, 0xFF}},    // all data and parity bits
        {unit(0xC000003FU), {0, 0, 0}},             // only bits that do not belong to the data
        {{0x95, 0x15, 0x8D, 0x04, 0x40, 0, 0, 0, 0xFF, 0xFF, 0xFF}, {0x12, 0x34, 0x56, 0, 0, 1}},
    };
    for (const auto& [payload, packed] : cases) {
        EXPECT_EQ(Peek(0).preprocess(payload), packed);
        EXPECT_EQ(Peek(3).preprocess(payload), packed);
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
        {3, 1, 63, 1},   {3, 1, 64, 44},      {3, 1, 73, 44}, {3, 1, 74, 1}, {3, 2, 70, 2},
        {3, 33, 70, 33}, {3, 1, 70 + 128, 1}, {0, 1, 70, 1},  {2, 1, 70, 1}, {131, 1, 70, 1},
    };
    for (const auto& [mode, type, station, relabelled] : cases) {
        const Bytes expected = {0x66, static_cast<std::uint8_t>(relabelled << 2 | station >> 8),
                                static_cast<std::uint8_t>(station)};
        EXPECT_EQ(Peek(mode).preprocess(headerUnit(type, station)), expected)
            << "mode " << int{mode} << ", type " << type << ", station " << station;
    }
}

// All the way: what the driver makes of recorded messages.
TEST(Extractor, FeedsTheDecoderWithEachBlock)
{
    const struct {
        bool enabled;
        unsigned station;
        unsigned char mode;
        Outcome::Kind outcome;
    } cases[] = {{true, 70, 3, Outcome::Kind::unreported},
                 {true, 70, 0, Outcome::Kind::message},
                 {true, 74, 3, Outcome::Kind::message},
                 {false, 74, 3, Outcome::Kind::switchedOff}};
    {
        const auto decoder = plugin::makeDecoder();
        DecoderDriver driver(*decoder, plugin::isSwitchedOff, plugin::makeExtractor);
        int reports = 0;
        QObject::connect(decoder.get(), &MessageSource::newMessage, [&] { ++reports; });
        for (const auto& [enabled, station, mode, expected] : cases) {
            Bytes bytes = headerUnit(1, station);
            bytes.insert(bytes.end(), {0, 0x04, 0x8D, 0x04, 0, 0, 0, 0x10, 0x80, 0xAA, 0x2A, 0});
            enabled ? decoder->enableAllMessages() : decoder->disableAllMessages();
            reports = 0;
            const Outcome outcome = driver.extract(bytes, mode);
            EXPECT_EQ(outcome.kind, expected);
            EXPECT_EQ(outcome.result > 0, enabled);
            EXPECT_EQ(outcome.message.get() != nullptr, expected == Outcome::Kind::message);
            EXPECT_EQ(reports, outcome.message.get() != nullptr);
        }
    }
    EXPECT_EQ(liveMessages(), 0);
    EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("QLX_DiffCorrIn_RTCM2Extractor")), 0);
}

}    // namespace
