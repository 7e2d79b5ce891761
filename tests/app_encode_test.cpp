// Messages in JSON and what the encoder makes of them.
#include "InputFile.h"
#include "JsonInput.h"
#include "JsonMessage.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

std::string hexOf(std::span<const std::uint8_t> bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text;
}

// The packed message in hexadecimal, or what was wrong.
std::string encoded(const std::string& json)
{
    static JsonMessage message;
    rapidjson::Document document;
    document.Parse(json.c_str());
    EXPECT_FALSE(document.HasParseError()) << json;
    const auto packed = message.encode(document);
    return packed.empty() ? message.problem() : hexOf(packed);
}

std::string message(const std::string& kind, const std::string& fields,
                    const std::string& more = "")
{
    return R"({"kind":"Message Type )" + kind +
           R"(","fields":{"Reference_Station_Id":5,"Modified_Z_Count":1,"Sequence_No":0,)" +
           R"("Station_Health":0)" + (fields.empty() ? "" : ",") + fields + "}" + more + "}";
}

struct Case {
    const char* title;
    std::string json;
    std::string expected;
};

class Encode : public testing::TestWithParam<Case> {};

TEST_P(Encode, GivesMessageOrReason)
{
    EXPECT_EQ(encoded(GetParam().json), GetParam().expected);
}

const std::string satellite =
    R"({"Scale_Factor":1,"UDRE":2,"Satellite_Id":3,"PRC":-2,"RRC":-1,"Issue_Of_Data":129})";
const std::string position = R"("ECEF_X":1,"ECEF_Y":-1,"ECEF_Z":2147483647)";
const std::string antenna = R"("Reserved":0,"ARP_Indicator":1,"Setup_Id":9,"Reserved2":0)";
const std::string deltas = R"("L1_ECEF_Delta_X":1,"L1_ECEF_Delta_Y":2,"L1_ECEF_Delta_Z":-1)";
const std::string height = R"("Reserved":0,"Constellation":1,"AT_Indicator":0,"ARP_Indicator":1,)"
                           R"("Height_Indicator":0,"Phase_Center_Height":3)";

