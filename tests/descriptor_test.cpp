#include "FieldInfo.h"
#include "MessageInfo.h"
#include "RTCM2_JPL_46_Message.h"
#include "RTCM2_JPL_47_Message.h"
#include "RTCM2_JPL_49_Message.h"
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
#include "RTCM2_Message_Type_3_Message.h"
#include "RTCM2_Message_Type_59_Message.h"
#include "RTCM2_OCDS_51_Message.h"
#include "RTCM2_WACorrection_Message.h"
#include "support/MessageHelpers.h"

#include <QHash>
#include <QLocale>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

QVector<const MessageInfo*> allKinds()
{
    const FormatInfo* format = RTCM2_FormatInfo::getInstance();
    return format->getSubMessageInfos() + format->getMessageInfos();
}

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

// --- the catalogue ------------------------------------------------------------------------------

const char* const header = "Preamble byte, Message Type u6, Reference Station Id u10, "
                           "Modified Z-Count u13, Sequence No. u3, No. Of Data Words u5, "
                           "Station Health byte, ";

const char* const dgnss = "Ns u8 virtual, Corrections repeated DGNSS";
const char* const station = "ECEF X i32, ECEF Y i32, ECEF Z i32";
const char* const rtk = "Frequency byte, Smoothing Interval byte, "
                        "GNSS Time Of Measurement u20 in microsecond, Ns u8 virtual, "
                        "Data repeated RTK %1";
const char* const rtkElement = "Multiple Message byte, Code byte, Constellation byte, "
                               "Satellite Id u5, PRN u8 virtual, ";

// Name, type number and description of every kind, and its fields; those of main kinds follow the
// header.
struct KindRow {
    const char* name;
    unsigned type;
    const char* description;
    QString fields;
};

