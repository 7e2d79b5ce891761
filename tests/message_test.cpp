#include "FieldInfo.h"
#include "MessageInfo.h"
#include "RTCM2Decoder.h"
#include "RTCM2_Message_Type_15_Message.h"
#include "RTCM2_Message_Type_16_Message.h"
#include "RTCM2_Message_Type_1_Message.h"
#include "RTCM2_Message_Type_21_Message.h"
#include "RTCM2_Message_Type_22_Message.h"
#include "RTCM2_Message_Type_23_Message.h"
#include "RTCM2_Message_Type_59_Message.h"
#include "RTCM2_OCDS_52_Message.h"
#include "support/MessageHelpers.h"

#include <QLocale>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

// Selects the fields with the given indices.
QVector<bool> only(std::initializer_list<int> indices)
{
    QVector<bool> selection(std::max(indices) + 1, false);
    for (const int index : indices) {
        selection[index] = true;
    }
    return selection;
}

const QVector<bool> all(30, true);

// A record in its initial state; what that leaves open is 0.
template <class Record>
Record made(std::int32_t (*initialise)(Record*))
{
    Record record{};
    initialise(&record);
    return record;
}

RTCM2_Message_Type_23_s antenna(std::uint8_t serialFlag)
{
    auto record = made(RTCM2_init_Message_Type_23);
    RTCM2_strcpy_Message_Type_23_Antenna_Descriptor(&record, "ANT \xE9");
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&record, "S1");
    record.Serial_Flag = serialFlag;
    return record;
}

// A type 1 message with n corrections of the satellites 1 to n, which owns its record.
std::unique_ptr<RTCM2_Message_Type_1_Message> corrections(unsigned n)
{
    auto* record = new RTCM2_Message_Type_1_s(made(RTCM2_init_Message_Type_1));
    for (unsigned i = 0; i < n; ++i) {
        RTCM2_append_Message_Type_1_Corrections(record)->Satellite_Id =
            static_cast<std::uint8_t>(i + 1);
    }
    return std::make_unique<RTCM2_Message_Type_1_Message>(record, true);
}

TEST(RawLine, SelectsAndSeparates)
{
    const auto message = corrections(6);
    EXPECT_EQ(message->getRawStringFor(all),
              QStringLiteral("66;1;0;0;0;0;00;6;submsg submsg submsg submsg submsg submsg"));
    EXPECT_EQ(message->getRawStringFor(only({1, 6})), QStringLiteral("1;00"));
    EXPECT_EQ(message->getRawStringFor(QVector<bool>(3, true)), QStringLiteral("66;1;0"));
    EXPECT_EQ(message->getRawStringFor({}), QString());
    Message::fieldSeparator = QStringLiteral(" | ");
    EXPECT_EQ(message->getRawStringFor(only({0, 7})), QStringLiteral("66 | 6"));
    Message::fieldSeparator = QStringLiteral(";");
    EXPECT_TRUE(message->getSubMessages().isEmpty());
    EXPECT_EQ(corrections(0)->getRawStringFor(all), QStringLiteral("66;1;0;0;0;0;00;0;"));
}

TEST(RawLine, AbsentFieldsLeaveEmptySlotsAndAreRefused)
{
    auto extended = made(RTCM2_init_Message_Type_22);
    extended.L1_ECEF_Delta_Z = -128;
    extended.Phase_Center_Height = 174762;
    extended.L2_ECEF_Delta_X = -1;
    const RTCM2_Message_Type_22_Message message(&extended, false);
    const char* const lines[] = {"-128;;;;;;;;;", "-128;;;;;;;;;", "-128;00;00;00;00;00;174762;;;",
                                 "-128;00;00;00;00;00;174762;-1;0;0", "-128;;;;;;;;;"};
    for (std::uint8_t words = 0; words < std::size(lines); ++words) {
        extended.No_Of_Data_Words = words;
        EXPECT_EQ(message.getRawStringFor(only({9, 10, 11, 12, 13, 14, 15, 16, 17, 18})),
                  QString::fromLatin1(lines[words]));
    }
    EXPECT_EQ(message.getRawStringFor(only({10})), QString());
    const QString absent = QStringLiteral("Requesting value for a non-present optional field.");
    EXPECT_EQ(misuseText([&] { message.getPhase_Center_Height(); }), absent);
    extended.No_Of_Data_Words = 2;
    EXPECT_EQ(message.getPhase_Center_Height(), 174762U);
    EXPECT_EQ(misuseText([&] { message.getL2_ECEF_Delta_X(); }), absent);
}