// A message with so many data words and station 5, Z-count 1, sequence 0.
std::string head(unsigned type, unsigned words, unsigned health = 0)
{
    const std::uint64_t bits = std::uint64_t{0x66} << 40 | std::uint64_t{type} << 34 |
                               std::uint64_t{5} << 24 | 1U << 11 | words << 3 | health;
    std::vector<std::uint8_t> bytes;
    for (int shift = 40; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
    }
    return hexOf(bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Complete, Encode,
    testing::Values(
        Case{"fixed", message("3", position), head(3, 4) + "00000001ffffffff7fffffff"},
        Case{"one element, standard fill", message("1", R"("Corrections":[)" + satellite + "]"),
             head(1, 2) + "c3fffeff81aa"},
        Case{"given fill",
             message("1", R"("Corrections":[)" + satellite + "]", R"(,"fill":"00000001")"),
             head(1, 2) + "c3fffeff8101"},
        Case{"more words than needed",
             message("1", R"("No_Of_Data_Words":3,"Corrections":[)" + satellite + "]"),
             head(1, 3) + "c3fffeff81aaaaaaaa"},
        Case{"no elements", message("9", R"("Corrections":[])"), head(9, 0)},
        Case{"parts instead of their member",
             message("1", R"("Corrections":[{"Scale_Factor":0,"UDRE":0,"Satellite_Id":1,)"
                          R"("PRC":0,"RRC":0,"Change_Bit":1,"Time_Of_Day":1}])"),
             head(1, 2) + "0100000081aa"},
        Case{"text padded", message("16", R"("Message":"AB\u00e9D")"),
             head(16, 2) + "4142e9440000"},
        Case{"text with NULs", message("16", R"("Message":"\u0000A\u0000B")"),
             head(16, 2) + "004100420000"},
        Case{"bytes", message("59", R"("Data":[65,0,255])"), head(59, 1) + "4100ff"},
        Case{"lengths from texts",
             message("23", antenna + R"(,"Serial_Flag":1,"Antenna_Descriptor":"AB",)"
                                     R"("Antenna_Serial_Number":"7")"),
             head(23, 2) + "624142090137"},
        Case{"length without a text",
             message("23", antenna + R"(,"Serial_Flag":0,"NAS":3,)"
                                     R"("Antenna_Descriptor":"AB")"),
             head(23, 2) + "4241420903aa"},
        Case{"length with the terminator",
             message("23", antenna + R"(,"Serial_Flag":0,"NAD":3,"Antenna_Descriptor":"AB")"),
             head(23, 2) + "434142000900"},
        Case{"one word of three", message("22", deltas), head(22, 1) + "0102ff"},
        Case{"two words of three", message("22", deltas + "," + height),
             head(22, 2) + "0102ff280003"},
        Case{"38 bits and absent height",
             message("24", R"("ECEF_X":-137438953472,"Reserved":0,"ECEF_Y":0,"Reserved2":0,)"
                           R"("ECEF_Z":-1,"Constellation":1,"Height_Indicator":0)"),
             head(24, 5) + "80000000000000000000fffffffffe"},
        Case{"wide-area kind by its name in code",
             R"({"kind":"Message_Type_44","fields":{"Reference_Station_Id":5,)"
             R"("Modified_Z_Count":1,"Sequence_No":0,"Station_Health":5,"Corrections":[]}})",
             head(44, 0, 5)},
        Case{"display names",
             R"({"kind":"Message Type 9","fields":{"Reference Station Id":5,)"
             R"("Modified Z-Count":1,"Sequence No.":0,"Station Health":0,)"
             R"("Corrections":[]}})",
             head(9, 0)},
        Case{"nothing but hex", R"({"hex":"660DA15e2008AAaaaa"})", "660da15e2008aaaaaa"}),
    [](const auto& tested) { return "Case" + std::to_string(tested.index); });

const std::string type1 = "Message Type 1: ";

INSTANTIATE_TEST_SUITE_P(
    Refused, Encode,
    testing::Values(
        Case{"unknown kind", R"({"kind":"Message Type 2","fields":{}})",
             "kind: there is no message kind \"Message Type 2\""},
        Case{"sub-record", R"({"kind":"DGNSS","fields":{}})",
             "kind: there is no message kind \"DGNSS\""},
        Case{"no kind", R"({"fields":{}})", "kind: is missing"},
        Case{"nothing", R"({"kind":"Message Type 1"})", "fields: is missing"},
        Case{"unknown field", message("1", R"("Prc":1)"), type1 + "Prc: there is no such field"},
        Case{"unknown field of an element", message("1", R"("Corrections":[{"X":1}])"),
             type1 + "Corrections[0].X: there is no such field"},
        Case{"field twice", message("1", R"("Station_Health":1)"),
             type1 + "Station_Health: stands twice"},
        Case{"missing", message("3", R"("ECEF_X":1,"ECEF_Z":1)"),
             "Message Type 3: ECEF_Y: is missing"},
        Case{"missing elements", message("1", ""), type1 + "Corrections: is missing"},
        Case{"too large", message("1", R"("Corrections":[)" + satellite + R"(,{"PRC":40000}])"),
             type1 + "Corrections[1].PRC: 40000 does not fit 16 bits (-32768 to 32767)"},
        Case{"negative", message("1", R"("Message_Type":-1)"),
             type1 + "Message_Type: -1 contradicts the kind"},
        Case{"far too large", message("3", R"("ECEF_X":18446744073709551615)"),
             "Message Type 3: ECEF_X: 18446744073709551615 does not fit 32 bits "
             "(-2147483648 to 2147483647)"},
        Case{"text for a number", message("3", R"("ECEF_X":"1")"),
             "Message Type 3: ECEF_X: is a text, not an integer"},
        Case{"fraction", message("3", R"("ECEF_X":1.5)"),
             "Message Type 3: ECEF_X: is a number that is no integer, not an integer"},
        Case{"parts contradict",
             message("1", R"("Corrections":[{"Scale_Factor":0,"UDRE":0,"Satellite_Id":1,)"
                          R"("PRC":0,"RRC":0,"Issue_Of_Data":129,"Change_Bit":0}])"),
             type1 + "Corrections[0].Change_Bit: 0 contradicts 1, which follows "
                     "(Issue_Of_Data: 129)"},
        Case{"count contradicts", message("1", R"("Ns":2,"Corrections":[)" + satellite + "]"),
             type1 + "Ns: 2 contradicts 1, which follows (No_Of_Data_Words: 2)"},
        Case{"words contradict",
             message("1", R"("No_Of_Data_Words":4,"Corrections":[)" + satellite + "]"),
             type1 + "Corrections: has 1 elements where Ns is 2 (No_Of_Data_Words: 4)"},
        Case{"content does not fit", message("3", position + R"(,"No_Of_Data_Words":3)"),
             "Message Type 3: No_Of_Data_Words: 3 data words hold 72 bits, not the 96 bits of the "
             "other members"},
        Case{"bytes that fill no word", message("59", R"("Data":[1,2,3,4])"),
             "Message Type 59: Data: has 4 elements where Data_Length is 6 (No_Of_Data_Words: 2)"},
        Case{"byte too large", message("59", R"("Data":[1,2,256])"),
             "Message Type 59: Data: 256 does not fit 8 bits (0 to 255)"},
        Case{"text too long", message("16", R"("Message":")" + std::string(91, 'x') + "\""),
             "Message Type 16: Message: more than 90 characters"},
        Case{"character too large", message("16", R"("Message":"ab\u20ac")"),
             "Message Type 16: Message: character 3 is above U+00FF"},
        Case{"text contradicts its length",
             message("23", antenna + R"(,"Serial_Flag":0,"NAD":4,"Antenna_Descriptor":"AB")"),
             "Message Type 23: Antenna_Descriptor: has 2 characters where NAD is 4"},
        Case{"text must be absent",
             message("23", antenna + R"(,"Serial_Flag":0,"Antenna_Descriptor":"",)"
                                     R"("Antenna_Serial_Number":"")"),
             "Message Type 23: Antenna_Serial_Number: must be absent where Serial_Flag is 0"},
        Case{"text must be present",
             message("23", antenna + R"(,"Serial_Flag":1,"Antenna_Descriptor":"")"),
             "Message Type 23: Antenna_Serial_Number: is missing where Serial_Flag is 1"},
        Case{"second word incomplete", message("22", deltas + R"(,"Reserved":0)"),
             "Message Type 22: Constellation: is missing where No_Of_Data_Words is 2"},
        Case{"fill of a wrong size",
             message("1", R"("Corrections":[)" + satellite + "]", R"(,"fill":"1")"),
             type1 + "fill: has 1 bits where the data words have room for 8"},
        Case{"lookup contradicts",
             message("21", R"("Frequency":0,"Smoothing_Interval":0,"GNSS_Time_Of_Measurement":0,)"
                           R"("Data":[{"Multiple_Message":0,"Code":0,"Constellation":0,)"
                           R"("Satellite_Id":1,"PRN":0,"Range_Rate_Correction_Factor":0,)"
                           R"("Data_Quality":0,"Pseudorange_Correction_Factor":1,)"
                           R"("Multipath_Error":0,"Issue_Of_Data_Time_Of_Day":0,)"
                           R"("Pseudorange_Correction":0,"Range_Rate_Correction":0,"PSF":0.02}])"),
             "Message Type 21: Data[0].PSF: contradicts what follows "
             "(Pseudorange_Correction_Factor: 1)"},
        Case{"hex that is no message", R"({"hex":"660da15e2010aaaaaa"})",
             "hex: is no message with the preamble and the words that its header announces"}),
    [](const auto& tested) { return "Case" + std::to_string(tested.index); });

