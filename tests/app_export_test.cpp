#include "base/Terminal.h"
#include "commands/list/BriefView.h"
#include "commands/list/ListView.h"
#include "commands/show/ShowView.h"
#include "export/CsvExport.h"
#include "export/JsonExport.h"
#include "format/PackedText.h"
#include "support/AppSession.h"
#include "support/MessageHelpers.h"

#include <rapidjson/document.h>

#include <limits>
#include <random>
#include <sstream>

namespace {

using Packed = AppSession::Packed;
using Json = rapidjson::Value;
using Document = rapidjson::Document;

Document parsed(const std::string& text)
{
    Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag | rapidjson::kParseFullPrecisionFlag>(
        text.data(), text.size());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// The bytes that a string of code points up to U+00FF stands for.
std::string bytesOf(const Json& text)
{
    return QString::fromUtf8(text.GetString(), static_cast<int>(text.GetStringLength()))
        .toLatin1()
        .toStdString();
}

class ExportTest : public testing::Test {
protected:
    AppSession::MakeSink makeJson(const JsonOptions& options)
    {
        return [this, options](Output& output) {
            return std::make_unique<JsonExport>(output, options, app.kinds({}));
        };
    }

    std::string json(const std::vector<Packed>& messages, const JsonOptions& options)
    {
        return app.run(messages, makeJson(options));
    }

    std::string list(const std::vector<Packed>& messages, const ListOptions& options)
    {
        return app.run(messages, [&](Output& output) {
            return std::make_unique<ListView>(output, options, app.kinds({}));
        });
    }

    std::string csv(const std::vector<Packed>& messages, const std::vector<std::string>& kinds,
                    const CsvOptions& options)
    {
        app.filterOptions.kinds = kinds;
        return app.run(messages, [&](Output& output) {
            return std::make_unique<CsvExport>(output, tablesFor(app.kinds(kinds), options), false);
        });
    }

    AppSession app;
};

Packed textMessage(std::string text)
{
    text.resize((text.size() + 2) / 3 * 3);
    return packed(16, static_cast<unsigned>(text.size() / 3), Packed(text.begin(), text.end()));
}

// Satellite 3 with PRC -300 and RRC 5, satellite 31 with PRC 32767 and RRC -128.
Packed twoCorrections()
{
    return packed(1, 4, {0x23, 0xFE, 0xD4, 0x05, 0x81, 0xFF, 0x7F, 0xFF, 0x80, 0x7F, 0xAA, 0xAA});
}

// The second correction has no Rate Of Change.
Packed noRate()
{
    return packed(15, 3, {0, 0, 0, 0, 0, 0, 0, 0x20, 0});
}

// One PSF of 0.32.
Packed scaled()
{
    return packed(21, 3, {0xB9, 0x27, 0xBF, 0x25, 0x78, 0x01, 0, 0, 0});
}

TEST_F(ExportTest, QuantitiesStandInThePlaceOfNumbersOrBesideThem)
{
    const struct {
        JsonOptions options;
        const char* fields;
    } rows[] = {
        {{.fields = {"Modified Z-Count", "Corrections.Satellite", "corrections.prc_m"}},
         R"({"Modified_Z_Count":4500,"Corrections":[{"Satellite":"G03","PRC_m":-6},)"
         R"({"Satellite":"G31","PRC_m":10485.44}]})"},
        {{.fields = {"Corrections"}, .values = Values::scaled},
         R"({"Corrections":[{"Scale_Factor":0,"UDRE":1,"Satellite":"G03","PRC_m":-6,)"
         R"("RRC_m_per_s":0.01,"Issue_Of_Data":129,"Change_Bit":1,"Time_Of_Day_s":null},)"
         R"({"Scale_Factor":1,"UDRE":3,"Satellite":"G31","PRC_m":10485.44,)"
         R"("RRC_m_per_s":null,"Issue_Of_Data":127,"Change_Bit":0,"Time_Of_Day_s":null}]})"},
        {{.values = Values::both},
         R"("Modified_Z_Count":4500,"Modified_Z_Count_s":2700,"Sequence_No":3,)"},
        {{.values = Values::both}, R"("Satellite_Id":31,"Satellite":"G31","PRC":32767,)"},
    };
    for (const auto& row : rows) {
        const std::string text = json({twoCorrections()}, row.options);
        EXPECT_NE(text.find(row.fields), std::string::npos) << text;
    }
    EXPECT_EQ(csv({twoCorrections()}, {"1"},
                  {.separator = ';',
                   .decimal = ',',
                   .fields = {"Corrections.PRC_m", "Corrections"},
                   .values = Values::scaled,
                   .rows = "Corrections"}),
              "No.;Byte;Corrections.PRC_m;Corrections.Scale Factor;Corrections.UDRE;"
              "Corrections.Satellite;Corrections.PRC_m;Corrections.RRC_m_per_s;"
              "Corrections.Issue Of Data;Corrections.Change Bit;Corrections.Time_Of_Day_s\n"
              "1;0;-6;0;1;G03;-6;0,01;129;1;\n1;0;10485,44;1;3;G31;10485,44;;127;0;\n");
}

// Lines are read through the rows of the fields; the message's own line comes from its accessors.
TEST_F(ExportTest, LinesOfTheListAreThoseOfTheMessages)
{
    std::mt19937 random(1);
    std::vector<const KindModel*> kinds = app.kinds({});
    std::erase_if(kinds, [](const KindModel* kind) { return kind->info == nullptr; });
    for (const KindModel* kind : kinds) {
        std::vector<Packed> messages;
        for (int i = 0; i < 40; ++i) {
            const unsigned words = i == 0 ? 0 : random() % 32;
            Packed payload(words * 3);
            std::generate(payload.begin(), payload.end(),
                          [&] { return static_cast<std::uint8_t>(random()); });
            messages.push_back(packed(static_cast<unsigned>(kind->typeNumber), words, payload));
        }
        std::string expected;
        for (const Packed& message : messages) {
            if (const Outcome outcome = app.host.driver.decode(message);
                outcome.record != nullptr) {
                const QVector<bool> all(static_cast<int>(kind->fields.size()), true);
                expected +=
                    printable(outcome.message.get()->getRawStringFor(all).toStdString()) + "\n";
            }
        }
        const std::string lines = list(messages, {});
        EXPECT_EQ(lines.substr(lines.find('\n') + 1), expected);
        EXPECT_FALSE(expected.empty()) << kind->name;
    }
}

TEST_F(ExportTest, ListsOfChosenFieldsHaveTheSameColumnsForAllKinds)
{
    EXPECT_EQ(list({twoCorrections(), packed(16, 0)},
                   {.interpreted = true,
                    .position = true,
                    .fields = {"Corrections.UDRE", "ns", "Station Health"}}),
              "No.;Byte;Corrections.UDRE;ns;Station Health\n"
              "1;0;GT 1 m and LE 4 m GT 8 m;2;UDRE Scale Factor = 1\n"
              "2;30;;;UDRE Scale Factor = 1\n");
    EXPECT_EQ(list({noRate(), scaled()},
                   {.fields = {"Corrections.Rate Of Change", "Preamble", "Data.PSF"}}),
              "Corrections.Rate Of Change;Preamble;Data.PSF\n0 DoNotUse;0x66;\n;0x66;0.320000\n");
}

TEST_F(ExportTest, ShowTellsFieldsThatArePresentWithUnitsAndMeanings)
{
    const std::string shown =
        app.run({packed(22, 1, {0xFF, 0, 0}), twoCorrections(), packed(18, 1, {0, 0x12, 0x34})},
                [](Output& output) { return std::make_unique<ShowView>(output, true); });
    for (const char* const piece :
         {"\033[1mMessage Type 22: Extended Reference Station Parameters\033[0m\033[2m  #1, bytes "
          "0 "
          "to 14\033[0m\n  \033[36mPreamble            \033[0m  0x66\n",
          "  \033[36mL1 ECEF Delta-Z     \033[0m  0  = 0 m\n\n\033[1mMessage Type 1: ",
          "  -300  = -6 m\n", "  error\033[2m (-128)",
          "  \033[36mCorrections 2 of 2\033[0m\n    \033[36mScale Factor \033[0m  0.32 m\033[2m "
          "(0x01)",
          "  \033[36mGNSS Time Of Measurement\033[0m  4660 microsecond  = 0.00466 s\n"}) {
        EXPECT_NE(shown.find(piece), std::string::npos) << piece << "is not in\n" << shown;
    }
}

TEST_F(ExportTest, LinesForPeopleTellSatellitesPointsAndTexts)
{
    const auto brief = [&](const std::vector<Packed>& messages, const BriefOptions& options) {
        const std::string text = app.run(messages, [&](Output& output) {
            return std::make_unique<BriefView>(output, options, app.kinds({}));
        });
        return text.substr(text.find('\n') + 1);
    };
    Packed unwell = twoCorrections();
    unwell[5] |= 7;
    const std::pair<Packed, std::string> cases[] = {
        {twoCorrections(), "1  G03 -6 m, G31 10485.44 m"},
        {packed(1, 2, {0x23, 0x80, 0, 0, 0, 0}), "1  G03 do not use"},
        {packed(9, 0), "9  0 x DGNSS"},
        {packed(15, 2, {0x23, 0, 0, 0, 0, 0}), "15  R03"},
        {packed(3, 4, {0, 0, 0, 100, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF}),
         "3  Reference point 1 0 -0.01 m"},
        {packed(24, 6, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 4, 0}),
         "24  Antenna reference point 0 0 0 m, GLONASS, Antenna Height 0.0016 m"},
        {textMessage("H\xF6he"), "16  \"H\xC3\xB6he\""},
        {packed(59, 1, {65, 1, 2}), "59  FKP, 3 bytes"},
        {packed(14, 1, {1, 2, 3}), "14  unknown type 0x010203"},
        {packed(38, 2, {0, 0, 0, 0, 0, 0}), "38  0 x JPL 48"},
        {unwell, "1  Not Working: G03 -6 m, G31 10485.44 m"},
    };
    for (const auto& [message, line] : cases) {
        EXPECT_EQ(brief({message}, {}), "      1  45:00.0        5" +
                                            std::string(7 - line.find(' ') - 1, ' ') + line + "\n");
    }
    EXPECT_EQ(brief({textMessage("H\xF6her")}, {.columns = 39}),
              "      1  45:00.0        5    16  \"H\xC3\xB6...\n");
    EXPECT_NE(brief({unwell}, {.colour = true}).find("\033[33mNot Working\033[0m: G03"),
              std::string::npos);
}

TEST_F(ExportTest, PlacesStandBeforeFieldsAndHexBehind)
{
    EXPECT_EQ(linesOf(json({twoCorrections(), packed(9, 0)}, {.withHex = true})).at(1),
              "{\"kind\":\"Message Type 9\",\"number\":2,\"byte\":30,\"fields\":{\"Preamble\":102,"
              "\"Message_Type\":9,\"Reference_Station_Id\":5,\"Modified_Z_Count\":4500,"
              "\"Sequence_No\":3,\"No_Of_Data_Words\":0,\"Station_Health\":0,\"Ns\":0,"
              "\"Corrections\":[]},\"hex\":\"6624058ca300\"}");
}

TEST_F(ExportTest, TextsKeepEveryByte)
{
    std::string all;
    for (int code = 255; code >= 0; --code) {
        all += static_cast<char>(code);
    }
    for (const std::string& text : {all.substr(0, 90), all.substr(90, 90), all.substr(166),
                                    std::string("a\0b\0\0\0", 6), std::string(3, '\0')}) {
        const Document document = parsed(json({textMessage(text)}, {.withTexts = true}));
        EXPECT_EQ(bytesOf(document["fields"]["Message"]), text);
        EXPECT_EQ(bytesOf(document["texts"]["Message"]), text.substr(0, text.find('\0')));
    }
}

TEST_F(ExportTest, TextsSayWhatCodedValuesMean)
{
    struct {
        Packed message;
        std::vector<std::string> fields;
        std::string texts;
    } const rows[] = {
        {twoCorrections(),
         {"Modified_Z_Count", "Station Health", "Corrections.UDRE", "Corrections.RRC"},
         R"({"Station_Health":"UDRE Scale Factor = 1","Corrections":[{"UDRE":"GT 1 m and LE 4 m"},)"
         R"({"UDRE":"GT 8 m","RRC":"error"}]})"},
        // 0 and the value that stands for none
        {noRate(),
         {"Corrections.Rate Of Change"},
         "{\"Corrections\":[{},{\"Rate_Of_Change\":\"" + Message::doNotUseString.toStdString() +
             "\"}]}"},
        {packed(59, 1, {7, 65, 8}), {"Data"}, R"({"Data":[null,"FKP",null]})"},
    };
    for (const auto& row : rows) {
        const std::string text = json({row.message}, {.withTexts = true, .fields = row.fields});
        EXPECT_TRUE(parsed(text)["texts"] == parsed(row.texts)) << text;
    }
}

TEST(TextTest, NumbersAreWrittenWithAllTheirDigits)
{
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    for (const std::int64_t number :
         {least, -10'000L, -1L, 0L, 9L, 10L, 99L, 100L, 999L, 1000L, 9999L, 10'000L, 1'000'203L,
          99'999'999L, 100'000'000L, ~least}) {
        char digits[numberRoom];
        EXPECT_EQ(std::string(digits, putSigned(digits, number)), std::to_string(number));
    }
    Text text;
    appendUnsigned(text, static_cast<std::uint64_t>(least));
    EXPECT_EQ(text.view(), "9223372036854775808");
}

TEST(PackedTextTest, OnlyUnusualFillIsShown)
{
    struct {
        Packed bytes;
        std::size_t begin;
        const char* fill;
    } const rows[] = {
        {{0xFF, 0xAA, 0xAA}, 8, ""}, {{0xFF, 0xAA, 0xAB}, 8, "1010101010101011"},
        {{0xF5, 0x55}, 3, ""},       {{0xE5, 0x55}, 3, "0010101010101"},
        {{0xFF, 0xAA}, 16, ""},      {{0xFF, 0xFE}, 15, "0"},
    };
    for (const auto& row : rows) {
        std::string fill;
        appendUnusualFill(fill, row.bytes, row.begin);
        EXPECT_EQ(fill, row.fill);
    }
}

TEST_F(ExportTest, ArraysAreWholeHoweverTheReadingEnds)
{
    const auto sizeOf = [this](const Packed& stream) {
        app.writeFile("stream", stream);
        return parsed(app.run({"stream"}, makeJson({.asArray = true}))).Size();
    };
    Packed stream = AppSession::streamOf(std::vector<Packed>(5, twoCorrections()));
    EXPECT_EQ(sizeOf({}), 0U);
    EXPECT_EQ(sizeOf(stream), 5U);
    app.sessionOptions.max = 1;
    EXPECT_EQ(sizeOf(stream), 1U);
    app.sessionOptions = {.max = 0, .onError = OnError::stop, .quiet = true};
    stream[stream.size() / 2] ^= 0x04;
    EXPECT_EQ(sizeOf(stream), 2U);
}

TEST_F(ExportTest, SeveralInputsAreNamedWhateverTheirNames)
{
    const std::string odd = "odd\xFF\"name";
    app.writeFile("a", AppSession::streamOf({twoCorrections()}));
    app.writeFile(odd, AppSession::streamOf({twoCorrections()}));
    const std::vector<std::string> lines = linesOf(
        app.run({"a", odd}, makeJson({.withInput = true, .fields = {"ns", "corrections.prc"}})));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(parsed(lines[0])["input"].GetString(), app.pathOf("a"));
    EXPECT_EQ(parsed(lines[1])["input"].GetString(), app.pathOf("odd\xEF\xBF\xBD\"name"));
    EXPECT_TRUE(parsed(lines[0])["fields"] ==
                parsed("{\"Ns\":2,\"Corrections\":[{\"PRC\":-300},{\"PRC\":32767}]}"));
}

TEST_F(ExportTest, WrongChoicesAreRefused)
{
    const auto kinds = app.kinds({"1", "3"});
    EXPECT_THROW(checkNames(kinds, {"Antenna Height"}), FieldPathError);
    EXPECT_THROW(checkNames(kinds, {"Corrections.ECEF X"}), FieldPathError);
    EXPECT_NO_THROW(checkNames(kinds, {"ECEF X", "Sequence No.", "Corrections.PRC"}));
    EXPECT_THROW(tablesFor(kinds, {.fields = {"Corrections.PRC"}}), FieldPathError);
    EXPECT_THROW(tablesFor(kinds, {.rows = "Corrections"}), FieldPathError);
}

TEST_F(ExportTest, CsvQuotesWhatNeedsIt)
{
    EXPECT_EQ(csv({textMessage("plain "), textMessage("a,b"), textMessage("say \"hi\"!"),
                   textMessage("\r23456"), textMessage(std::string("\xE9\n\0x\0\0", 6))},
                  {"16"}, {.withTexts = true, .fields = {"Message", "Station Health"}}),
              "No.,Byte,Message,Station Health,Station Health text\n"
              "1,0,plain ,0,UDRE Scale Factor = 1\n"
              "2,20,\"a,b\",0,UDRE Scale Factor = 1\n"
              "3,35,\"say \"\"hi\"\"!\",0,UDRE Scale Factor = 1\n"
              "4,60,\"'\r23456\",0,UDRE Scale Factor = 1\n"
              "5,80,\"\xC3\xA9\n\xE2\x90\x80x\xE2\x90\x80\xE2\x90\x80\",0,UDRE Scale Factor = 1\n");
}

TEST_F(ExportTest, CsvSuitsSpreadsheets)
{
    const CsvOptions options{
        .separator = ';', .decimal = ',', .isShown = true, .fields = {"Ns", "Message", "Data.PSF"}};
    EXPECT_EQ(csv({textMessage("=1+2;x"), textMessage("-1 m, "), textMessage("+a;"),
                   textMessage("@\033A")},
                  {"16"}, options),
              "No.;Byte;Message\n1;0;\"'=1+2;x\"\n2;20;'-1 m, \n3;40;\"'+a;\"\n4;55;'@\\x1BA\n");
    CsvOptions rows = options;
    rows.rows = "Data";
    EXPECT_EQ(csv({scaled()}, {"21"}, rows), "No.;Byte;Ns;Data.PSF\n1;0;1;0,32\n");
}

TEST_F(ExportTest, CsvRowsRepeatTheFieldsOfTheMessage)
{
    const std::vector<Packed> messages = {twoCorrections(), packed(1, 0), twoCorrections()};
    EXPECT_EQ(csv(messages, {"1"},
                  {.fields = {"Corrections.PRC", "Modified_Z_Count", "Corrections.RRC"},
                   .rows = "corrections"}),
              "No.,Byte,Corrections.PRC,Modified Z-Count,Corrections.RRC\n"
              "1,0,-300,4500,5\n"
              "1,0,32767,4500,-128\n"
              "3,40,-300,4500,5\n"
              "3,40,32767,4500,-128\n");
    EXPECT_EQ(csv({packed(59, 1, {7, 65, 8})}, {"59"}, {.fields = {"Data"}}),
              "No.,Byte,Data\n1,0,7 65 8\n");
    EXPECT_EQ(csv({}, {"15"}, {.rows = "Corrections"}),
              "No.,Byte,Preamble,Message Type,Reference Station Id,Modified Z-Count,Sequence No.,"
              "No. Of Data Words,Station Health,Ns,Corrections.R,Corrections.G,"
              "Corrections.Satellite Id,Corrections.Delay,Corrections.Rate Of Change\n");
    EXPECT_EQ(csv({twoCorrections()}, {"1"},
                  {.withHex = true, .withInput = true, .fields = {"Ns", "Corrections"}}),
              "Input,No.,Byte,Ns,Corrections,Hex\n" + app.pathOf("input") +
                  ",1,0,2,2,6604058ca32023fed40581ff7fff807faaaa\n");
}

TEST_F(ExportTest, CsvRowsMeetTheConditionByThemselves)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Corrections.PRC < 0", "1,0,-300\n"},
        {"Corrections[PRC < 0 or Satellite == G31] and Ns == 2", "1,0,-300\n1,0,32767\n"},
        {"not Corrections.PRC == 7 and (Ns == 3 or Corrections.PRC > 0)", "1,0,32767\n"},
        {"Corrections[PRC < 0] and Corrections[PRC > 0]", ""},
    };
    for (const auto& [condition, rows] : cases) {
        app.filterOptions.where = condition;
        const MessageFilter filter(app.host.model, app.filterOptions);
        EXPECT_EQ(csv({twoCorrections()}, {"1"},
                      {.fields = {"Corrections.PRC"}, .rows = "Corrections", .filter = &filter}),
                  std::string("No.,Byte,Corrections.PRC\n") + rows)
            << condition;
    }
}

