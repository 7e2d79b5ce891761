#include "AbstractDecoder.h"
#include "FieldInfo.h"
#include "MessageInfo.h"
#include "QLX_DiffCorrIn_Extractor.h"
#include "QLX_DiffCorrIn_Message.h"
#include "QLX_DiffCorrIn_MessageInfo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

class RecordingDecoder : public AbstractDecoder {
public:
    RecordingDecoder() : AbstractDecoder(QStringLiteral("Recording"), nullptr) {}
    int decodeMessage(const unsigned char* buffer, unsigned int maxlength) override
    {
        if (const auto once = std::exchange(beforeReading, nullptr)) {
            once();
        }
        decoded.emplace_back(reinterpret_cast<const char*>(buffer), static_cast<int>(maxlength));
        return 1;
    }
    void enableAllMessages() override {}
    void disableAllMessages() override {}

    std::function<void()> beforeReading;
    std::vector<QByteArray> decoded;

private:
    void enableMessageEnum(int) override {}
    void disableMessageEnum(int) override {}
    bool isEnabledMessageEnum(int) const override { return false; }
};

// Drops the first byte and turns the rest round.
class TurningExtractor : public QLX_DiffCorrIn_Extractor {
public:
    using QLX_DiffCorrIn_Extractor::QLX_DiffCorrIn_Extractor;

    std::vector<int> modes;

protected:
    void preprocessRawData() override
    {
        modes.push_back(mode);
        rawData.remove(0, 1);
        std::reverse(rawData.begin(), rawData.end());
    }
};

class OtherMessage : public Message {
public:
    OtherMessage() : Message(QLX_DiffCorrIn_MessageInfo::getInstance()) {}
    QString getRawStringFor(const QVector<bool>&) const override { return QString(); }

private:
    const void* getRawRepresentation() const override { return this; }
};

void send(MessageSource& source, const char* payload, std::optional<unsigned char> mode = {})
{
    const QLX_DiffCorrIn_Message block(payload, mode);
    Q_EMIT source.newMessageEarly(&block);
    Q_EMIT source.newMessage(&block);
    Q_EMIT source.newMessageLate(&block);
}

TEST(DiffCorrInExtractor, HandsThePreprocessedDataToTheDecoderOncePerBlock)
{
    MessageSource source;
    RecordingDecoder decoder;
    TurningExtractor extractor(&source, &decoder, 7);
    send(source, "xabc");
    send(source, "", 3);
    send(source, "x", 0);
    send(source, "yde");
    const OtherMessage other;
    Q_EMIT source.newMessage(&other);
    Q_EMIT source.newMessage(nullptr);
    EXPECT_EQ(decoder.decoded, (std::vector<QByteArray>{"cba", "ed"}));
    // A block's own mode goes before the constructor's.
    EXPECT_EQ(extractor.modes, (std::vector<int>{7, 3, 0, 7}));
}

TEST(DiffCorrInExtractor, MissingSourceOrDecoderIsHarmless)
{
    MessageSource source;
    auto decoder = std::make_unique<RecordingDecoder>();
    TurningExtractor withoutSource(nullptr, decoder.get(), 0);
    TurningExtractor withoutDecoder(&source, nullptr, 0);
    TurningExtractor orphaned(&source, decoder.get(), 0);
    decoder.reset();
    send(source, "xab");
    EXPECT_TRUE(withoutSource.modes.empty());
    EXPECT_EQ(withoutDecoder.modes.size(), 1U);
    EXPECT_EQ(orphaned.modes.size(), 1U);
}

TEST(DiffCorrInExtractor, ABlockThatArrivesDuringDecodingLeavesTheBufferAlone)
{
    MessageSource source;
    RecordingDecoder decoder;
    TurningExtractor extractor(&source, &decoder, 0);
    // Of the same size, so that the second gets the memory of the first, should that be free.
    const QByteArray first(200, 'a'), second(200, 'b');
    decoder.beforeReading = [&] { send(source, second.constData()); };
    send(source, first.constData());
    EXPECT_EQ(decoder.decoded, (std::vector<QByteArray>{second.mid(1), first.mid(1)}));
}

TEST(DiffCorrInMessage, IsDescribedByItsFields)
{
    const QLX_DiffCorrIn_Message block(QByteArray("\x01\xFE\x00", 3), 3);
    const QLX_DiffCorrIn_Message bare(QByteArray(), std::nullopt);
    EXPECT_EQ(block.getRawStringFor({true, true, true}).toStdString(), "3;01 fe 00");
    EXPECT_EQ(block.getRawStringFor({false, true}).toStdString(), "01 fe 00");
    EXPECT_EQ(bare.getRawStringFor({true, true}).toStdString(), ";");

    const FieldInfo* mode = block.getMessageInfo()->getFieldInfos().at(0);
    const FieldInfo* data = block.getMessageInfo()->getFieldInfos().at(1);
    EXPECT_EQ(mode->getValue(&block, 0), FieldValue::u(3, 8));
    EXPECT_EQ(data->getValue(&block, 1), FieldValue::byte(0xFE));
    EXPECT_EQ(data->getInterpretedString(&block, 1, true).toStdString(), "0xfe");
    const OtherMessage other;
    EXPECT_THROW(mode->getValue(&bare, 0), VorloEvent);
    EXPECT_THROW(data->getValue(&block, 3), VorloEvent);
    EXPECT_THROW(data->getValue(&other, 0), VorloEvent);
}

}    // namespace
