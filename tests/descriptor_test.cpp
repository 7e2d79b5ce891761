#include "FieldInfo.h"
#include "MessageInfo.h"
#include "RTCM2_Message_Type_15_Message.h"
#include "RTCM2_Message_Type_16_Message.h"
#include "RTCM2_Message_Type_18_Message.h"
#include "RTCM2_Message_Type_19_Message.h"
#include "RTCM2_Message_Type_1_Message.h"
#include "RTCM2_Message_Type_21_Message.h"
#include "RTCM2_Message_Type_22_Message.h"
#include "RTCM2_Message_Type_23_Message.h"
#include "RTCM2_Message_Type_24_Message.h"
#include "RTCM2_Message_Type_32_Message.h"
#include "RTCM2_Message_Type_59_Message.h"
#include "support/MessageHelpers.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace {

const FieldInfo* fieldOf(const QString& kind, const QString& name)
{
    for (const MessageInfo* info : allKinds()) {
        for (const FieldInfo* field : info->getFieldInfos()) {
            if (info->getName() == kind && field->getName() == name) {
                return field;
            }
        }
    }
    qFatal("no field %s in %s", qPrintable(name), qPrintable(kind));
}

TEST(Catalogue, FactsOfKindsAndFieldsAgree)
{
    for (const MessageInfo* info : allKinds()) {
        SCOPED_TRACE(info->getName().toStdString());
        QVector<MessageInfo::Discriminant> discriminants;
        if (info->isMain()) {
            const unsigned type = info->getName().section(' ', -1).toUInt();
            discriminants.append({info->getFieldInfos()[1], FieldValue::u(type, 6)});
        }
        EXPECT_EQ(info->getDiscriminantValues(), discriminants);
        for (int index = 0; index < info->getFieldInfos().size(); ++index) {
            const FieldInfo* field = info->getFieldInfos()[index];
            const FieldType type = field->getType();
            EXPECT_FALSE(info->getFieldFlag(index));
            EXPECT_EQ(field->getRole() == FieldInfo::Data, type.getKind() != FieldType::SubMessage);
            for (const auto& [value, text] : field->getSymbolicValues()) {
                EXPECT_EQ(value.getKind(), type.getKind()) << field->getName().toStdString();
                EXPECT_EQ(value.getWidth(), type.getWidth()) << field->getName().toStdString();
            }
        }
    }
    // Texts stay in the order in which they are given.
    const auto health = fieldOf("Message Type 3", "Station Health")->getSymbolicValues();
    ASSERT_EQ(health.size(), 8);
    EXPECT_EQ(health.first().first, FieldValue::byte(7));
    EXPECT_EQ(health.first().second, QString("Not Working"));
}

// A record of zeros and a message object on it.
template <class MessageClass>
struct Sample {
    using Record = typename MessageClass::Record;

    Sample() : message(make(&record)) {}
    Record* operator->() { return &record; }
    operator const Message*() const { return &message; }

    static MessageClass make(Record* record)
    {
        if constexpr (std::is_constructible_v<MessageClass, Record*, bool>) {
            return MessageClass(record, false);
        } else {
            return MessageClass(record, nullptr, false);
        }
    }

    Record record{};
    MessageClass message;
};

const FieldInfo* fieldOf(const Message* message, const char* name)
{
    return fieldOf(message->getMessageInfo()->getName(), name);
}

class FieldTest : public testing::Test {
protected:
    // Descriptors take the default locale when they first render; here it is one that groups.
    static void SetUpTestSuite() { QLocale::setDefault(german); }

    static const QLocale german;
};

const QLocale FieldTest::german(QLocale::German, QLocale::Germany);