const KindRow kindRows[] = {
    {"Type 15", 0, "",
     "R byte, G byte, Satellite Id u5, Delay u14, Rate Of Change i14 never -8192"},
    {"DGNSS", 0, "",
     "Scale Factor byte, UDRE byte, Satellite Id u5, PRC i16, RRC i8, "
     "Issue Of Data byte split into Change Bit+Time Of Day, Change Bit u1, Time Of Day u7"},
    {"RTK 18", 0, "",
     QString(rtkElement) +
         "Data Quality byte, Cumulative Loss Of Continuity u5, Carrier Phase i32"},
    {"RTK 19", 0, "",
     QString(rtkElement) + "Data Quality byte, Multipath Error byte, Pseudorange u32"},
    {"RTK 20", 0, "",
     QString(rtkElement) + "Data Quality byte, Cumulative Loss Of Continuity u5, "
                           "Issue Of Data / Time Of Day u8, Carrier Phase Correction i24"},
    {"RTK 21", 0, "",
     QString(rtkElement) + "Range Rate Correction Factor byte, Data Quality byte, "
                           "Pseudorange Correction Factor byte, Multipath Error byte, "
                           "Issue Of Data / Time Of Day u8, Pseudorange Correction i16, "
                           "Range Rate Correction i8, PSF f64 virtual"},
    {"WACorrection", 0, "",
     "IODE byte, Delta X i11, PRN u5, SFO byte, Delta Y i11, SFC byte, Delta Z i11, Delta T i12"},
    {"JPL 46", 0, "",
     "IODE u8, SF byte, Delta X i11, Delta Y i11, Delta Z i11, RoC X i6, RoC Y i6, RoC Z i6"},
    {"JPL 47", 0, "", "IODE u8, SF byte, Delta T i11"},
    {"JPL 48", 0, "",
     "Tb u7, Delta X i13, Delta Y i13, Delta Z i13, RoC X i6, RoC Y i6, RoC Z i6, SF byte"},
    {"JPL 49", 0, "", "Tb u7, Delta T i13, SF byte"},
    {"OCDS 39", 0, "", "Clock u18"},
    {"OCDS 40", 0, "", "WL Bias u16"},
    {"OCDS 51", 0, "", "PRN u8 virtual, Clock u16"},
    {"OCDS 52", 0, "", "WL Bias u16"},
    {"Message Type 1", 1, "Differential GPS Corrections", dgnss},
    {"Message Type 3", 3, "GPS Reference Station Parameters", station},
    {"Message Type 9", 9, "GPS Partial Correction Set", dgnss},
    {"Message Type 15", 15, "Ionospheric Delay Message",
     "Ns u8 virtual, Corrections repeated Type 15"},
    {"Message Type 16", 16, "GPS Special Message",
     "Message Length u8 virtual, Message repeated ch"},
    {"Message Type 18", 18, "RTK Uncorrected Carrier Phases", QString(rtk).arg(18)},
    {"Message Type 19", 19, "RTK Uncorrected Pseudoranges", QString(rtk).arg(19)},
    {"Message Type 20", 20, "RTK Carrier Phase Corrections", QString(rtk).arg(20)},
    {"Message Type 21", 21, "RTK/Hi-Accuracy Pseudorange Corrections", QString(rtk).arg(21)},
    {"Message Type 22", 22, "Extended Reference Station Parameters",
     "L1 ECEF Delta-X i8, L1 ECEF Delta-Y i8, L1 ECEF Delta-Z i8, Reserved optional byte, "
     "Constellation optional byte, AT Indicator optional byte, ARP Indicator optional byte, "
     "Height Indicator optional byte, Phase Center Height optional u18, "
     "L2 ECEF Delta-X optional i8, L2 ECEF Delta-Y optional i8, L2 ECEF Delta-Z optional i8"},
    {"Message Type 23", 23, "Antenna Type Definition Record",
     "Reserved byte, ARP Indicator byte, Serial Flag byte, NAD u5, Antenna Descriptor repeated ch, "
     "Setup Id u8, Reserved2 byte, NAS u5, Antenna Serial Number optional repeated ch"},
    {"Message Type 24", 24, "Antenna Reference Point (ARP)",
     "ECEF X i38, Reserved byte, ECEF Y i38, Reserved2 byte, ECEF Z i38, Constellation byte, "
     "Height Indicator byte, Antenna Height optional u18, Reserved3 optional byte"},
    {"Message Type 31", 31, "Differential GLONASS Corrections", dgnss},
    {"Message Type 32", 32, "Differential GLONASS Reference Station Parameters", station},
    {"Message Type 59", 59, "Proprietary Message", "Data Length u8 virtual, Data repeated byte"},
};

QString typeText(const FieldType& type)
{
    const QString width = QString::number(type.getWidth());
    switch (type.getKind()) {
    case FieldType::Byte:
        return "byte";
    case FieldType::Character:
        return "ch";
    case FieldType::Float64:
        return "f64";
    case FieldType::Signed:
        return "i" + width;
    case FieldType::Unsigned:
        return "u" + width;
    case FieldType::SubMessage:
        return type.getSubMessageInfo()->getName();
    }
    return {};
}

QString fieldText(const FieldInfo* field)
{
    QString text = field->getName() + (field->isOptional() ? " optional" : "") +
                   (field->isRepeated() ? " repeated " : " ") + typeText(field->getType()) +
                   (field->isVirtual() ? " virtual" : "");
    if (!field->getUnit().isEmpty()) {
        text += " in " + field->getUnit();
    }
    if (field->hasDoNotUseValue()) {
        text += QStringLiteral(" never %1").arg(field->getDoNotUseValue().toSigned());
    }
    QStringList parts;
    for (const FieldInfo* part : field->getSubFieldInfos()) {
        parts << part->getName();
    }
    return parts.isEmpty() ? text : text + " split into " + parts.join('+');
}

