#include "QLX_DiffCorrIn_MessageInfo.h"
#include "RTCM2_Message_Type_1_Message.h"
#include "RTCM2_Message_Type_1_MessageInfo.h"
#include "support/MessageHelpers.h"

#include <QMetaObject>
#include <QStringList>

#include <climits>
#include <cstdlib>
#include <functional>
#include <malloc.h>
#include <memory>
#include <new>

namespace {

// So many allocations are left before there is no memory.
unsigned allocationsLeft = ~0U;
// Blocks in use.
int blocks = 0;

}    // namespace

// Not inlined, so that the compiler sees new and delete, not what they are made of.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (allocationsLeft != ~0U && allocationsLeft-- == 0) {
        allocationsLeft = ~0U;
        throw std::bad_alloc();
    }
    ++blocks;
    return std::malloc(size);
}

[[gnu::noinline]] void operator delete(void* block) noexcept
{
    blocks -= block != nullptr ? 1 : 0;
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept
{
    blocks -= block != nullptr ? 1 : 0;
    std::free(block);
}

namespace {

// The message types that the codec knows.
std::vector<unsigned> types(bool reportedAlone)
{
    std::vector<unsigned> found;
    for (int kind = 1; kind <= RTCM2_last_kind(); ++kind) {
        const RTCM2_kind_s& row = *RTCM2_kind(kind);
        if (row.type >= 0 && (*row.display != '\0' || !reportedAlone)) {
            found.push_back(static_cast<unsigned>(row.type));
        }
    }
    return found;
}

// Five data words of zeros: enough for the layout of every type.
Bytes zeros(unsigned type)
{
    return packed(type, 5, Bytes(15));
}

class Decoder : public RTCM2Decoder {
public:
    using RTCM2Decoder::RTCM2Decoder;
    using RTCM2Decoder::setMessageEnum;
};

// Writes down what a decoder reports.
class DecoderTest : public testing::Test {
protected:
    DecoderTest()
    {
        using Source = MessageSource;
        const std::pair<const char*, void (Source::*)(const Message*)> stages[] = {
            {"early", &Source::newMessageEarly},
            {"message", &Source::newMessage},
            {"late", &Source::newMessageLate}};
        for (const auto& [stage, signal] : stages) {
            QObject::connect(decoder.get(), signal,
                             [this, stage = QString(stage)](const Message* m) { note(stage, m); });
        }
        QObject::connect(decoder.get(), &Source::newEvent, [this](const VorloEvent& event) {
            EXPECT_EQ(event.getFormatInfo(), RTCM2_FormatInfo::getInstance());
            log << QStringLiteral("event %1 %2").arg(event.getType()).arg(event.getText());
        });
        QObject::connect(decoder.get(), &Source::newUnknownMessage,
                         [this](const FormatInfo* format, const QString& text) {
                             EXPECT_EQ(format, RTCM2_FormatInfo::getInstance());
                             log << QStringLiteral("unknown ") + text;
                         });
    }

    ~DecoderTest() override
    {
        decoder.reset();
        EXPECT_EQ(liveMessages(), 0);
        EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("RTCM2Decoder")), 0);
    }

    // The result of decoding; the log then holds what was reported.
    int decode(const Bytes& bytes)
    {
        log.clear();
        seen.clear();
        return decoder->decodeMessage(bytes.data(), static_cast<unsigned>(bytes.size()));
    }

    std::unique_ptr<Decoder> decoder = std::make_unique<Decoder>(nullptr);
    const MessageInfo* subKind = RTCM2_FormatInfo::getInstance()->getSubMessageInfos().first();
    QStringList log;
    QVector<const Message*> seen;
    // What else happens with a message that is reported.
    std::function<void(const QString& stage, const Message*)> receive;

private:
    void note(const QString& stage, const Message* message)
    {
        log << stage;
        seen << message;
        EXPECT_EQ(message->getReferenceCount(), 1);
        if (receive) {
            receive(stage, message);
        }
    }
};

TEST_F(DecoderTest, OneObjectIsReportedThreeTimesAndOutlivesItsDecoderIfKept)
{
    EXPECT_EQ(decode(packed(1, 0)), 48);
    EXPECT_EQ(liveMessages(), 0);
    const Message* kept = nullptr;
    receive = [&](const QString& stage, const Message* message) {
        if (stage == QLatin1String("late")) {
            kept = message;
            kept->addReference();
        }
    };
    EXPECT_EQ(decode(packed(1, 5, Bytes(15, 0xA5))), 48 + 3 * 40);
    EXPECT_EQ(log, QStringList({"early", "message", "late"}));
    EXPECT_EQ(seen, QVector<const Message*>(3, kept));
    decoder.reset();
    const FieldInfo* corrections = kept->getMessageInfo()->getFieldInfos().last();
    for (unsigned i = 0; i < 3; ++i) {
        const Message* element = corrections->getValue(kept, i).toSubMessage();
        EXPECT_EQ(element->getRawStringFor(QVector<bool>(5, true)), QString("01;01;5;-23131;-91"));
        EXPECT_EQ(element->getParentMessage(), kept);
        // The record itself points at the one of the object.
        const auto* record = static_cast<const RTCM2_DGNSS_s*>(RecordPeek::recordOf(element));
        EXPECT_EQ(record->parent, RecordPeek::recordOf(kept));
    }
    kept->removeReference();
    EXPECT_EQ(liveMessages(), 0);
}

