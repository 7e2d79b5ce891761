#include "commands/describe/DescribeView.h"
#include "plugin/Plugin.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <sstream>

namespace {

class DescribeTest : public testing::Test {
protected:
    FormatModel model{plugin::format()};
    describe::Kinds all = describe::allKinds(model);
};

TEST_F(DescribeTest, JsonTellsWhatDescriptorsTell)
{
    rapidjson::Document json;
    json.Parse(describe::json(model, all).c_str());
    ASSERT_FALSE(json.HasParseError());
    EXPECT_EQ(json["kinds"].Size(), model.kinds().size());
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer(text);
    json.Accept(writer);
    const char* const parts[] = {
        R"({"format":"RTCM2","kinds":[{"name":"Message Type 1",)",
        R"({"name":"Type 15","identifier":"Type_15","text":"","main":false,"discriminants":[],)"
        R"("carriers":[{"kind":"Message_Type_15","field":"Corrections"}],"systemField":"G","points":[],)"
        R"("unsettled":true,"fields":[{"index":0,)",
        R"("points":[{"name":"L1 phase centre","fields":["L1_ECEF_Delta_X","L1_ECEF_Delta_Y",)"
        R"("L1_ECEF_Delta_Z"],"from":"Reference point"},)",
        R"("meaning":"correction","quantity":{"name":"PRC_m","unit":"m","by":"Scale_Factor",)"
        R"("factors":[{"value":0,"factor":0.02},{"value":1,"factor":0.32}],"none":[-32768]})",
        R"("quantity":{"name":"Satellite","unit":"","satelliteOfZero":32,"none":[]})",
        R"("system":"GLONASS","quantity":{"name":"Time_Of_Day_s","unit":"s",)"
        R"("factors":[{"factor":30}],"none":[],"highest":119})",
        R"({"index":4,"name":"Rate Of Change","identifier":"Rate_Of_Change","type":"signed",)"
        R"("width":14,"unit":"","optional":false,"repeated":false,"virtual":false,"parts":[],)"
        R"("texts":[{"value":-8192,"text":"Do not use"}],"doNotUse":-8192})",
        R"("text":"RTK Uncorrected Carrier Phases","main":true,"number":18,)"
        R"("discriminants":[{"field":"Message_Type","value":18}],"carriers":[],)",
        R"("kind":"RTK_18","unit":"","optional":false,"repeated":true,)",
        R"("unit":"microsecond")",
        R"("name":"Ns","identifier":"Ns","type":"unsigned","width":8,"unit":"",)"
        R"("optional":false,"repeated":false,"virtual":true,)",
        R"("identifier":"Antenna_Serial_Number","type":"character","width":8,"unit":"",)"
        R"("optional":true,"repeated":true,)",
        R"("parts":["Change_Bit","Time_Of_Day"],"texts":[],"meaning":"issue"})",
    };
    for (const char* const part : parts) {
        EXPECT_NE(std::string_view(text.GetString()).find(part), std::string_view::npos) << part;
    }
}

constexpr const char* dgnssText = R"(DGNSS
  Part of Message Type 1 (Corrections), Message Type 9 (Corrections), Message Type 31 (Corrections)

  No.  Field          Identifier     Type        Flags, meaning
    0  Scale Factor   Scale_Factor   byte
    1  UDRE           UDRE           byte        accuracy
    2  Satellite Id   Satellite_Id   unsigned 5  satellite
    3  PRC            PRC            signed 16   correction
    4  RRC            RRC            signed 8    rate
    5  Issue Of Data  Issue_Of_Data  byte        issue
    6  Change Bit     Change_Bit     unsigned 1
    7  Time Of Day    Time_Of_Day    unsigned 7

  Scale Factor
    0x00  0.02 m
    0x01  0.32 m

  UDRE
    0x00  LT 1 m
    0x01  GT 1 m and LE 4 m
    0x02  GT 4 m and LE 8 m
    0x03  GT 8 m

  Satellite Id
    Satellite: a satellite of the system; 0 is satellite 32

  PRC
    -32768  error
    PRC_m: the number times 0.02 where Scale Factor is 0x00, 0.32 where it is 0x01, in m
    no PRC_m when -32768

  RRC
    -128  error
    RRC_m_per_s: the number times 0.002 where Scale Factor is 0x00, 0.032 where it is 0x01, in m/s
    no RRC_m_per_s when -128

  Issue Of Data
    parts of it are shown as Change Bit, Time Of Day

  Change Bit
    means something with GLONASS only

  Time Of Day
    means something with GLONASS only
    Time_Of_Day_s: the number times 30, in s
    no Time_Of_Day_s above 119
)";

constexpr const char* ionosphereMarkdown = R"(# RTCM2

## Type 15

Part of Message Type 15 (Corrections).

Belongs to the system that G tells.

The units of its numbers are not settled: they stay raw where they have no quantity.

| No. | Field | Identifier | Type | Unit | Flags | Meaning | Values |
| --- | --- | --- | --- | --- | --- | --- | --- |
| 0 | R | `R` | byte | | | | |
| 1 | G | `G` | byte | | | system | 0x00: GPS<br>0x01: GLONASS |
| 2 | Satellite Id | `Satellite_Id` | unsigned 5 | | | satellite | Satellite: a satellite of the system; 0 is satellite 32 |
| 3 | Delay | `Delay` | unsigned 14 | | | | |
| 4 | Rate Of Change | `Rate_Of_Change` | signed 14 | | | | -8192: Do not use<br>not to be used when -8192 |
)";

TEST_F(DescribeTest, TextAndMarkdownOfOneKind)
{
    EXPECT_EQ(describe::text(model, {model.kind("dgnss")}), dgnssText);
    EXPECT_EQ(describe::markdown(model, {model.kind("Type 15")}), ionosphereMarkdown);
}

TEST_F(DescribeTest, TextFitsTheTerminalAndOverviewsNameEveryKind)
{
    const std::string overview = describe::textOverview(model);
    std::istringstream lines(overview + describe::text(model, all));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 100U) << line;
        EXPECT_FALSE(line.ends_with(' ')) << line;
    }
    for (const std::string& text : {overview, describe::markdownOverview(model)}) {
        for (const KindModel* kind : all) {
            EXPECT_NE(text.find(kind->isMain ? kind->text : kind->name), std::string::npos)
                << kind->name;
        }
    }
}

}    // namespace