TEST(Catalogue, KindsAndFields)
{
    const auto kinds = allKinds();
    ASSERT_EQ(kinds.size(), static_cast<int>(std::size(kindRows)));
    for (int i = 0; i < kinds.size(); ++i) {
        const KindRow& row = kindRows[i];
        const MessageInfo* info = kinds[i];
        const bool isMain = row.type != 0;
        QStringList texts;
        for (int index = 0; index < info->getFieldInfos().size(); ++index) {
            const FieldInfo* field = info->getFieldInfos()[index];
            texts << fieldText(field);
            EXPECT_FALSE(info->getFieldFlag(index));
            EXPECT_EQ(field->getRole() == FieldInfo::Data,
                      field->getType().getKind() != FieldType::SubMessage);
        }
        EXPECT_EQ(texts.join(", "), (isMain ? header : "") + row.fields);
        EXPECT_EQ(info->getName(), QString(row.name));
        EXPECT_EQ(info->isMain(), isMain);
        EXPECT_EQ(info->getShortDescriptiveText(), QString(row.description));
        QVector<MessageInfo::Discriminant> discriminants;
        if (isMain) {
            discriminants.append({info->getFieldInfos()[1], FieldValue::u(row.type, 6)});
        }
        EXPECT_EQ(info->getDiscriminantValues(), discriminants);
    }
}

// Texts of coded values in order; the fields are named with their kinds.
struct TextRow {
    const char* fields;
    const char* texts;
};

const char* const constellations = "0=GPS|1=GLONASS";
const char* const absentPresent = "0=Absent|1=Present";
const char* const loop128or32 = "0=1 OVER 128|1=1 OVER 32";

const TextRow textRows[] = {
    {"DGNSS/Scale Factor", "0=0.02 m|1=0.32 m"},
    {"DGNSS/UDRE", "0=LT 1 m|1=GT 1 m and LE 4 m|2=GT 4 m and LE 8 m|3=GT 8 m"},
    {"DGNSS/PRC", "-32768=error"},
    {"DGNSS/RRC", "-128=error"},
    {"Type 15/G", constellations},
    {"Type 15/Rate Of Change", "-8192=Do not use"},
    {"RTK 18/Multiple Message,RTK 19/Multiple Message,RTK 20/Multiple Message,"
     "RTK 21/Multiple Message",
     "0=No|1=Yes"},
    {"RTK 18/Code,RTK 19/Code,RTK 20/Code,RTK 21/Code", "0=CA-Code|1=P-Code"},
    {"RTK 18/Constellation,RTK 19/Constellation,RTK 20/Constellation,RTK 21/Constellation,"
     "Message Type 22/Constellation,Message Type 24/Constellation",
     constellations},
    {"RTK 18/Data Quality,RTK 20/Data Quality",
     "0=LE 0.00391 cycle|1=LE 0.00696 cycle|2=LE 0.01239 cycle|3=LE 0.02208 cycle|"
     "4=LE 0.03933 cycle|5=LE 0.07006 cycle|6=LE 0.12480 cycle|7=GT 0.12480 cycle"},
    {"RTK 19/Data Quality",
     "0=LE 0.020 m|1=LE 0.030 m|2=LE 0.045 m|3=LE 0.066 m|4=LE 0.099 m|5=LE 0.148 m|"
     "6=LE 0.220 m|7=LE 0.329 m|8=LE 0.491 m|9=LE 0.732 m|10=LE 1.092 m|11=LE 1.629 m|"
     "12=LE 2.430 m|13=LE 3.625 m|14=LE 5.409 m|15=GT 5.409 m"},
    {"RTK 19/Multipath Error",
     "0=LE 0.100 m|1=LE 0.149 m|2=LE 0.223 m|3=LE 0.332 m|4=LE 0.495 m|5=LE 0.739 m|"
     "6=LE 1.102 m|7=LE 1.644 m|8=LE 2.453 m|9=LE 3.660 m|10=LE 5.460 m|11=LE 8.145 m|"
     "12=LE 12.151 m|13=LE 18.127 m|14=GT 18.127 m|15=Undefined"},
    {"RTK 21/Range Rate Correction Factor,RTK 21/Pseudorange Correction Factor",
     "0=Fine Resolution|1=Coarse Resolution"},
    {"RTK 21/Data Quality", "0=LE 0.10 m|1=LE 0.25 m|2=LE 0.50 m|3=LE 1.00 m|4=LE 2.00 m|"
                            "5=LE 3.50 m|6=LE 5.00 m|7=GT 5.00 m"},
    {"RTK 21/Multipath Error", "0=LE 0.10 m|1=LE 0.25 m|2=LE 0.50 m|3=LE 1.00 m|4=LE 2.50 m|"
                               "5=LE 5.00 m|6=GT 5.00 m|7=Undefined"},
    {"Message Type 18/Smoothing Interval,Message Type 19/Smoothing Interval,"
     "Message Type 20/Smoothing Interval,Message Type 21/Smoothing Interval",
     "0=0 to 1|1=1 to 5|2=5 to 15|3=Undefined"},
    {"Message Type 22/AT Indicator,Message Type 22/ARP Indicator,"
     "Message Type 24/Height Indicator,Message Type 23/ARP Indicator,"
     "Message Type 23/Serial Flag",
     absentPresent},
    {"Message Type 22/Height Indicator", "0=Present|1=Absent"},
    {"Message Type 22/Phase Center Height", "174762=fill bits"},
    {"Message Type 23/Setup Id", "0=Unspecified"},
    {"Message Type 59/Data", "65=FKP"},
    {"WACorrection/SFO", "0=0.0078125 m|1=0.03125 m"},
    {"WACorrection/SFC", "0=0.0078125 m|1=0.0625 m"},
    {"JPL 47/SF", "0=1 OVER 128|1=1 OVER 16"},
    {"JPL 46/SF,JPL 48/SF,JPL 49/SF", loop128or32},
};