TEST_F(FieldTest, ValuesOfEveryCategory)
{
    Sample<RTCM2_Message_Type_1_Message> three, empty;
    RTCM2_DGNSS_s elements[3] = {};
    three->Corrections = elements;
    three->Ns = 3;
    three->Reference_Station_Id = 100;
    Sample<RTCM2_Message_Type_22_Message> absent, present;
    absent->No_Of_Data_Words = 1;
    present->No_Of_Data_Words = 3;
    present->L2_ECEF_Delta_X = -3;
    Sample<RTCM2_Message_Type_23_Message> flagged, unflagged;
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&flagged.record, "\xC4");
    flagged->Serial_Flag = 1;
    Sample<RTCM2_Message_Type_24_Message> point;
    point->ECEF_X = -1;

    const char* const other =
        "Requesting value for a field that is not present in the given kind of message.";
    const char* const missing = "Requesting value for an optional field that is not present.";
    const char* const zeroTimes =
        "Requesting value for an repeated field that is repeated 0 times.";
    const char* const outOfRange =
        "Requesting value for an repeated field with out of range index.";
    const char* const single = "Requesting value for a non-repeated field using non-zero index.";
    using Value = FieldValue;
    struct Case {
        const Message* message;
        const char* kind;
        const char* field;
        unsigned count;
        unsigned index;
        Value value;
        const char* refusal = nullptr;
    };
    const Case cases[] = {
        {three, "Message Type 1", "Reference Station Id", 1, 0, Value::u(100, 10)},
        {three, "Message Type 1", "Reference Station Id", 1, 1, {}, single},
        {empty, "Message Type 9", "Reference Station Id", 0, 0, {}, other},
        {nullptr, "Message Type 1", "Reference Station Id", 0, 1, {}, other},
        {three, "Message Type 1", "Corrections", 3, 2,
         Value::subMessage(three.message.getCorrections(2))},
        {three, "Message Type 1", "Corrections", 3, 3, {}, outOfRange},
        {empty, "Message Type 1", "Corrections", 0, 3, {}, zeroTimes},
        {three, "Message Type 31", "Corrections", 0, 3, {}, other},
        {present, "Message Type 22", "L2 ECEF Delta-X", 1, 0, Value::i(-3, 8)},
        {present, "Message Type 22", "L2 ECEF Delta-X", 1, 1, {}, single},
        {absent, "Message Type 22", "L2 ECEF Delta-X", 0, 1, {}, missing},
        {point, "Message Type 22", "Reserved", 0, 1, {}, other},
        {flagged, "Message Type 23", "Antenna Serial Number", 2, 0, Value::ch('\xC4')},
        {flagged, "Message Type 23", "Antenna Serial Number", 2, 1, Value::ch('\0')},
        {flagged, "Message Type 23", "Antenna Serial Number", 2, 2, {}, outOfRange},
        {unflagged, "Message Type 23", "Antenna Serial Number", 0, 9, {}, missing},
        {point, "Message Type 23", "Antenna Serial Number", 0, 9, {}, other},
        {point, "Message Type 24", "ECEF X", 1, 0, Value::i(-1, 38)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.kind) + "/" + c.field + " " + std::to_string(c.index));
        const FieldInfo* field = fieldOf(QString(c.kind), QString(c.field));
        EXPECT_EQ(field->getCount(c.message), c.count);
        EXPECT_EQ(field->isPresent(c.message), c.count != 0);
        if (c.refusal != nullptr) {
            EXPECT_EQ(misuseText([&] { field->getValue(c.message, c.index); }), QString(c.refusal));
        } else {
            EXPECT_TRUE(field->getValue(c.message, c.index) == c.value);
            EXPECT_TRUE(field->getValueUnchecked(c.message, c.index) == c.value);
        }
    }
}

TEST_F(FieldTest, ValueStringsOfCharacters)
{
    Sample<RTCM2_Message_Type_16_Message> text;
    RTCM2_strcpy_Message_Type_16_Message(&text.record, "HI\xDC");
    text->Message_Length = 6;
    // The text is told even where the message says that there is none.
    Sample<RTCM2_Message_Type_23_Message> antenna;
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&antenna.record, "S1");
    const FieldInfo* serial = fieldOf(antenna, "Antenna Serial Number");
    EXPECT_EQ(fieldOf(text, "Message")->getValueString(text), QString::fromLatin1("HI\xDC"));
    EXPECT_EQ(serial->getValueString(antenna), QString("S1"));
    EXPECT_EQ(misuseText([&] { serial->getValueString(text); }),
              QString("Requesting value for a field that is not present in the given kind of "
                      "message."));
}