TEST(RawLine, TextsAndBytes)
{
    auto special = made(RTCM2_init_Message_Type_16);
    const RTCM2_Message_Type_16_Message text(&special, false);
    EXPECT_EQ(text.getRawStringFor(only({8})), QString());
    RTCM2_strcpy_Message_Type_16_Message(&special, "Gr\xFC\xDF\nand more");
    EXPECT_EQ(text.getRawStringFor(only({7, 8})), QString::fromLatin1("13;Gr\xFC\xDF\nand more"));
    special.Message[4] = '\0';
    EXPECT_EQ(text.getRawStringFor(only({7, 8})), QString::fromLatin1("13;Gr\xFC\xDF"));
    // The text ends with the announced number, the terminator included.
    special.Message_Length = 2;
    EXPECT_EQ(text.getRawStringFor(only({8})), QString::fromLatin1("Gr\xFC"));

    auto record = antenna(1);
    const RTCM2_Message_Type_23_Message antennaMessage(&record, false);
    EXPECT_EQ(antennaMessage.getRawStringFor(only({9, 10, 11, 14, 15})),
              QString::fromLatin1("01;5;ANT \xE9;2;S1"));

    auto proprietary = made(RTCM2_init_Message_Type_59);
    const unsigned char bytes[] = {1, 2, 3, 10, 11, 12, 13, 14, 15};
    RTCM2_memcpy_Message_Type_59_Data(&proprietary, bytes, 9);
    const RTCM2_Message_Type_59_Message data(&proprietary, false);
    const std::pair<std::uint8_t, const char*> groups[] = {
        {0, ""}, {4, "0102030a"}, {5, "0102030a 0b"}, {9, "0102030a 0b0c0d0e 0f"}};
    for (const auto& [length, line] : groups) {
        proprietary.Data_Length = length;
        EXPECT_EQ(data.getRawStringFor(only({8})), QString::fromLatin1(line));
    }
}

TEST(RawLine, ValuesNotToBeUsed)
{
    auto element = made(RTCM2_init_Type_15);
    const RTCM2_Type_15_Message delay(&element, nullptr, false);
    element.Rate_Of_Change = -8192;
    EXPECT_EQ(delay.getRawStringFor(all), QStringLiteral("00;00;0;0;DoNotUse"));
    Message::useDoNotUseString = false;
    EXPECT_EQ(delay.getRawStringFor(only({4})), QStringLiteral("-8192"));
    Message::useDoNotUseString = true;
    element.Rate_Of_Change = -8191;
    EXPECT_EQ(delay.getRawStringFor(only({4})), QStringLiteral("-8191"));
}

TEST(RawLine, CountsBeyondTheCapacityReadNothingElse)
{
    const auto special =
        std::make_unique<RTCM2_Message_Type_16_s>(made(RTCM2_init_Message_Type_16));
    std::fill(std::begin(special->Message), std::end(special->Message), 'x');
    special->Message_Length = 255;
    const RTCM2_Message_Type_16_Message text(special.get(), false);
    EXPECT_EQ(text.getRawStringFor(only({8})), QString(91, QLatin1Char('x')));
    EXPECT_EQ(text.getMessageVector().size(), 256);
    EXPECT_EQ(text.getMessage(91), '\0');

    const auto record = std::make_unique<RTCM2_Message_Type_59_s>(made(RTCM2_init_Message_Type_59));
    record->Data_Length = 255;
    const RTCM2_Message_Type_59_Message data(record.get(), false);
    EXPECT_EQ(data.getRawStringFor(only({8})).size(), 2 * 93 + 23);
}