const char* const healthTexts =
    "7=Not Working|6=Transmission Not Monitored|5=UDRE Scale Factor = 0.1|"
    "4=UDRE Scale Factor = 0.2|3=UDRE Scale Factor = 0.3|2=UDRE Scale Factor = 0.5|"
    "1=UDRE Scale Factor = 0.75|0=UDRE Scale Factor = 1";

TEST(Catalogue, TextsOfCodedValues)
{
    QHash<QString, QString> expected;
    for (const TextRow& row : textRows) {
        for (const QString& field : QString(row.fields).split(',')) {
            expected.insert(field, row.texts);
        }
    }
    for (const MessageInfo* info : allKinds()) {
        if (info->isMain()) {
            expected.insert(info->getName() + "/Station Health", healthTexts);
        }
        for (const FieldInfo* field : info->getFieldInfos()) {
            QStringList texts;
            for (const auto& [value, text] : field->getSymbolicValues()) {
                EXPECT_EQ(value.getKind(), field->getType().getKind());
                EXPECT_EQ(value.getWidth(), field->getType().getWidth());
                const auto number = value.getKind() == FieldType::Signed
                                        ? QString::number(value.toSigned())
                                        : QString::number(value.toUnsigned());
                texts << number + '=' + text;
            }
            const QString name = info->getName() + '/' + field->getName();
            EXPECT_EQ(texts.join('|'), expected.take(name)) << name.toStdString();
        }
    }
    EXPECT_TRUE(expected.isEmpty());
}