TEST_F(FieldTest, TextsForPeople)
{
    Sample<RTCM2_DGNSS_Message> worst, best;
    worst->Scale_Factor = 1;
    worst->PRC = -32768;
    worst->RRC = -128;
    worst->Time_Of_Day = 5;
    best->PRC = -32767;
    best->RRC = -1;
    best->UDRE = 4;
    Sample<RTCM2_Message_Type_1_Message> corrections;
    corrections->Modified_Z_Count = 4500;
    RTCM2_DGNSS_s elements[1] = {};
    corrections->Corrections = elements;
    corrections->Ns = 1;
    Sample<RTCM2_Message_Type_18_Message> phases;
    phases->GNSS_Time_Of_Measurement = 599999;
    Sample<RTCM2_RTK_19_Message> range;
    range->Pseudorange = 4294967295U;
    Sample<RTCM2_RTK_21_Message> correction;
    correction->PSF = 0.32;
    Sample<RTCM2_Message_Type_22_Message> filled, high;
    filled->No_Of_Data_Words = high->No_Of_Data_Words = 2;
    filled->Phase_Center_Height = 174762;
    high->Phase_Center_Height = 174761;
    Sample<RTCM2_Message_Type_24_Message> point;
    point->ECEF_X = -137438953472;
    Sample<RTCM2_Message_Type_16_Message> text;
    RTCM2_strcpy_Message_Type_16_Message(&text.record, "H\xE9");
    Sample<RTCM2_Message_Type_59_Message> data;
    data->Data_Length = 2;
    data->Data[0] = 65;
    data->Data[1] = 16;

    struct Case {
        const Message* message;
        const char* field;
        const char* text;
        unsigned index = 0;
        bool withUnit = true;
    };
    const Case cases[] = {
        {worst, "Scale Factor", "0.32 m"},
        {best, "UDRE", "04"},
        {worst, "PRC", "error"},
        {best, "PRC", "-32.767"},
        {worst, "RRC", "error"},
        {best, "RRC", "-1"},
        {worst, "Time Of Day", "5"},
        {corrections, "Modified Z-Count", "4.500"},
        {corrections, "Corrections", "submsg"},
        {phases, "GNSS Time Of Measurement", "599.999 microsecond"},
        {phases, "GNSS Time Of Measurement", "599.999", 0, false},
        {range, "Pseudorange", "4.294.967.295"},
        {correction, "PSF", "0,320000"},
        {filled, "Phase Center Height", "fill bits"},
        {high, "Phase Center Height", "174.761"},
        {point, "ECEF X", "-137.438.953.472"},
        {text, "Message", "\xE9", 1},
        {data, "Data", "FKP", 0},
        {data, "Data", "10", 1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(fieldOf(c.message, c.field)->getInterpretedString(c.message, c.index, c.withUnit),
                  QString::fromLatin1(c.text))
            << c.field;
    }
    EXPECT_EQ(fieldOf(text, "Message")->getInterpretedString(text, 2, true), QString(QChar(0)));
    EXPECT_EQ(misuseText([&] { fieldOf(text, "Message")->getInterpretedString(text, 3, true); }),
              QString("Requesting value for an repeated field Message with out of range index."));
}

TEST_F(FieldTest, TheHostWordsValuesNotToBeUsed)
{
    Sample<RTCM2_Type_15_Message> delay;
    delay->Rate_Of_Change = -8192;
    const FieldInfo* rate = fieldOf(delay, "Rate Of Change");
    const auto text = [&] { return rate->getInterpretedString(delay, 0, true); };
    const QString before = Message::doNotUseString;
    EXPECT_EQ(text(), before);
    Message::doNotUseString = "n/a";
    EXPECT_EQ(text(), QString("n/a"));
    Message::useDoNotUseString = false;
    EXPECT_EQ(text(), QString());
    Message::useDoNotUseString = true;
    Message::doNotUseString = before;
    EXPECT_TRUE(rate->getDoNotUseValue() == FieldValue::i(-8192, 14));
}

TEST_F(FieldTest, LocaleIsTheDefaultOfTheFirstUse)
{
    // The first text need not be a number.
    Sample<RTCM2_DGNSS_Message> worst;
    worst->RRC = -128;
    const FieldInfo* rate = fieldOf(worst, "RRC");
    EXPECT_EQ(rate->getInterpretedString(worst, 0, true), QString("error"));
    Sample<RTCM2_Message_Type_32_Message> glonass;
    glonass->ECEF_X = glonass->ECEF_Y = 1234567;
    const auto text = [&](const char* name) {
        return fieldOf(glonass, name)->getInterpretedString(glonass, 0, true);
    };
    EXPECT_EQ(text("ECEF X"), QString("1.234.567"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(text("ECEF X"), QString("1.234.567"));
    EXPECT_EQ(text("ECEF Y"), QString("1,234,567"));
    QLocale::setDefault(german);
    EXPECT_EQ(text("ECEF Y"), QString("1,234,567"));
}

}    // namespace
