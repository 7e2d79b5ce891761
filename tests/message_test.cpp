#include "RTCM2_Message_Type_16_Message.h"
#include "RTCM2_Message_Type_1_Message.h"
#include "RTCM2_Message_Type_21_Message.h"
#include "RTCM2_Message_Type_22_Message.h"
#include "RTCM2_Message_Type_23_Message.h"
#include "RTCM2_Message_Type_59_Message.h"
#include "RTCM2_OCDS_52_Message.h"
#include "RTCM2_Type_15_Message.h"
#include "support/MessageHelpers.h"

#include <QLocale>
#include <QStringList>

#include <functional>
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
    const auto message = corrections(2);
    EXPECT_EQ(message->getRawStringFor(all), QString("66;1;0;0;0;0;00;2;submsg submsg"));
    EXPECT_EQ(message->getRawStringFor(only({1, 6})), QString("1;00"));
    EXPECT_EQ(message->getRawStringFor(QVector<bool>(3, true)), QString("66;1;0"));
    EXPECT_EQ(message->getRawStringFor({}), QString());
    Message::fieldSeparator = QStringLiteral(" | ");
    EXPECT_EQ(message->getRawStringFor(only({0, 7})), QString("66 | 2"));
    Message::fieldSeparator = QStringLiteral(";");
    EXPECT_TRUE(message->getSubMessages().isEmpty());
    EXPECT_EQ(corrections(0)->getRawStringFor(all), QString("66;1;0;0;0;0;00;0;"));
}

TEST(RawLine, ShowsEveryTypeOfValue)
{
    const struct {
        int type;
        const char* members;
        const char* line;    // behind the header
    } cases[] = {
        {22, "No_Of_Data_Words=1 L1_ECEF_Delta_Z=-128", "0;0;-128;;;;;;;;;"},
        {22, "No_Of_Data_Words=2 Phase_Center_Height=174761", "0;0;0;00;00;00;00;00;174761;;;"},
        {22, "No_Of_Data_Words=3 L2_ECEF_Delta_X=-1", "0;0;0;00;00;00;00;00;0;-1;0;0"},
        {22, "No_Of_Data_Words=4", "0;0;0;;;;;;;;;"},
        {24, "ECEF_X=-137438953472", "-137438953472;00;0;00;0;00;00;;"},
        // A text ends before its first NUL.
        {16, "Message=Gr\xFC\xDF\a+", "6;Gr\xFC\xDF\a+"},
        {16, "Message=Gr\xFC\xDF", "6;Gr\xFC\xDF"},
        {23, "Serial_Flag=1 Antenna_Descriptor=A\xE9 Antenna_Serial_Number=S1",
         "00;00;01;2;A\xE9;0;00;2;S1"},
        {23, "NAS=2", "00;00;00;0;;0;00;2;"},
        {59, "No_Of_Data_Words=0", "0;"},
        {59, "Data_Length=1 Data=10", "3;100000"},
        {59, "Data_Length=6 Data=ff", "6;ff000000 0000"},
    };
    for (const auto& [type, members, line] : cases) {
        const QString shown = Made(type, members)->getRawStringFor(all);
        EXPECT_EQ(shown.section(';', 7), QString::fromLatin1(line)) << members;
    }
}

TEST(RawLine, TheHostWordsValuesNotToBeUsed)
{
    auto element = made(RTCM2_init_Type_15);
    const RTCM2_Type_15_Message delay(&element, nullptr, false);
    element.Rate_Of_Change = -8192;
    EXPECT_EQ(delay.getRawStringFor(all), QString("00;00;0;0;DoNotUse"));
    Message::useDoNotUseString = false;
    EXPECT_EQ(delay.getRawStringFor(only({4})), QString("-8192"));
    Message::useDoNotUseString = true;
    element.Rate_Of_Change = -8191;
    EXPECT_EQ(delay.getRawStringFor(only({4})), QString("-8191"));
}

// A record that holds a pattern also behind its texts and bytes.
template <class Record>
std::unique_ptr<Record> patterned()
{
    auto record = std::make_unique<Record>();
    std::memset(static_cast<void*>(record.get()), 'x', sizeof *record);
    return record;
}

TEST(RawLine, CountsBeyondTheCapacityReadNothingElse)
{
    const auto special = patterned<RTCM2_Message_Type_16_s>();
    special->Message_Length = 255;
    const RTCM2_Message_Type_16_Message text(special.get(), false);
    EXPECT_EQ(text.getRawStringFor(only({8})), QString(91, QLatin1Char('x')));
    EXPECT_EQ(text.getMessageVector().mid(91), QVector<RTCM2_char>(256 - 91, '\0'));
    EXPECT_EQ(text.getMessage(91), '\0');
    EXPECT_TRUE(fieldOf("Message Type 16", "Message")->getValue(&text, 91) == FieldValue::ch('\0'));
    // The text ends with the announced number, the terminator included.
    special->Message_Length = 2;
    EXPECT_EQ(text.getRawStringFor(only({8})), QString("xxx"));

    const auto record = patterned<RTCM2_Message_Type_59_s>();
    record->Data_Length = 255;
    const RTCM2_Message_Type_59_Message data(record.get(), false);
    EXPECT_EQ(data.getRawStringFor(only({8})).size(), 2 * 93 + 23);
    EXPECT_EQ(data.getDataVector().mid(93), QVector<quint8>(255 - 93, 0));
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
    for (unsigned i = 0; i < fields.last()->getCount(&message); ++i) {
        if (const Message* element = fields.last()->getValue(&message, i).toSubMessage()) {
            expectLineOfDescriptors(*element);
        }
    }
}

