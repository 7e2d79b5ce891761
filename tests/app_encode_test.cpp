// Messages in JSON and what the encoder makes of them, beside what the samples hold.
#include "base/InputFile.h"
#include "commands/encode/JsonInput.h"
#include "commands/encode/JsonMessage.h"
#include "format/PackedText.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

// The packed message in hexadecimal, or what was wrong.
std::string encoded(const std::string& json)
{
    static JsonMessage message;
    rapidjson::Document document;
    document.Parse(json.c_str());
    EXPECT_FALSE(document.HasParseError()) << json;
    std::string hex;
    appendHex(hex, message.encode(document));
    return hex.empty() ? message.problem() : hex;
}

std::string message(const std::string& kind, const std::string& fields,
                    const std::string& more = "")
{
    return R"({"kind":"Message Type )" + kind +
           R"(","fields":{"Reference_Station_Id":5,"Modified_Z_Count":1,"Sequence_No":0,)" +
           R"("Station_Health":0)" + (fields.empty() ? "" : ",") + fields + "}" + more + "}";
}

std::string corrections(const std::string& elements)
{
    return R"("Corrections":[)" + elements + "]";
}

const std::string satellite =
    R"({"Scale_Factor":1,"UDRE":2,"Satellite_Id":3,"PRC":-2,"RRC":-1,"Issue_Of_Data":129})";
const std::string zeros =
    R"("Scale_Factor":0,"UDRE":0,"Satellite_Id":1,"PRC":0,"RRC":0,"Change_Bit":1)";
const std::string position = R"("ECEF_X":1,"ECEF_Y":-1,"ECEF_Z":2147483647)";
const std::string antenna = R"("Reserved":0,"ARP_Indicator":1,"Setup_Id":9,"Reserved2":0)";
const std::string deltas = R"("L1_ECEF_Delta_X":1,"L1_ECEF_Delta_Y":2,"L1_ECEF_Delta_Z":-1)";

const std::string type1 = "Message Type 1: ";

using Cases = std::vector<std::pair<std::string, std::string>>;    // JSON and result

void check(const Cases& cases)
{
    for (const auto& [json, expected] : cases) {
        EXPECT_EQ(encoded(json), expected) << json;
    }
}

TEST(Encode, WorksOutWhatIsLeftOut)
{
    check({
        {message("1", corrections(satellite), R"(,"fill":"00000001")"), "660405000810c3fffeff8101"},
        {message("1", R"("No_Of_Data_Words":3,)" + corrections(satellite)),
         "660405000818c3fffeff81aaaaaaaa"},
        {message("1", corrections("{" + zeros + R"(,"Time_Of_Day":1})")),
         "6604050008100100000081aa"},
        {message("16", R"("Message":"\u0000A\u0000B")"), "664005000810004100420000"},
        // a length without its text, and one that counts the terminator
        {message("23", antenna + R"(,"Serial_Flag":0,"NAS":3,"Antenna_Descriptor":"AB")"),
         "665c050008104241420903aa"},
        {message("23", antenna + R"(,"Serial_Flag":0,"NAD":3,"Antenna_Descriptor":"AB")"),
         "665c05000810434142000900"},
        // names that people see
        {R"({"kind":"Message Type 9","fields":{"Reference Station Id":5,"Modified Z-Count":1,)"
         R"("Sequence No.":0,"Station Health":0,"Corrections":[]}})",
         "662405000800"},
        {R"({"hex":"660DA15e2008AAaaaa"})", "660da15e2008aaaaaa"},
    });
}

