// Messages in JSON and what `encode` makes of them, beside what the samples hold.
#include "base/Names.h"
#include "commands/encode/JsonInput.h"
#include "commands/encode/MainKind.h"
#include "commands/encode/MessageEncoder.h"
#include "commands/encode/Template.h"
#include "format/PackedText.h"
#include "sources/FileSource.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

namespace {

using Items = std::vector<std::string>;

// For each object of an input the packed message and the line, or what is wrong.
Items encoded(const std::string& text)
{
    const std::string name = testing::TempDir() + "json" + std::to_string(::getpid());
    std::ofstream(name, std::ios::binary) << text;
    FileSource file(name);
    JsonInput input(file);
    MessageEncoder encoder;
    Items items;
    while (input.next()) {
        std::string item = input.problem();
        if (item.empty()) {
            item = encoder.encode(input.object());
        }
        if (item.empty()) {
            appendHex(item, encoder.packed());
            item += "@" + std::to_string(input.line());
        }
        items.push_back(item);
    }
    std::remove(name.c_str());
    return items;
}

// Message type and fields without those that all messages have; what should come of them.
struct Message {
    std::string type;
    std::string fields;
    std::string expected;
    std::string more = "";     // behind the fields
    std::string first = "";    // before the fields
};

void check(const std::vector<Message>& messages)
{
    for (const auto& [type, fields, expected, more, first] : messages) {
        const std::string text = R"({"kind":"Message Type )" + type + R"(","fields":{)" + first +
                                 (first.empty() ? "" : ",") +
                                 R"("Reference_Station_Id":5,"Modified_Z_Count":1,"Sequence_No":0,)"
                                 R"("Station_Health":0)" +
                                 (fields.empty() ? "" : "," + fields) + "}" + more + "}";
        const bool isHex = expected.find_first_not_of("0123456789abcdef") == std::string::npos;
        const std::string result =
            isHex ? expected + "@1" : "Message Type " + type + ": " + expected;
        EXPECT_EQ(encoded(text), Items{result}) << text;
    }
}

const std::string head = R"("Scale_Factor":1,"UDRE":2,"Satellite_Id":3,"PRC":-2,"RRC":-1)";
const std::string satellite = "{" + head + R"(,"Issue_Of_Data":129})";
const std::string one = R"("Corrections":[)" + satellite + "]";
const std::string position = R"("ECEF_X":1,"ECEF_Y":-1,"ECEF_Z":2147483647)";
const std::string antenna = R"("Reserved":0,"ARP_Indicator":1,"Setup_Id":9,"Reserved2":0,)";
const std::string deltas = R"("L1_ECEF_Delta_X":1,"L1_ECEF_Delta_Y":2,"L1_ECEF_Delta_Z":-1)";
const std::string word2 = R"(,"Reserved":0,"Constellation":0,"AT_Indicator":0,"ARP_Indicator":0,)"
                          R"("Height_Indicator":0,"Phase_Center_Height":1)";
const std::string rtk = R"("Frequency":0,"Smoothing_Interval":0,"GNSS_Time_Of_Measurement":0,)"
                        R"("Data":[{"Multiple_Message":0,"Code":0,"Constellation":0,)"
                        R"("Satellite_Id":1,"Range_Rate_Correction_Factor":0,"Data_Quality":0,)"
                        R"("Pseudorange_Correction_Factor":1,"Multipath_Error":0,)"
                        R"("Issue_Of_Data_Time_Of_Day":0,"Pseudorange_Correction":0,)"
                        R"("Range_Rate_Correction":0)";

std::string slices(const std::string& more)
{
    return R"("Corrections":[{)" + head + more + "}]";
}

TEST(Encode, WorksOutWhatIsLeftOut)
{
    check({
        {"1", one, "660405000810c3fffeff81aa"},
        {"1", one, "660405000818c3fffeff81aaaaaaaa", "", R"("No_Of_Data_Words":3)"},
        {"1", slices(R"(,"Change_Bit":1,"Time_Of_Day":1)"), "660405000810c3fffeff81aa"},
        {"1", slices(R"(,"Change_Bit":1,"Time_Of_Day":1,"Issue_Of_Data":129)"),
         "660405000810c3fffeff81aa"},
        {"1", one, "660405000810c3fffeff8101", R"(,"fill":"00000001")"},
        {"1", one, "660405000818c3fffeff8100000001",
         R"(,"fill":"00000000000000000000000000000001")"},
        {"16", R"("Message":"\u0000A\u0000\u00ff")", "664005000810004100ff0000"},
        {"21", rtk + R"(,"PSF":0.32,"PRN":0}])", "665405000818000000010800000000"},
        {"22", deltas + word2, "6658050008100102ff000001"},
        // lengths without their text and lengths that count a terminator
        {"23", antenna + R"("Serial_Flag":0,"NAS":3,"Antenna_Descriptor":"AB")",
         "665c050008104241420903aa"},
        {"23", antenna + R"("Serial_Flag":0,"NAD":3,"Antenna_Descriptor":"AB")",
         "665c05000810434142000900"},
        {"59", R"("Data":[1,2,255])", "66ec050008080102ff"},
        // the length of the fill tells the number of data words, too
        {"22", deltas, "6658050008200102ff000000000000000000",
         R"(,"fill":")" + std::string(72, '0') + "\""},
    });
    // names as people see them, and kinds that only the codec knows
    const Items expected = {"662405000800@1", "66b8050008105000ffffffff@2", "660da1@3"};
    EXPECT_EQ(encoded(R"({"kind":"message type 9","fields":{"Reference Station Id":5,)"
                      R"("Modified Z-Count":1,"Sequence No.":0,"Station Health":0,)"
                      R"("Corrections":[]}})"
                      "\n"
                      R"({"kind":"Message_Type_46","fields":{"Reference_Station_Id":5,)"
                      R"("Modified_Z_Count":1,"Sequence_No_":0,"Station_Health":0,"Version":1,)"
                      R"("Source":1,"Spare":0,"PRN_Bitmap":4294967295,"Corrections":[]}})"
                      "\n"
                      R"({"hex":"660Da1"})"),
              expected);
}