// Raw lines and descriptors must agree about every field of a message.
void expectLineOfDescriptors(const Message& message)
{
    const auto& fields = message.getMessageInfo()->getFieldInfos();
    QStringList texts;
    for (int i = 0; i < fields.size(); ++i) {
        QString text = fields[i]->getValueString(&message);
        if (fields[i]->isRepeated() && fields[i]->getType() == FieldType::byte()) {
            text = message.getRawStringFor(only({i}));    // grouped otherwise
        }
        if (fields[i]->hasDoNotUseValue() &&
            fields[i]->getValue(&message, 0) == fields[i]->getDoNotUseValue()) {
            text = Message::doNotUseString;
        }
        texts << text;
    }
    EXPECT_EQ(message.getRawStringFor(QVector<bool>(fields.size(), true)),
              texts.join(QLatin1Char(';')));
}

TEST(RawLine, AgreesWithTheDescriptors)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));    // must not matter
    RTCM2Decoder decoder(nullptr);
    int messages = 0;
    QObject::connect(&decoder, &MessageSource::newMessage, [&](const Message* message) {
        ++messages;
        expectLineOfDescriptors(*message);
        const FieldInfo* last = message->getMessageInfo()->getFieldInfos().last();
        for (unsigned i = 0; i < last->getCount(message); ++i) {
            if (const Message* element = last->getValue(message, i).toSubMessage()) {
                expectLineOfDescriptors(*element);
            }
        }
    });
    std::mt19937 random(4711);
    for (const MessageInfo* info : RTCM2_FormatInfo::getInstance()->getMessageInfos()) {
        const unsigned type = info->getName().section(' ', -1).toUInt();
        for (unsigned round = 0; round < 20; ++round) {
            std::vector<std::uint8_t> payload(93);
            std::generate(payload.begin(), payload.end(), random);
            const auto bytes = packed(type, 1 + round % 4, payload);
            EXPECT_GT(decoder.decodeMessage(bytes.data(), static_cast<unsigned>(bytes.size())), 0);
        }
    }
    EXPECT_EQ(messages, 15 * 20);
    QLocale::setDefault(QLocale::c());
}