// --- values and their texts ---------------------------------------------------------------------

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
    for (auto* antenna : {&flagged, &unflagged}) {
        RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&antenna->record, "\xC4");
    }
    flagged->Serial_Flag = 1;
    Sample<RTCM2_Message_Type_59_Message> bytes;
    Sample<RTCM2_Message_Type_3_Message> gps;
    Sample<RTCM2_Message_Type_24_Message> point;
    point->ECEF_X = -1;
    Sample<RTCM2_Type_15_Message> delay;
    delay->Rate_Of_Change = -8192;
    Sample<RTCM2_RTK_21_Message> range;
    range->PSF = 0.32;

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
        {three, "DGNSS", "PRC", 0, 7, {}, other},
        {three, "Message Type 1", "Corrections", 3, 2,
         Value::subMessage(three.message.getCorrections(2))},
        {three, "Message Type 1", "Corrections", 3, 3, {}, outOfRange},
        {empty, "Message Type 1", "Corrections", 0, 0, {}, zeroTimes},
        {empty, "Message Type 1", "Corrections", 0, 3, {}, zeroTimes},
        {three, "Message Type 31", "Corrections", 0, 3, {}, other},
        {present, "Message Type 22", "L2 ECEF Delta-X", 1, 0, Value::i(-3, 8)},
        {present, "Message Type 22", "L2 ECEF Delta-X", 1, 1, {}, single},
        {absent, "Message Type 22", "L2 ECEF Delta-X", 0, 0, {}, missing},
        {absent, "Message Type 22", "Reserved", 0, 1, {}, missing},
        {point, "Message Type 22", "Reserved", 0, 1, {}, other},
        {flagged, "Message Type 23", "Antenna Serial Number", 2, 0, Value::ch('\xC4')},
        {flagged, "Message Type 23", "Antenna Serial Number", 2, 1, Value::ch('\0')},
        {flagged, "Message Type 23", "Antenna Serial Number", 2, 2, {}, outOfRange},
        {unflagged, "Message Type 23", "Antenna Serial Number", 0, 0, {}, missing},
        {unflagged, "Message Type 23", "Antenna Serial Number", 0, 9, {}, missing},
        {bytes, "Message Type 23", "Antenna Serial Number", 0, 9, {}, other},
        {bytes, "Message Type 59", "Data", 0, 0, {}, zeroTimes},
        {gps, "Message Type 32", "ECEF Y", 0, 0, {}, other},
        {point, "Message Type 24", "ECEF X", 1, 0, Value::i(-1, 38)},
        {delay, "Type 15", "Rate Of Change", 1, 0, Value::i(-8192, 14)},
        {range, "RTK 21", "PSF", 1, 0, Value::f64(0.32)},
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
    Sample<RTCM2_Message_Type_23_Message> antenna;
    RTCM2_strcpy_Message_Type_23_Antenna_Descriptor(&antenna.record, "ANT");
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&antenna.record, "S1");
    EXPECT_EQ(fieldOf(text, "Message")->getValueString(text), QString::fromLatin1("HI\xDC"));
    EXPECT_EQ(fieldOf(text, "Message")->getCount(text), 7U);
    EXPECT_EQ(fieldOf(antenna, "Antenna Descriptor")->getValueString(antenna), QString("ANT"));
    EXPECT_EQ(fieldOf(antenna, "Antenna Serial Number")->getValueString(antenna), QString("S1"));
    for (const char* name : {"Antenna Descriptor", "Antenna Serial Number"}) {
        EXPECT_EQ(misuseText([&] { fieldOf(antenna, name)->getValueString(text); }),
                  QString("Requesting value for a field that is not present in the given kind of "
                          "message."));
    }
}