TEST(Encode, SaysWhatIsWrongWithAMessage)
{
    check({
        {R"({"kind":"DGNSS","fields":{}})", "kind: there is no message kind \"DGNSS\""},
        {R"({"fields":{}})", "kind: is missing"},
        {R"({"kind":"Message Type 1"})", "fields: is missing"},
        {R"({"hex":"660da15e2010aaaaaa"})",
         "hex: is no message with the preamble and the words that its header announces"},
        {message("1", R"("Station_Health":1)"), type1 + "Station_Health: stands twice"},
        {message("1", R"("Message_Type":-1)"), type1 + "Message_Type: -1 contradicts the kind"},
        {message("3", R"("ECEF_X":1,"ECEF_Z":1)"), "Message Type 3: ECEF_Y: is missing"},
        {message("3", R"("ECEF_X":18446744073709551615)"),
         "Message Type 3: ECEF_X: 18446744073709551615 does not fit 32 bits "
         "(-2147483648 to 2147483647)"},
        {message("3", R"("ECEF_X":1.5)"),
         "Message Type 3: ECEF_X: is a number that is no integer, not an integer"},
        {message("3", position + R"(,"No_Of_Data_Words":3)"),
         "Message Type 3: No_Of_Data_Words: 3 data words hold 72 bits, not the 96 bits of the "
         "other members"},
        {message("22", deltas + R"(,"Reserved":0)"),
         "Message Type 22: Constellation: is missing where No_Of_Data_Words is 2"},
        {message("1", corrections(satellite), R"(,"fill":"1")"),
         type1 + "fill: has 1 bits where the data words have room for 8"},
    });
}

TEST(Encode, SaysWhatIsWrongWithArraysAndTexts)
{
    std::string many = satellite;
    for (int i = 0; i < 300; ++i) {
        many += "," + satellite;
    }
    check({
        {message("1", ""), type1 + "Corrections: is missing"},
        {message("1", corrections(many)), type1 + "Corrections: more than 255 elements"},
        {message("1", corrections(R"({"X":1})")),
         type1 + "Corrections[0].X: there is no such field"},
        {message("1", corrections(satellite + R"(,{"PRC":40000})")),
         type1 + "Corrections[1].PRC: 40000 does not fit 16 bits (-32768 to 32767)"},
        {message("1", corrections("{" + zeros + R"(,"Issue_Of_Data":1})")),
         type1 + "Corrections[0].Change_Bit: 1 contradicts 0, which follows (Issue_Of_Data: 1)"},
        {message("1", R"("Ns":2,)" + corrections(satellite)),
         type1 + "Ns: 2 contradicts 1, which follows (No_Of_Data_Words: 2)"},
        {message("1", R"("No_Of_Data_Words":4,)" + corrections(satellite)),
         type1 + "Corrections: has 1 elements where Ns is 2 (No_Of_Data_Words: 4)"},
        {message("21", R"("Frequency":0,"Smoothing_Interval":0,"GNSS_Time_Of_Measurement":0,)"
                       R"("Data":[{"Multiple_Message":0,"Code":0,"Constellation":0,)"
                       R"("Satellite_Id":1,"PRN":0,"Range_Rate_Correction_Factor":0,)"
                       R"("Data_Quality":0,"Pseudorange_Correction_Factor":1,)"
                       R"("Multipath_Error":0,"Issue_Of_Data_Time_Of_Day":0,)"
                       R"("Pseudorange_Correction":0,"Range_Rate_Correction":0,"PSF":0.02}])"),
         "Message Type 21: Data[0].PSF: contradicts what follows "
         "(Pseudorange_Correction_Factor: 1)"},
        {message("59", R"("Data":[1,2,3,4])"),
         "Message Type 59: Data: has 4 elements where Data_Length is 6 (No_Of_Data_Words: 2)"},
        {message("59", R"("Data":[1,2,256])"),
         "Message Type 59: Data: 256 does not fit 8 bits (0 to 255)"},
        {message("16", R"("Message":")" + std::string(91, 'x') + "\""),
         "Message Type 16: Message: more than 90 characters"},
        {message("16", R"("Message":"ab\u20ac")"),
         "Message Type 16: Message: character 3 is above U+00FF"},
        {message("23", antenna + R"(,"Serial_Flag":0,"NAD":4,"Antenna_Descriptor":"AB")"),
         "Message Type 23: Antenna_Descriptor: has 2 characters where NAD is 4"},
        {message("23", antenna + R"(,"Serial_Flag":0,"Antenna_Descriptor":"",)"
                                 R"("Antenna_Serial_Number":"")"),
         "Message Type 23: Antenna_Serial_Number: must be absent where Serial_Flag is 0"},
        {message("23", antenna + R"(,"Serial_Flag":1,"Antenna_Descriptor":"")"),
         "Message Type 23: Antenna_Serial_Number: is missing where Serial_Flag is 1"},
    });
}