TEST(Encode, SaysWhatIsWrongWithAMessage)
{
    check({
        {"1", R"("Station Health":1)", "Station_Health: stands twice"},
        {"1", R"("X":1)", "\"X\": there is no such field"},
        {"1", R"("Correction":[])",
         "\"Correction\": there is no such field; did you mean Corrections?"},
        {"1", R"("Corrections":[{"PRC_m":0.02}])",
         "Corrections[0].\"PRC_m\": is no raw value; in its place give PRC, the integer that "
         "stands in "
         "the message"},
        {"1", R"("Corrections":[{"UDRE":"LE 1 m"}])",
         "Corrections[0].UDRE: no value means \"LE 1 m\"; did you mean \"LT 1 m\"?"},
        {"3", R"("ECEF_X":"1")", "ECEF_X: has to be an integer"},
        {"1", "", "Corrections: is missing"},
        {"1", one, "Preamble: 5 contradicts 102, which it always is", "", R"("Preamble":5)"},
        {"3", position, "Message_Type: 1 contradicts 3, which it always is", "",
         R"("Message_Type":1)"},
        {"3", R"("ECEF_X":2147483648)",
         "ECEF_X: 2147483648 does not fit (-2147483648 to 2147483647)"},
        {"3", R"("ECEF_X":18446744073709551615)",
         "ECEF_X: 18446744073709551615 does not fit (-2147483648 to 2147483647)"},
        {"3", R"("ECEF_X":1.5)", "ECEF_X: has to be an integer"},
        {"3", position,
         "No_Of_Data_Words: 3 data words hold 72 bits, not the 96 bits of what is given", "",
         R"("No_Of_Data_Words":3)"},
        {"3", position, "No_Of_Data_Words: 32 does not fit (0 to 31)", "",
         R"("No_Of_Data_Words":32)"},
        {"22", deltas + R"(,"Reserved":0)",
         "Constellation: is missing where No_Of_Data_Words is 2"},
        {"22", deltas + word2, "Reserved: must be absent where No_Of_Data_Words is 1", "",
         R"("No_Of_Data_Words":1)"},
        {"1", one, "fill: has 1 bits where the data words have room for 8", R"(,"fill":"1")"},
        {"1", one, "fill: has other characters than 0 and 1", R"(,"fill":"0000000x")"},
    });
    EXPECT_EQ(encoded(R"({"kind":"DGNSS","fields":{}} {"fields":{}} {"kind":"Message Type 1"}
                         {"hex":"6"} {"kind":1,"fields":1} {"kind":"Message Type 1","fields":[]}
                         {"hex":"66","hex":"66"} {"hex":"66","texts":[{"a":1,"a":1}]})"),
              (Items{"kind: there is no message kind \"DGNSS\"", "kind: is missing",
                     "fields: is missing", "hex: is no row of bytes of two hexadecimal digits each",
                     "kind: has to be a text", "Message Type 1: fields: has to be an object",
                     "\"hex\": stands twice in an object", "\"a\": stands twice in an object"}));
}