TEST_F(DecoderTest, ExceptionsOfReceiversReachTheCaller)
{
    const QStringList stages({"early", "message", "late"});
    for (int stage = 0; stage < 3; ++stage) {
        receive = [&](const QString& now, const Message* message) {
            const auto* corrections = message->getMessageInfo()->getFieldInfos().last();
            EXPECT_NE(corrections->getValue(message, 0).toSubMessage(), nullptr);
            if (now == stages[stage]) {
                throw stage;
            }
        };
        EXPECT_THROW(decode(zeros(1)), int);
        EXPECT_EQ(log, stages.mid(0, stage + 1));
        EXPECT_EQ(liveMessages(), 0);
    }
    receive = nullptr;
    EXPECT_EQ(decode(zeros(1)), 168);
}

TEST_F(DecoderTest, UnknownTypes)
{
    for (const unsigned type : {0U, 45U, 63U}) {
        const QString number = QString::number(type);
        const QStringList reports(
            {"event 3 RTCM2: Message type " + number + " unknown to PC software",
             "unknown Message type " + number});
        EXPECT_EQ(decode(zeros(type)), RTCM2_ERR_INVALID_MESSAGE);
        EXPECT_EQ(log, reports);
        // Too short to have a type: the last unknown one is reported again.
        EXPECT_EQ(decode(Bytes{0x66}), RTCM2_ERR_INVALID_MESSAGE);
        EXPECT_EQ(log, reports);
    }
}

TEST_F(DecoderTest, DecodingErrorsAreReportedByName)
{
    struct Case {
        unsigned type, words;
        std::size_t payload;
        const char* name;
        int result;
    };
    const Case cases[] = {
        {1, 5, 2, "RTCM2_ERR_DGNSS_PRC_EXT_BUFFER_OVERFLOW", -12},
        {16, 31, 93, "RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW", -130},
        {38, 1, 3, "RTCM2_ERR_MESSAGE_TYPE_38_SLOT_BITMAP_EXT_BUFFER_OVERFLOW", -309},
        {40, 1, 12, "RTCM2_ERR_OCDS_40_WL_BIAS_EXT_BUFFER_OVERFLOW", -101},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(decode(packed(c.type, c.words, Bytes(c.payload))), c.result) << c.name;
        EXPECT_EQ(log, QStringList(QStringLiteral("event 4 RTCM2: ") + c.name));
    }
}

TEST_F(DecoderTest, EveryOutcomeReturnsItsMemory)
{
    const Bytes messages[] = {zeros(1), packed(1, 30, Bytes(80)), packed(38, 1, Bytes(200)),
                              packed(40, 1, Bytes(20)), zeros(44)};
    const auto usedAfterRounds = [&](int rounds) {
        for (int round = 0; round < rounds; ++round) {
            for (const Bytes& message : messages) {
                decode(message);
            }
        }
        return mallinfo2().uordblks;
    };
    const auto before = usedAfterRounds(3);
    EXPECT_LT(usedAfterRounds(200), before + 4096);
}

// Whichever allocation fails, the first report of a class to the tracer included.
TEST_F(DecoderTest, LackOfMemoryReachesTheCallerAndLeavesNothing)
{
    for (const unsigned type : types(true)) {
        const Bytes message = packed(type, 5, Bytes(15));
        unsigned failures = 0;
        for (unsigned left = 0; failures == left; ++left) {
            allocationsLeft = left;
            try {
                decode(message);
            } catch (const std::bad_alloc&) {
                ++failures;
            }
            allocationsLeft = ~0U;
            ASSERT_EQ(liveMessages(), 0);
        }
        EXPECT_GT(failures, 0U) << type;
    }
}

TEST_F(DecoderTest, OwnedRecordsGoWithTheirObjects)
{
    const auto left = [] {
        const int before = blocks;
        {
            const RTCM2_Message_Type_1_Message message(new RTCM2_Message_Type_1_s{}, true);
        }
        return blocks - before;
    };
    left();    // makes what stays
    EXPECT_EQ(left(), 0);
}

TEST_F(DecoderTest, DescriptorsStandForKindsOfTheCodec)
{
    for (const MessageInfo* info : allKinds()) {
        const QString name = "RTCM2_" + info->getName().toUpper().replace(' ', '_');
        EXPECT_EQ(RTCM2_message_enum_to_string(decoder->getMessageEnum(info)), name.toStdString());
    }
}