TEST_F(ExportTest, CsvLeavesAbsentFieldsEmpty)
{
    EXPECT_EQ(csv({packed(22, 1, {0xFF, 0, 0}), packed(22, 2, {1, 0, 0, 0x20, 0, 7})}, {"22"},
                  {.fields = {"L1 ECEF Delta-X", "Constellation", "Phase Center Height"}}),
              "No.,Byte,L1 ECEF Delta-X,Constellation,Phase Center Height\n1,0,-1,,\n2,15,1,1,7\n");
}

TEST_F(ExportTest, CsvOfSeveralKindsIsMixedOrInFiles)
{
    const std::vector<Packed> messages = {twoCorrections(), twoCorrections(), textMessage("abc"),
                                          twoCorrections()};
    const CsvOptions options = {.fields = {"Ns", "Message"}};
    EXPECT_EQ(csv(messages, {"1", "16", "3"}, options),
              "# Message Type 1\nNo.,Byte,Ns\n1,0,2\n2,30,2\n"
              "\n# Message Type 16\nNo.,Byte,Message\n3,60,abc\n"
              "\n# Message Type 1\nNo.,Byte,Ns\n4,75,2\n");

    const auto write = [&](const std::string& directory) {
        OutputFiles files(app.pathOf(directory));
        app.run(messages, [&](Output&) {
            return std::make_unique<CsvFiles>(
                files, tablesFor(app.kinds({"1", "16", "3"}), options), false);
        });
        return files.close() ? std::string() : files.problem();
    };
    EXPECT_EQ(write("new/tables"), "");
    EXPECT_EQ(app.readFile("new/tables/Message_Type_1.csv"),
              "No.,Byte,Ns\n1,0,2\n2,30,2\n4,75,2\n");
    EXPECT_EQ(app.readFile("new/tables/Message_Type_16.csv"), "No.,Byte,Message\n3,60,abc\n");
    EXPECT_FALSE(std::filesystem::exists(app.pathOf("new/tables/Message_Type_3.csv")));
    const std::string problem = write("input/tables");    // below a file
    EXPECT_NE(problem.find("Message_Type_1.csv"), std::string::npos) << problem;
}

}    // namespace