TEST_F(FieldTest, TextsForPeople)
{
    Sample<RTCM2_DGNSS_Message> worst, best;
    worst->Scale_Factor = 1;
    worst->UDRE = 3;
    worst->PRC = -32768;
    worst->RRC = -128;
    worst->Issue_Of_Data = 0x85;
    worst->Time_Of_Day = 5;
    best->PRC = -32767;
    best->RRC = -1;
    best->UDRE = 4;
    Sample<RTCM2_Type_15_Message> delay;
    delay->R = 3;
    delay->G = 1;
    delay->Delay = 16383;
    delay->Rate_Of_Change = -8191;
    Sample<RTCM2_Message_Type_1_Message> health;
    RTCM2_DGNSS_s elements[1] = {};
    health->Corrections = elements;
    health->Ns = 1;
    health->Preamble = 10;
    health->Station_Health = 7;
    health->Modified_Z_Count = 4500;
    Sample<RTCM2_Message_Type_18_Message> phases;
    phases->Frequency = 2;
    phases->Smoothing_Interval = 3;
    phases->GNSS_Time_Of_Measurement = 599999;
    Sample<RTCM2_Message_Type_19_Message> ranges;
    ranges->Smoothing_Interval = 4;
    Sample<RTCM2_RTK_19_Message> range;
    range->Data_Quality = 15;
    range->Multipath_Error = 15;
    range->Pseudorange = 4294967295U;
    Sample<RTCM2_RTK_21_Message> correction;
    correction->Pseudorange_Correction = -32768;
    correction->Range_Rate_Correction = -128;
    correction->PSF = 0.32;
    Sample<RTCM2_Message_Type_22_Message> extended;
    extended->No_Of_Data_Words = 2;
    extended->Phase_Center_Height = 174762;
    Sample<RTCM2_Message_Type_22_Message> high;
    high->No_Of_Data_Words = 2;
    high->Phase_Center_Height = 174761;
    high->Height_Indicator = 2;
    Sample<RTCM2_Message_Type_24_Message> point;
    point->ECEF_X = -137438953472;
    Sample<RTCM2_Message_Type_16_Message> text;
    RTCM2_strcpy_Message_Type_16_Message(&text.record, "H\xE9");
    Sample<RTCM2_Message_Type_23_Message> setup, noSetup;
    setup->Setup_Id = 200;
    Sample<RTCM2_Message_Type_59_Message> data;
    data->Data_Length = 2;
    data->Data[0] = 65;
    data->Data[1] = 16;
    Sample<RTCM2_WACorrection_Message> wide;
    wide->Delta_X = -1024;
    wide->SFC = 1;
    Sample<RTCM2_JPL_46_Message> jpl46;
    jpl46->SF = 1;
    jpl46->RoC_Z = -32;
    Sample<RTCM2_JPL_47_Message> jpl47;
    jpl47->SF = 1;
    Sample<RTCM2_OCDS_51_Message> clock;
    clock->Clock = 65535;

    struct Case {
        const Message* message;
        const char* field;
        const char* text;
        unsigned index = 0;
        bool withUnit = true;
    };
    const Case cases[] = {
        {worst, "Scale Factor", "0.32 m"},
        {best, "Scale Factor", "0.02 m"},
        {worst, "UDRE", "GT 8 m"},
        {best, "UDRE", "04"},
        {worst, "PRC", "error"},
        {best, "PRC", "-32.767"},
        {worst, "RRC", "error"},
        {best, "RRC", "-1"},
        {worst, "Issue Of Data", "85"},
        {worst, "Time Of Day", "5"},
        {delay, "R", "03"},
        {delay, "G", "GLONASS"},
        {delay, "Delay", "16.383"},
        {delay, "Rate Of Change", "-8.191"},
        {health, "Preamble", "0a"},
        {health, "Station Health", "Not Working"},
        {health, "Modified Z-Count", "4.500"},
        {health, "Corrections", "submsg"},
        {phases, "Frequency", "02"},
        {phases, "Smoothing Interval", "Undefined"},
        {ranges, "Smoothing Interval", "04"},
        {phases, "GNSS Time Of Measurement", "599.999 microsecond"},
        {phases, "GNSS Time Of Measurement", "599.999", 0, false},
        {range, "Data Quality", "GT 5.409 m"},
        {range, "Multipath Error", "Undefined"},
        {range, "Pseudorange", "4.294.967.295"},
        {correction, "Pseudorange Correction", "-32.768"},
        {correction, "Range Rate Correction", "-128"},
        {correction, "PSF", "0,320000"},
        {extended, "Phase Center Height", "fill bits"},
        {high, "Phase Center Height", "174.761"},
        {extended, "Height Indicator", "Present"},
        {high, "Height Indicator", "02"},
        {point, "Height Indicator", "Absent"},
        {point, "ECEF X", "-137.438.953.472"},
        {text, "Message", "\xE9", 1},
        {setup, "Setup Id", "200"},
        {noSetup, "Setup Id", "Unspecified"},
        {data, "Data", "FKP", 0},
        {data, "Data", "10", 1},
        {wide, "Delta X", "-1.024"},
        {wide, "SFC", "0.0625 m"},
        {jpl46, "SF", "1 OVER 32"},
        {jpl46, "RoC Z", "-32"},
        {jpl47, "SF", "1 OVER 16"},
        {clock, "PRN", "0"},
        {clock, "Clock", "65.535"},
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