QStringList disabledReport(unsigned type)
{
    return {QStringLiteral("event 4 RTCM2: RTCM2_ERR_MESSAGE_TYPE_%1_DISABLED").arg(type)};
}

TEST_F(DecoderTest, KindsAreSwitchedByDescriptor)
{
    const auto kinds = RTCM2_FormatInfo::getInstance()->getMessageInfos();
    for (const MessageInfo* off : kinds) {
        EXPECT_TRUE(decoder->disableMessage(off));
        for (const MessageInfo* kind : kinds) {
            const unsigned type = kind->getName().section(' ', -1).toUInt();
            EXPECT_EQ(decoder->isMessageEnabled(kind), kind != off);
            decode(zeros(type));
            EXPECT_EQ(log == disabledReport(type), kind == off) << type;
        }
        EXPECT_TRUE(decoder->enableMessage(off));
    }
}

TEST_F(DecoderTest, AllKindsAreSwitchedTogether)
{
    for (const bool subKindEnabled : {true, false}) {
        subKindEnabled ? decoder->enableMessage(subKind) : decoder->disableMessage(subKind);
        decoder->disableAllMessages();
        EXPECT_EQ(decoder->isMessageEnabled(subKind), subKindEnabled);
        for (const unsigned type : types(false)) {
            EXPECT_LE(decode(zeros(type)), -438);
            EXPECT_EQ(log, disabledReport(type));
        }
        decoder->enableAllMessages();
        EXPECT_EQ(decoder->isMessageEnabled(subKind), subKindEnabled);
        for (const unsigned type : types(false)) {
            EXPECT_GT(decode(zeros(type)), 0) << type;
            EXPECT_EQ(log.size(), type < 33 || type == 59 ? 3 : 0) << type;
        }
    }
}

TEST_F(DecoderTest, ValuesOfNoKindSwitchNothing)
{
    decode(zeros(2));
    for (const int value : {INT_MIN, -1, 0, 42, 46, 48, 1000, INT_MAX}) {
        decoder->setMessageEnum(subKind, value);
        for (const bool on : {true, false}) {
            EXPECT_TRUE(on ? decoder->enableMessage(subKind) : decoder->disableMessage(subKind));
            EXPECT_FALSE(decoder->isMessageEnabled(subKind)) << value;
            decode(Bytes{0x66});
            EXPECT_EQ(log.last(), QStringLiteral("unknown Message type 2")) << value;
        }
    }
    for (const unsigned type : types(true)) {
        EXPECT_GT(decode(zeros(type)), 0) << type;
    }
    const MessageInfo* stranger = QLX_DiffCorrIn_MessageInfo::getInstance();
    EXPECT_EQ(decoder->getMessageEnum(stranger), -1);
    EXPECT_FALSE(decoder->enableMessage(stranger));
    EXPECT_FALSE(decoder->disableMessage(stranger));
    EXPECT_FALSE(decoder->isMessageEnabled(stranger));
}

TEST_F(DecoderTest, LongBuffersAreClampedNotWrapped)
{
    Bytes bytes = packed(1, 10, Bytes(30));
    for (const std::size_t size : {65535U, 65536U, 65536U + 6U, 2U * 65536U + 12U}) {
        bytes.resize(size);
        EXPECT_EQ(decode(bytes), 48 + 6 * 40) << size;
    }
}

TEST_F(DecoderTest, MayBeCalledAsASlot)
{
    const Bytes bytes = packed(1, 0);
    int32_t result = 0;
    EXPECT_TRUE(QMetaObject::invokeMethod(
        decoder.get(), "decodeMessage", Qt::DirectConnection, Q_RETURN_ARG(int32_t, result),
        Q_ARG(const uint8_t*, bytes.data()), Q_ARG(uint, static_cast<uint>(bytes.size()))));
    EXPECT_EQ(result, 48);
}

// Outside of the plug-in's library, in which they are made.
TEST_F(DecoderTest, TypesAreKnownToPrograms)
{
    receive = [](const QString&, const Message* message) {
        const MessageInfo* info = message->getMessageInfo();
        const FieldInfo* last = info->getFieldInfos().last();
        const auto* object = dynamic_cast<const RTCM2_Message_Type_1_Message*>(message);
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->getNumberOfCorrections(), last->getCount(message));
        EXPECT_EQ(dynamic_cast<const RTCM2_Message_Type_1_MessageInfo*>(info),
                  RTCM2_Message_Type_1_MessageInfo::getInstance());
        EXPECT_EQ(dynamic_cast<const RTCM2_Message_Type_1_Corrections_FieldInfo*>(last),
                  RTCM2_Message_Type_1_Corrections_FieldInfo::getInstance());
    };
    decode(zeros(1));
    EXPECT_EQ(log.size(), 3);
    const AbstractDecoder* base = decoder.get();
    EXPECT_EQ(qobject_cast<const RTCM2Decoder*>(static_cast<const QObject*>(base)), decoder.get());
}

}    // namespace
