#include "RTCM2_Message_Type_23_Message.h"
#include "support/MessageHelpers.h"

#include <QLocale>
#include <QStringList>

namespace {

// What a descriptor says about a field, and what the row of its member does.
QStringList factsOf(const FieldInfo& field)
{
    QStringList facts{field.getName(), field.getUnit()};
    facts << (field.isOptional() ? "optional" : "") << (field.isRepeated() ? "repeated" : "")
          << (field.isVirtual() ? "virtual" : "") << (field.hasDoNotUseValue() ? "may lack" : "")
          << (field.getRole() == FieldInfo::Data ? "data" : "");
    for (const auto& [value, text] : field.getSymbolicValues()) {
        const bool isOfType = value.getKind() == field.getType().getKind() &&
                              value.getWidth() == field.getType().getWidth();
        facts << (isOfType ? text : "of another type: " + text);
    }
    for (const FieldInfo* part : field.getSubFieldInfos()) {
        facts << part->getName();
    }
    return facts;
}

QStringList factsOf(const RTCM2_member_s& member, const RTCM2_kind_s& kind)
{
    const auto role = member.role;
    const bool isComputed =
        role == RTCM2_ROLE_COUNT || role == RTCM2_ROLE_LOOKUP || role == RTCM2_ROLE_CONSTANT;
    QStringList facts{member.display, member.unit};
    facts << (member.when ? "optional" : "") << (member.length ? "repeated" : "")
          << (isComputed ? "virtual" : "") << (member.has_do_not_use ? "may lack" : "")
          << (role != RTCM2_ROLE_ARRAY ? "data" : "");
    for (std::uint32_t i = 0; i < member.text_count; ++i) {
        facts << member.texts[i].text;
    }
    for (std::uint32_t i = 0; i < kind.member_count; ++i) {
        if (kind.members[i].of == &member && kind.members[i].role == RTCM2_ROLE_SLICE) {
            facts << kind.members[i].display;
        }
    }
    return facts;
}

TEST(Catalogue, TellsWhatTheRowsSay)
{
    for (const MessageInfo* info : allKinds()) {
        const RTCM2_kind_s& kind = *RTCM2_find_kind(info->getName().toLatin1().constData());
        const auto fields = info->getFieldInfos();
        QVector<MessageInfo::Discriminant> discriminants;
        if (info->isMain()) {
            discriminants.append({fields[1], FieldValue::u(static_cast<quint64>(kind.type), 6)});
        }
        EXPECT_EQ(info->isMain(), kind.type >= 0);
        EXPECT_EQ(info->getShortDescriptiveText(), QString(kind.text));
        EXPECT_EQ(info->getDiscriminantValues(), discriminants);
        ASSERT_EQ(fields.size(), static_cast<int>(kind.member_count));
        for (int index = 0; index < fields.size(); ++index) {
            EXPECT_FALSE(info->getFieldFlag(index));
            EXPECT_EQ(factsOf(*fields[index]), factsOf(kind.members[index], kind));
        }
    }
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
        const char* message;
        const char* kind;
        const char* field;
        unsigned count;
        unsigned index;
        Value value;
        const char* refusal = nullptr;
    };
    const Case cases[] = {
        {"1 Reference_Station_Id=100", "1", "Reference Station Id", 1, 0, Value::u(100, 10)},
        {"1", "1", "Reference Station Id", 1, 1, {}, single},
        {"1", "9", "Reference Station Id", 0, 0, {}, other},
        {"1 Corrections Corrections", "1", "Corrections", 2, 2, {}, outOfRange},
        {"1", "1", "Corrections", 0, 3, {}, zeroTimes},
        {"1 Corrections", "31", "Corrections", 0, 3, {}, other},
        {"22 No_Of_Data_Words=3 L2_ECEF_Delta_X=-3", "22", "L2 ECEF Delta-X", 1, 0,
         Value::i(-3, 8)},
        {"22 No_Of_Data_Words=3", "22", "L2 ECEF Delta-X", 1, 1, {}, single},
        {"22 No_Of_Data_Words=1", "22", "L2 ECEF Delta-X", 0, 1, {}, missing},
        {"24", "22", "Reserved", 0, 1, {}, other},
        {"23 Serial_Flag=1 Antenna_Serial_Number=\xC4", "23", "Antenna Serial Number", 2, 0,
         Value::ch('\xC4')},
        {"23 Serial_Flag=1 Antenna_Serial_Number=\xC4", "23", "Antenna Serial Number", 2, 1,
         Value::ch('\0')},
        {"23 Serial_Flag=1", "23", "Antenna Serial Number", 1, 1, {}, outOfRange},
        {"23", "23", "Antenna Serial Number", 0, 9, {}, missing},
        {"24", "23", "Antenna Serial Number", 0, 9, {}, other},
        {"24 ECEF_X=-1", "24", "ECEF X", 1, 0, Value::i(-1, 38)},
        {"59 Data_Length=3 Data=41", "59", "Data", 3, 0, Value::byte(0x41)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.message) + ": " + c.field + " " + std::to_string(c.index));
        char* members = nullptr;
        const auto type = static_cast<int>(std::strtol(c.message, &members, 10));
        const Made message(type, members);
        const FieldInfo* field = fieldOf(QString("Message Type ") + c.kind, c.field);
        EXPECT_EQ(field->getCount(message), c.count);
        EXPECT_EQ(field->isPresent(message), c.count != 0);
        if (c.refusal != nullptr) {
            EXPECT_EQ(misuseText([&] { field->getValue(message, c.index); }), QString(c.refusal));
        } else {
            EXPECT_TRUE(field->getValue(message, c.index) == c.value);
            EXPECT_TRUE(field->getValueUnchecked(message, c.index) == c.value);
        }
    }
    EXPECT_FALSE(Value::u(100, 10) == Value::u(100, 9) || Value::u(1, 8) == Value::byte(1));
    const FieldInfo* station = fieldOf("Message Type 1", "Reference Station Id");
    EXPECT_EQ(station->getCount(nullptr), 0U);
    EXPECT_EQ(misuseText([&] { station->getValue(nullptr, 1); }), QString(other));
    EXPECT_EQ(misuseText([&] {
                  fieldOf("Message Type 23", "Antenna Serial Number")->getValueString(Made(16, ""));
              }),
              QString(other));
}

