#include "DescribeView.h"
#include "Plugin.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <map>
#include <set>
#include <sstream>

namespace {

class DescribeTest : public testing::Test {
protected:
    describe::Kinds all() const
    {
        describe::Kinds kinds;
        for (const auto& kind : model.kinds()) {
            kinds.push_back(kind.get());
        }
        return kinds;
    }

    FormatModel model{plugin::format()};
};

using Json = rapidjson::Value;

std::string textOf(const Json& object, const char* key)
{
    return object[key].GetString();
}

const Json& named(const Json& list, const std::string& identifier)
{
    for (const Json& entry : list.GetArray()) {
        if (textOf(entry, "identifier") == identifier) {
            return entry;
        }
    }
    static const Json none;
    ADD_FAILURE() << "no " << identifier;
    return none;
}

TEST_F(DescribeTest, JsonHoldsEveryKindAndField)
{
    rapidjson::Document json;
    json.Parse(describe::json(model, all()).c_str());
    ASSERT_FALSE(json.HasParseError());
    EXPECT_EQ(textOf(json, "format"), "RTCM2");
    ASSERT_EQ(json["kinds"].Size(), 30U);
    std::size_t fields = 0;
    std::size_t mainKinds = 0;
    std::map<std::string, std::set<std::string>> fieldsOfKinds;
    for (const Json& kind : json["kinds"].GetArray()) {
        fields += kind["fields"].Size();
        mainKinds += kind["main"].GetBool() ? 1 : 0;
        EXPECT_EQ(kind.HasMember("number"), kind["main"].GetBool());
        EXPECT_EQ(kind["discriminants"].Size(), kind["main"].GetBool() ? 1U : 0U);
        for (const Json& field : kind["fields"].GetArray()) {
            const auto isNew =
                fieldsOfKinds[textOf(kind, "identifier")].insert(textOf(field, "identifier"));
            EXPECT_TRUE(isNew.second) << textOf(field, "identifier");
        }
    }
    EXPECT_EQ(fields, 259U);
    EXPECT_EQ(mainKinds, 15U);
    for (const Json& kind : json["kinds"].GetArray()) {
        for (const Json& carrier : kind["carriers"].GetArray()) {
            EXPECT_EQ(fieldsOfKinds[textOf(carrier, "kind")].count(textOf(carrier, "field")), 1U);
        }
    }
}

TEST_F(DescribeTest, JsonTellsWhatDescriptorsTell)
{
    rapidjson::Document json;
    json.Parse(describe::json(model, all()).c_str());
    const Json& ionosphere = named(json["kinds"], "Type_15");
    EXPECT_EQ(textOf(ionosphere["carriers"][0], "kind"), "Message_Type_15");
    EXPECT_EQ(textOf(ionosphere["carriers"][0], "field"), "Corrections");
    const Json& rate = named(ionosphere["fields"], "Rate_Of_Change");
    EXPECT_EQ(textOf(rate, "type"), "signed");
    EXPECT_EQ(rate["width"].GetInt(), 14);
    EXPECT_EQ(rate["doNotUse"].GetInt(), -8192);
    EXPECT_EQ(textOf(rate["texts"][0], "text"), "Do not use");
    const Json& type18 = named(json["kinds"], "Message_Type_18");
    EXPECT_EQ(type18["discriminants"][0]["value"].GetInt(), 18);
    EXPECT_EQ(textOf(named(type18["fields"], "GNSS_Time_Of_Measurement"), "unit"), "microsecond");
    EXPECT_TRUE(named(type18["fields"], "Ns")["virtual"].GetBool());
    EXPECT_EQ(textOf(named(type18["fields"], "Data"), "kind"), "RTK_18");
    const Json& serial =
        named(named(json["kinds"], "Message_Type_23")["fields"], "Antenna_Serial_Number");
    EXPECT_TRUE(serial["optional"].GetBool() && serial["repeated"].GetBool());
    const Json& issue = named(named(json["kinds"], "DGNSS")["fields"], "Issue_Of_Data");
    EXPECT_EQ(issue["parts"].Size(), 2U);
}

constexpr const char* dgnssText = R"(DGNSS
  Part of Message Type 1 (Corrections), Message Type 9 (Corrections), Message Type 31 (Corrections)

  No.  Field          Identifier     Type
    0  Scale Factor   Scale_Factor   byte
    1  UDRE           UDRE           byte
    2  Satellite Id   Satellite_Id   unsigned 5
    3  PRC            PRC            signed 16
    4  RRC            RRC            signed 8
    5  Issue Of Data  Issue_Of_Data  byte
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

  PRC
    -32768  error

  RRC
    -128  error

  Issue Of Data
    parts of it are shown as Change Bit, Time Of Day
)";

constexpr const char* ionosphereMarkdown = R"(# RTCM2

## Type 15

Part of Message Type 15 (Corrections).

| No. | Field | Identifier | Type | Unit | Flags | Values |
| --- | --- | --- | --- | --- | --- | --- |
| 0 | R | `R` | byte | | | |
| 1 | G | `G` | byte | | | 0x00: GPS<br>0x01: GLONASS |
| 2 | Satellite Id | `Satellite_Id` | unsigned 5 | | | |
| 3 | Delay | `Delay` | unsigned 14 | | | |
| 4 | Rate Of Change | `Rate_Of_Change` | signed 14 | | | -8192: Do not use<br>not to be used when -8192 |
)";

TEST_F(DescribeTest, TextOfOneKind)
{
    EXPECT_EQ(describe::text(model, {model.kind("dgnss")}), dgnssText);
}

TEST_F(DescribeTest, MarkdownOfOneKind)
{
    EXPECT_EQ(describe::markdown(model, {model.kind("Type 15")}), ionosphereMarkdown);
}

TEST_F(DescribeTest, TextFitsTheTerminal)
{
    for (const std::string& text : {describe::textOverview(model), describe::text(model, all())}) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(line.size(), 100U) << line;
            EXPECT_FALSE(line.ends_with(' ')) << line;
        }
    }
}

TEST_F(DescribeTest, OverviewsNameEveryKind)
{
    for (const std::string& text :
         {describe::textOverview(model), describe::markdownOverview(model)}) {
        for (const KindModel* kind : all()) {
            EXPECT_NE(text.find(kind->isMain ? kind->text : kind->name), std::string::npos)
                << kind->name;
        }
    }
}

}    // namespace