TEST(Encode, SaysWhatIsWrongWithArraysTextsAndWhatFollows)
{
    std::string many = R"("Corrections":[)" + satellite;
    for (int i = 0; i < 300; ++i) {
        many += "," + satellite;
    }
    check({
        {"1", many + "]", "Corrections: has to be an array of at most 18 objects"},
        {"1", R"("Corrections":[1])", "Corrections[0]: is no object"},
        {"1", R"("Corrections":[{"X":1}])", "Corrections[0].\"X\": there is no such field"},
        {"1", R"("Corrections":[)" + satellite + R"(,{"PRC":40000}])",
         "Corrections[1].PRC: 40000 does not fit (-32768 to 32767)"},
        {"1", slices(R"(,"Change_Bit":1)"), "Corrections[0].Issue_Of_Data: is missing"},
        {"1", slices(R"(,"Change_Bit":1,"Issue_Of_Data":1)"),
         "Corrections[0].Change_Bit: 1 contradicts 0, which follows where Issue_Of_Data is 1"},
        {"1", one, "Ns: 2 contradicts 1, which follows where No_Of_Data_Words is 2", "",
         R"("Ns":2)"},
        {"1", one, "Corrections: has 1 elements where Ns is 2 (No_Of_Data_Words is 4)", "",
         R"("No_Of_Data_Words":4)"},
        {"21", rtk + R"(,"PSF":0.02}])",
         "Data[0].PSF: what is given contradicts 0.320000, which follows where "
         "Pseudorange_Correction_Factor is 1"},
        {"21", rtk + R"(,"PRN":1}])", "Data[0].PRN: 1 contradicts 0, which it always is"},
        {"59", R"("Data":[1,2,3,4])",
         "Data: has 4 elements where Data_Length is 6 (No_Of_Data_Words is 2)"},
        {"59", R"("Data":[1,2,256])", "Data: 256 does not fit (0 to 255)"},
        {"16", R"("Message":")" + std::string(91, 'x') + "\"",
         "Message: has 91 values, and room for 90"},
        {"16", R"("Message":"ab\u20ac")", "Message: character 3 is above U+00FF"},
        {"23", antenna + R"("Serial_Flag":0,"NAD":4,"Antenna_Descriptor":"AB")",
         "Antenna_Descriptor: has 2 characters where NAD is 4"},
        {"23", antenna + R"("Serial_Flag":0,"NAD":1,"Antenna_Descriptor":"AB")",
         "Antenna_Descriptor: has 2 characters where NAD is 1"},
        {"23", antenna + R"("Serial_Flag":0,"Antenna_Descriptor":"","Antenna_Serial_Number":"")",
         "Antenna_Serial_Number: must be absent where Serial_Flag is 0"},
        {"23", antenna + R"("Serial_Flag":1,"Antenna_Descriptor":"")",
         "Antenna_Serial_Number: is missing where Serial_Flag is 1"},
    });
}