TEST_F(FieldTest, ValueStringsOfCharacters)
{
    const FieldInfo* serial = fieldOf("Message Type 23", "Antenna Serial Number");
    const Made announced(23, "Serial_Flag=1 Antenna_Serial_Number=S\xDC");
    EXPECT_EQ(serial->getValueString(announced), QString::fromLatin1("S\xDC"));
    EXPECT_EQ(serial->getValueString(Made(23, "NAS=2")), QString());
    // The text is told even where the message says that there is none.
    RTCM2_Message_Type_23_s record{};
    RTCM2_strcpy_Message_Type_23_Antenna_Serial_Number(&record, "S1");
    const RTCM2_Message_Type_23_Message message(&record, false);
    EXPECT_EQ(serial->getValueString(&message), QString("S1"));
}

TEST_F(FieldTest, TextsForPeople)
{
    struct Case {
        int type;
        const char* members;
        const char* field;
        const char* text;
        unsigned index = 0;
        bool withUnit = true;
    };
    const Case cases[] = {
        {1, "Corrections Scale_Factor=1", "Scale Factor", "0.32 m"},
        {1, "Corrections PRC=-32768", "PRC", "error"},
        {1, "Corrections PRC=-32767", "PRC", "-32.767"},
        {1, "Corrections RRC=-128", "RRC", "error"},
        {1, "Corrections Issue_Of_Data=85", "Time Of Day", "5"},
        {1, "Corrections", "Corrections", "submsg"},
        {1, "Modified_Z_Count=4500", "Modified Z-Count", "4.500"},
        {3, "Station_Health=2", "Station Health", "UDRE Scale Factor = 0.5"},
        {18, "GNSS_Time_Of_Measurement=599999", "GNSS Time Of Measurement", "599.999 microsecond"},
        {18, "GNSS_Time_Of_Measurement=599999", "GNSS Time Of Measurement", "599.999", 0, false},
        {19, "Data Pseudorange=4294967295", "Pseudorange", "4.294.967.295"},
        {21, "Data Pseudorange_Correction_Factor=1", "PSF", "0,320000"},
        {22, "No_Of_Data_Words=2 Phase_Center_Height=174762", "Phase Center Height", "fill bits"},
        {22, "No_Of_Data_Words=2 Phase_Center_Height=174761", "Phase Center Height", "174.761"},
        {24, "ECEF_X=-137438953472", "ECEF X", "-137.438.953.472"},
        {16, "Message=H\xE9", "Message", "\xE9", 1},
        {59, "Data_Length=3 Data=41", "Data", "FKP", 0},
        {59, "Data_Length=3 Data=10", "Data", "10", 0},
    };
    for (const auto& [type, members, field, text, index, withUnit] : cases) {
        EXPECT_EQ(Made(type, members).text(field, index, withUnit), QString::fromLatin1(text))
            << members;
    }
    const Made text(16, "Message=ab");
    EXPECT_EQ(text.text("Message", 3), QString(QChar(0)));
    EXPECT_EQ(misuseText([&] { text.text("Message", 4); }),
              QString("Requesting value for an repeated field Message with out of range index."));
}

TEST_F(FieldTest, TheHostWordsValuesNotToBeUsed)
{
    const Made delay(15, "Corrections Rate_Of_Change=-8192");
    const QString before = Message::doNotUseString;
    EXPECT_EQ(delay.text("Rate Of Change"), before);
    Message::doNotUseString = "n/a";
    EXPECT_EQ(delay.text("Rate Of Change"), QString("n/a"));
    Message::useDoNotUseString = false;
    EXPECT_EQ(delay.text("Rate Of Change"), QString());
    Message::useDoNotUseString = true;
    Message::doNotUseString = before;
    EXPECT_TRUE(fieldOf("Type 15", "Rate Of Change")->getDoNotUseValue() ==
                FieldValue::i(-8192, 14));
}

TEST_F(FieldTest, LocaleIsTheDefaultOfTheFirstUse)
{
    const Made glonass(32, "ECEF_X=1234567 ECEF_Y=1234567");
    EXPECT_EQ(glonass.text("ECEF X"), QString("1.234.567"));
    // The first text need not be a number.
    EXPECT_EQ(glonass.text("Station Health"), QString("UDRE Scale Factor = 1"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(glonass.text("ECEF X"), QString("1.234.567"));
    EXPECT_EQ(glonass.text("ECEF Y"), QString("1,234,567"));
    QLocale::setDefault(german);
    EXPECT_EQ(glonass.text("ECEF Y"), QString("1,234,567"));
}

}    // namespace