// What JsonInput finds in a text: the objects' "a" and the complaints.
using Items = std::vector<std::string>;

Items found(const std::string& text)
{
    const std::string name = testing::TempDir() + "json" + std::to_string(::getpid());
    std::ofstream(name, std::ios::binary) << text;
    InputFile input(name);
    JsonInput json(input);
    Items items;
    while (json.next()) {
        items.push_back(!json.problem().empty() ? json.problem()
                                                : std::to_string(json.object()["a"].GetInt()) +
                                                      "@" + std::to_string(json.line()));
    }
    std::remove(name.c_str());
    return items;
}

TEST(JsonInput, ReadsLinesArraysAndRows)
{
    EXPECT_EQ(found(""), Items{});
    EXPECT_EQ(found("{\"a\":1}\n\n{\"a\":2}"), (Items{"1@1", "2@3"}));
    EXPECT_EQ(found("[\n{\"a\":1},\n{\"a\":2}\n]\n"), (Items{"1@2", "2@3"}));
    EXPECT_EQ(found("{\"a\":1}{\n\"a\":2} [] [{\"a\":3}]"), (Items{"1@1", "2@1", "3@2"}));
}

TEST(JsonInput, GoesOnAfterMistakes)
{
    const std::string rest = "\n{\"a\":9}\n";
    EXPECT_EQ(found("{\"a\":1,}" + rest),
              (Items{"line 1, column 8: Missing a name for object member.", "9@2"}));
    EXPECT_EQ(found("{\"a\":1,\"b\":[" + rest + rest).size(), 3U);
    EXPECT_EQ(found("garbage\nmore\n" + rest),
              (Items{"line 1, column 1: no JSON object begins here", "9@4"}));
    EXPECT_EQ(found("{\"a\":\"\xff\"}" + rest).back(), "9@2");
    EXPECT_EQ(found(rest + "{\"a\":[1"),
              (Items{"9@2", "line 3, column 8: the input ends inside an object"}));
    EXPECT_EQ(found("[{\"a\":1},"),
              (Items{"1@1", "line 1, column 10: the input ends inside an array"}));
}

TEST(JsonInput, BoundsDepthAndLength)
{
    EXPECT_EQ(found("{\"a\":" + std::string(1000000, '[') + "\n{\"a\":9}"),
              (Items{"line 1, column 37: nested too deeply", "9@2"}));
    const Items items = found("{\"a\":\"" + std::string(3 << 20, 'x') + "\"}\n{\"a\":9}");
    ASSERT_EQ(items.size(), 2U);
    EXPECT_NE(items[0].find("an object of more than 1048576 bytes"), std::string::npos) << items[0];
    EXPECT_EQ(items[1], "9@2");
    // Lines that are open around a mistake are one mistake, not one each.
    std::string unclosed;
    for (int i = 0; i < 100; ++i) {
        unclosed += "{\"b\":\n";
    }
    EXPECT_EQ(found(unclosed + "{\"a\":9}\n"),
              (Items{"line 33, column 1: nested too deeply", "line 65, column 1: nested too deeply",
                     "line 97, column 1: nested too deeply",
                     "line 102, column 1: the input ends inside an object", "9@101"}));
}

}    // namespace