TEST(SubMessages, AreMadeWhenAskedForAndGoWithTheirMessage)
{
    const int before = liveMessages();
    auto message = corrections(3);
    const RTCM2_Message_Type_1_Message& constant = *message;
    EXPECT_EQ(constant.getNumberOfCorrections(), 3U);
    EXPECT_TRUE(message->getSubMessages().isEmpty());
    EXPECT_TRUE(constant.getSubMessages().isEmpty());
    EXPECT_EQ(liveMessages(), before + 1);

    const auto elements = message->getCorrectionsVector();
    const auto constElements = constant.getCorrectionsVector();
    ASSERT_EQ(elements.size(), 3);
    ASSERT_EQ(constElements.size(), 3);
    ASSERT_EQ(message->getSubMessages().size(), 3);
    ASSERT_EQ(constant.getSubMessages().size(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(elements[i]->getSatellite_Id(), i + 1);
        EXPECT_EQ(message->getCorrections(static_cast<unsigned>(i)), elements[i]);
        EXPECT_EQ(constant.getCorrections(static_cast<unsigned>(i)), elements[i]);
        EXPECT_EQ(constElements[i], elements[i]);
        EXPECT_EQ(message->getSubMessages()[i], elements[i]);
        EXPECT_EQ(constant.getSubMessages()[i], elements[i]);
        EXPECT_EQ(elements[i]->getParentMessage(), message.get());
        EXPECT_TRUE(elements[i]->getSubMessages().isEmpty());
    }
    EXPECT_EQ(constElements.constData(), constant.getCorrectionsVector().constData()) << "shared";
    EXPECT_EQ(liveMessages(), before + 4);
    message.reset();
    EXPECT_EQ(liveMessages(), before);
    EXPECT_TRUE(corrections(0)->getCorrectionsVector().isEmpty());
}

TEST(MessageObjects, LeaveRecordsOfOthersAlone)
{
    auto record = made(RTCM2_init_Message_Type_21);
    RTCM2_append_Message_Type_21_Data(&record)->Satellite_Id = 17;
    for (int round = 0; round < 2; ++round) {
        RTCM2_Message_Type_21_Message message(&record, false);
        EXPECT_EQ(message.getData(0)->getSatellite_Id(), 17);
        EXPECT_EQ(RecordPeek::recordOf(&message), &record);
        EXPECT_EQ(RecordPeek::recordOf(message.getData(0)), record.Data);
    }
    RTCM2_free_Message_Type_21_children(&record);
}

TEST(MessageObjects, RefuseIndicesOutOfRangeByDisplayName)
{
    auto named = antenna(0);
    auto proprietary = made(RTCM2_init_Message_Type_59);
    proprietary.Data_Length = 2;
    const auto plain = corrections(3);
    const RTCM2_Message_Type_1_Message& constant = *plain;
    const RTCM2_Message_Type_23_Message antennas(&named, false);
    const RTCM2_Message_Type_59_Message data(&proprietary, false);
    const auto refusal = [](const char* field) {
        return QStringLiteral("Requesting value for an repeated field %1 with out of range index.")
            .arg(QLatin1String(field));
    };
    EXPECT_EQ(misuseText([&] { plain->getCorrections(3); }), refusal("Corrections"));
    EXPECT_EQ(misuseText([&] { constant.getCorrections(~0U); }), refusal("Corrections"));
    EXPECT_EQ(misuseText([&] { data.getData(2); }), refusal("Data"));
    EXPECT_EQ(misuseText([&] { antennas.getAntenna_Serial_Number(3); }),
              refusal("Antenna Serial Number"));
    // The last index is the terminator; the serial number is readable whatever the flag says.
    EXPECT_FALSE(antennas.hasAntenna_Serial_Number());
    EXPECT_EQ(antennas.getAntenna_Serial_NumberVector(), QVector<RTCM2_char>({'S', '1', '\0'}));
    EXPECT_EQ(antennas.getAntenna_Serial_NumberArray(), named.Antenna_Serial_Number);
}

TEST(MessageObjectsDeathTest, HaveNothingToTellWithoutRecord)
{
    qputenv("QT_FORCE_STDERR_LOGGING", "1");
    const auto fatal = [](const char* name) {
        return std::string(name) + "::assertRepresentation.. failed when trying to access data of "
                                   "an uninitialized message\\.";
    };
    const RTCM2_Message_Type_1_Message main(nullptr, true);
    const RTCM2_Message_Type_23_Message antennas(nullptr, true);
    const RTCM2_OCDS_52_Message element(nullptr, nullptr, true);
    EXPECT_EQ(RecordPeek::recordOf(&main), nullptr);
    EXPECT_TRUE(main.getSubMessages().isEmpty());
    EXPECT_EQ(main.getRawStringFor({}) + main.getRawStringFor({false}), QString());
    EXPECT_DEATH(main.getRawStringFor({true}), fatal("RTCM2_Message_Type_1_Message"));
    EXPECT_DEATH(main.getNs(), fatal("RTCM2_Message_Type_1_Message"));
    EXPECT_DEATH(main.getCorrectionsVector(), fatal("RTCM2_Message_Type_1_Message"));
    EXPECT_DEATH(antennas.hasAntenna_Serial_Number(), fatal("RTCM2_Message_Type_23_Message"));
    EXPECT_DEATH(antennas.getNumberOfAntenna_Descriptor(), fatal("RTCM2_Message_Type_23_Message"));
    EXPECT_DEATH(element.getWL_Bias(), fatal("RTCM2_OCDS_52_Message"));
}

}    // namespace