TEST(RawLine, AgreesWithTheDescriptors)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));    // must not matter
    RTCM2Decoder decoder(nullptr);
    int messages = 0;
    QObject::connect(&decoder, &MessageSource::newMessage, [&](const Message* message) {
        ++messages;
        expectLineOfDescriptors(*message);
    });
    std::mt19937 random(4711);
    for (const MessageInfo* info : RTCM2_FormatInfo::getInstance()->getMessageInfos()) {
        const unsigned type = info->getName().section(' ', -1).toUInt();
        for (unsigned round = 0; round < 20; ++round) {
            Bytes payload(93);
            std::generate(payload.begin(), payload.end(), random);
            const Bytes bytes = packed(type, 1 + round % 4, payload);
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
    EXPECT_TRUE(message->getSubMessages().isEmpty() && constant.getSubMessages().isEmpty());
    EXPECT_EQ(liveMessages(), before + 1);
    const auto elements = message->getCorrectionsVector();
    const QVector<const RTCM2_DGNSS_Message*> same(elements.cbegin(), elements.cend());
    ASSERT_EQ(elements.size(), 3);
    EXPECT_EQ(constant.getCorrectionsVector(), same);
    EXPECT_EQ(constant.getCorrectionsVector().constData(),
              constant.getCorrectionsVector().constData())
        << "shared";
    EXPECT_EQ(message->getSubMessages(), QVector<Message*>(elements.cbegin(), elements.cend()));
    EXPECT_EQ(constant.getSubMessages(),
              QVector<const Message*>(elements.cbegin(), elements.cend()));
    for (unsigned i = 0; i < 3; ++i) {
        const auto* element = elements[static_cast<int>(i)];
        EXPECT_EQ(element->getSatellite_Id(), i + 1);
        EXPECT_EQ(message->getCorrections(i), element);
        EXPECT_EQ(constant.getCorrections(i), element);
        EXPECT_EQ(element->getParentMessage(), message.get());
        EXPECT_TRUE(element->getSubMessages().isEmpty());
    }
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

TEST(MessageObjects, RefuseWhatTheyDoNotHave)
{
    auto named = made(RTCM2_init_Message_Type_23);
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&named, "S1");
    const RTCM2_Message_Type_23_Message antennas(&named, false);
    auto proprietary = made(RTCM2_init_Message_Type_59);
    proprietary.Data_Length = 2;
    const RTCM2_Message_Type_59_Message data(&proprietary, false);
    auto extended = made(RTCM2_init_Message_Type_22);
    extended.No_Of_Data_Words = 2;
    extended.Phase_Center_Height = 174762;
    const RTCM2_Message_Type_22_Message absent(&extended, false);
    const auto plain = corrections(3);
    const std::pair<std::function<void()>, const char*> refused[] = {
        {[&] { plain->getCorrections(3); }, "Corrections"},
        {[&] { std::as_const(*plain).getCorrections(~0U); }, "Corrections"},
        {[&] { data.getData(2); }, "Data"},
        {[&] { antennas.getAntenna_Serial_Number(3); }, "Antenna Serial Number"}};
    for (const auto& [call, field] : refused) {
        EXPECT_EQ(misuseText(call), QString("Requesting value for an repeated field %1 with out of "
                                            "range index.")
                                        .arg(field));
    }
    EXPECT_EQ(absent.getPhase_Center_Height(), 174762U);
    EXPECT_EQ(misuseText([&] { absent.getL2_ECEF_Delta_X(); }),
              QString("Requesting value for a non-present optional field."));
    // The last index is the terminator; the serial number is readable whatever the flag says.
    EXPECT_FALSE(antennas.hasAntenna_Serial_Number());
    EXPECT_EQ(antennas.getAntenna_Serial_NumberVector(), QVector<RTCM2_char>({'S', '1', '\0'}));
    EXPECT_EQ(antennas.getAntenna_Serial_NumberArray(), named.Antenna_Serial_Number);
}

TEST(MessageObjectsDeathTest, HaveNothingToTellWithoutRecord)
{
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
    EXPECT_DEATH(main.getCorrectionsVector(), fatal("RTCM2_Message_Type_1_Message"));
    EXPECT_DEATH(antennas.hasAntenna_Serial_Number(), fatal("RTCM2_Message_Type_23_Message"));
    EXPECT_DEATH(antennas.getNumberOfAntenna_Descriptor(), fatal("RTCM2_Message_Type_23_Message"));
    EXPECT_DEATH(element.getWL_Bias(), fatal("RTCM2_OCDS_52_Message"));
}

}    // namespace