TEST(Encode, TakesTextsAndTemplatesOfEveryKindAsTheyAre)
{
    check({{"1",
            R"("Corrections":[{"Scale_Factor":"0.32 m","UDRE":"GT 8 m","Satellite_Id":3,"PRC":-2,)"
            R"("RRC":-1,"Issue_Of_Data":129}])",
            "660405000810e3fffeff81aa"}});
    int kinds = 0;
    for (int i = 1; i <= RTCM2_last_kind(); ++i) {
        const RTCM2_kind_s& kind = *RTCM2_kind(i);
        if (kind.type >= 0) {
            const std::string text = templateOf(kind);
            const Items made = encoded(text);
            EXPECT_NE(made.at(0).find("@1"), std::string::npos) << made.at(0) << text;
            ++kinds;
            for (std::uint32_t row = 0; row < kind.member_count; ++row) {
                EXPECT_TRUE(isImplied(kind, kind.members[row]) ||
                            text.find("\"" + identifierOf(labelOf(kind.members[row])) + "\"") !=
                                std::string::npos)
                    << kind.members[row].name << text;
            }
        }
    }
    EXPECT_GT(kinds, 20);
}

const std::string good = R"({"hex":"99"})";

TEST(JsonInput, FindsObjectsAndGoesOnAfterMistakes)
{
    const std::string deep = std::string(31, '[') + "{" + std::string(1000000, '[');
    const std::string huge = std::string(3 << 20, 'x');
    const std::vector<std::pair<std::string, Items>> inputs = {
        {"", {}},
        {good + "\n\n" + good, {"99@1", "99@3"}},
        {"[\n" + good + ",\r\n\t" + good + "\n]\n[" + good + "]", {"99@2", "99@3", "99@5"}},
        {good + "{\n\"hex\":\"9]\\\"9\"} [] [" + good + "]",
         {"99@1", "hex: is no row of bytes of two hexadecimal digits each", "99@2"}},
        {"{\"a\":1,}\n" + good, {"line 1, column 8: Missing a name for object member.", "99@2"}},
        {"[{\"a\":1,}," + good + "]",
         {"line 1, column 9: Missing a name for object member.", "99@1"}},
        {"{\"a\":1\n" + good + "\n" + good,
         {"line 2, column 1: Missing a comma or '}' after an object member.", "99@2", "99@3"}},
        // what is no object of its own stands further to the right
        {"[\n {\"a\":1,\n  \"b\":[\n   {\"c\":01},\n   {}],\n },\n " + good + "]",
         {"line 4, column 10: Missing a comma or '}' after an object member.", "99@7"}},
        {"[\n {\"a\":[,\n " + good + "\n ,{\"a\":]\n ," + good + "]",
         {"line 2, column 8: Invalid value.", "99@3",
          "line 4, column 8: another bracket than the one that was opened", "99@5"}},
        {"garbage\nmore\n" + good, {"line 1, column 1: no JSON object begins here", "99@3"}},
        {"garbage\n[" + good + "," + good + "]\n",
         {"line 1, column 1: no JSON object begins here", "99@2", "99@2"}},
        {"{\"a\":[}\n[" + good + "]",
         {"line 1, column 7: another bracket than the one that was opened", "99@2"}},
        {"]\n[[\n" + good,
         {"line 1, column 1: no JSON object begins here",
          "line 2, column 2: no JSON object begins here", "99@3"}},
        {"{\"a\":\"\xff\"}\n" + good, {"line 1, column 7: Invalid encoding in string.", "99@2"}},
        {std::string("{\"a\":\"\0\"}\n", 10) + good,
         {"line 1, column 7: a control character in a string; \\u and its number can stand for it",
          "99@2"}},
        {std::string("\0\n", 2) + good, {"line 1, column 1: no JSON object begins here", "99@2"}},
        {"{\"a\":1e999}\n" + good,
         {"line 1, column 6: Number too big to be stored in double.", "99@2"}},
        {good + "\n{\"a\":[1", {"99@1", "line 2, column 8: the input ends inside an object"}},
        {"[" + good + ",", {"99@1", "line 1, column 15: the input ends inside an array"}},
        {"{\"a\":" + deep + "\n" + good, {"line 1, column 37: nested too deeply", "99@2"}},
        {"{\"a\":\"" + huge + "\"}\n" + good,
         {"line 1, column 1048577: an object of more than 1048576 bytes", "99@2"}},
    };
    for (const auto& [text, expected] : inputs) {
        EXPECT_EQ(encoded(text), expected) << text.substr(0, 100);
    }
}

}    // namespace