// More elements than any count holds; the array of the record ends at its own limit.
TEST(EncodeLimits, ManyElements)
{
    std::string elements = satellite;
    for (int i = 0; i < 300; ++i) {
        elements += "," + satellite;
    }
    EXPECT_EQ(encoded(message("1", R"("Corrections":[)" + elements + "]")),
              type1 + "Corrections: more than 255 elements");
}

// What JsonInput finds in a text: the objects' "a" and the complaints.
std::vector<std::string> found(const std::string& text)
{
    const std::string name = testing::TempDir() + "json" + std::to_string(::getpid());
    std::FILE* file = std::fopen(name.c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
    InputFile input(name);
    JsonInput json(input);
    std::vector<std::string> items;
    while (json.next()) {
        items.push_back(!json.problem().empty() ? json.problem()
                                                : std::to_string(json.object()["a"].GetInt()) +
                                                      "@" + std::to_string(json.line()));
    }
    std::remove(name.c_str());
    return items;
}

using Items = std::vector<std::string>;

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
    EXPECT_EQ(found("{\"a\":1,\"b\":[" + rest + rest).back(), "9@4");
    EXPECT_EQ(found("{\"a\":1,\"b\":[" + rest + rest).size(), 3U);
    EXPECT_EQ(found("garbage\nmore\n" + rest),
              (Items{"line 1, column 1: no JSON object begins here", "9@4"}));
    EXPECT_EQ(found("{\"a\":\"\xff\"}" + rest).back(), "9@2");
    EXPECT_EQ(found(std::string("{\"a\":\0}", 7) + rest).back(), "9@2");
    EXPECT_EQ(found(rest + "{\"a\":[1"),
              (Items{"9@2", "line 3, column 8: the input ends inside an object"}));
    // Lines that are open around a mistake are one mistake, not one each.
    std::string unclosed;
    for (int i = 0; i < 100; ++i) {
        unclosed += "{\"b\":\n";
    }
    EXPECT_EQ(found(unclosed + "{\"a\":9}\n"),
              (Items{"line 33, column 1: nested too deeply", "line 65, column 1: nested too deeply",
                     "line 97, column 1: nested too deeply",
                     "line 102, column 1: the input ends inside an object", "9@101"}));
    EXPECT_EQ(found("[{\"a\":1},"),
              (Items{"1@1", "line 1, column 10: the input ends inside an array"}));
}

TEST(JsonInput, BoundsDepthAndLength)
{
    std::string nested = "{\"a\":";
    for (int i = 0; i < 1000000; ++i) {
        nested += '[';
    }
    EXPECT_EQ(found(nested + "\n{\"a\":9}"),
              (Items{"line 1, column 37: nested too deeply", "9@2"}));
    const std::string text(3 << 20, 'x');
    const Items items = found("{\"a\":\"" + text + "\"}\n{\"a\":9}");
    ASSERT_EQ(items.size(), 2U);
    EXPECT_NE(items[0].find("an object of more than 1048576 bytes"), std::string::npos) << items[0];
    EXPECT_EQ(items[1], "9@2");
}

}    // namespace
