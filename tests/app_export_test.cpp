#include "Characters.h"
#include "CsvExport.h"
#include "FieldInfo.h"
#include "JsonExport.h"
#include "PackedText.h"
#include "RTCM2.h"
#include "support/AppSession.h"
#include "support/MessageHelpers.h"

#include <rapidjson/document.h>

#include <cmath>
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

// Compares what is written with what the checked accessors of the descriptors say.
class Comparison : public Sink {
public:
    Comparison(std::unique_ptr<Sink> sink) : written(std::move(sink)) {}

    void message(const Place& place, const Decoded& decoded) override
    {
        written->message(place, decoded);
        Document& expected = *objects.emplace_back(std::make_unique<Document>());
        expected.SetObject();
        auto& memory = expected.GetAllocator();
        expected.AddMember("kind", string(decoded.kind.name, memory), memory);
        expected.AddMember("number", place.frame.number, memory);
        expected.AddMember("byte", place.frame.beginOffset, memory);
        expected.AddMember("fields", fieldsOf(decoded.kind, decoded.message, memory), memory);
        const QByteArray packed(reinterpret_cast<const char*>(place.frame.bytes().data()),
                                static_cast<int>(place.frame.bytes().size()));
        expected.AddMember("hex", string(packed.toHex().toStdString(), memory), memory);
    }
    void finish() override { written->finish(); }

    static std::vector<std::unique_ptr<Document>> objects;

private:
    using Memory = Document::AllocatorType;

    static Json string(const std::string& text, Memory& memory)
    {
        return Json(text.data(), static_cast<rapidjson::SizeType>(text.size()), memory);
    }

    static Json fieldsOf(const KindModel& kind, const Message& message, Memory& memory)
    {
        Json fields(rapidjson::kObjectType);
        for (const FieldModel& field : kind.fields) {
            if (!field.optional || field.info->isPresent(&message)) {
                fields.AddMember(string(field.identifier, memory), member(field, message, memory),
                                 memory);
            }
        }
        return fields;
    }

    static Json member(const FieldModel& field, const Message& message, Memory& memory)
    {
        if (!field.repeated) {
            return value(field, field.info->getValue(&message, 0), memory);
        }
        const unsigned count = field.info->getCount(&message);
        if (field.type == FieldType::Character) {
            QString text;
            for (unsigned i = 0; i < count; ++i) {
                text += QLatin1Char(field.info->getValue(&message, i).toCharacter());
            }
            text.chop(text.endsWith(QChar(0)) ? 1 : 0);
            return string(text.toStdString(), memory);
        }
        Json values(rapidjson::kArrayType);
        for (unsigned i = 0; i < count; ++i) {
            values.PushBack(value(field, field.info->getValue(&message, i), memory), memory);
        }
        return values;
    }

    static Json value(const FieldModel& field, const FieldValue& value, Memory& memory)
    {
        switch (value.getKind()) {
        case FieldType::Signed:
            return Json(std::int64_t{value.toSigned()});
        case FieldType::Float64:
            return Json(value.toDouble());
        case FieldType::SubMessage:
            return fieldsOf(*field.element, *value.toSubMessage(), memory);
        default:
            return Json(std::uint64_t{value.toUnsigned()});
        }
    }

    std::unique_ptr<Sink> written;
};
std::vector<std::unique_ptr<Document>> Comparison::objects;

class ExportTest : public testing::Test {
protected:
    std::string json(const std::vector<Packed>& messages, const JsonOptions& options)
    {
        return app.run(messages, [&](Output& output) {
            return std::make_unique<JsonExport>(output, options, app.kinds({}));
        });
    }

    Document object(const Packed& message, const JsonOptions& options = {})
    {
        return parsed(json({message}, options));
    }

    std::string csv(const std::vector<Packed>& messages, const std::vector<std::string>& kinds,
                    const CsvOptions& options)
    {
        app.filterOptions.kinds = kinds;
        return app.run(messages, [&](Output& output) {
            return std::make_unique<CsvExport>(output,
                                               CsvExport::tablesFor(app.kinds(kinds), options));
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

TEST_F(ExportTest, EveryReportedKindHasTheValuesOfItsDescriptors)
{
    std::mt19937 random(1);
    std::vector<Packed> messages;
    for (const KindModel* kind : app.kinds({})) {
        for (int i = 0; i < 40; ++i) {
            const unsigned words = i == 0 ? 0 : random() % 32;
            Packed payload(words * 3);
            std::generate(payload.begin(), payload.end(),
                          [&] { return static_cast<std::uint8_t>(random()); });
            messages.push_back(packed(static_cast<unsigned>(kind->typeNumber), words, payload));
        }
    }
    Comparison::objects.clear();
    const std::string text = app.run(messages, [&](Output& output) {
        JsonOptions options;
        options.withHex = true;
        return std::make_unique<Comparison>(
            std::make_unique<JsonExport>(output, options, app.kinds({})));
    });
    const std::vector<std::string> lines = linesOf(text);
    ASSERT_EQ(lines.size(), Comparison::objects.size());
    std::map<std::string, int> seen;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Document written = parsed(lines[i]);
        written.RemoveMember("fill");
        EXPECT_TRUE(written == *Comparison::objects[i]) << lines[i];
        ++seen[written["kind"].GetString()];
    }
    EXPECT_EQ(seen.size(), app.kinds({}).size());
    Comparison::objects.clear();
}

TEST_F(ExportTest, MembersAreInTheOrderOfTheFields)
{
    EXPECT_EQ(json({twoCorrections()}, {}),
              "{\"kind\":\"Message Type 1\",\"number\":1,\"byte\":0,\"fields\":{\"Preamble\":102,"
              "\"Message_Type\":1,\"Reference_Station_Id\":5,\"Modified_Z_Count\":4500,"
              "\"Sequence_No\":3,\"No_Of_Data_Words\":4,\"Station_Health\":0,\"Ns\":2,"
              "\"Corrections\":[{\"Scale_Factor\":0,\"UDRE\":1,\"Satellite_Id\":3,\"PRC\":-300,"
              "\"RRC\":5,\"Issue_Of_Data\":129,\"Change_Bit\":1,\"Time_Of_Day\":1},"
              "{\"Scale_Factor\":1,\"UDRE\":3,\"Satellite_Id\":31,\"PRC\":32767,\"RRC\":-128,"
              "\"Issue_Of_Data\":127,\"Change_Bit\":0,\"Time_Of_Day\":127}]}}\n");
}

TEST_F(ExportTest, CoordinatesOf38BitsSurvive)
{
    RTCM2_Message_Type_24_s record = {};
    RTCM2_init_Message_Type_24(&record);
    record.Preamble = 0x66;
    record.Message_Type = 24;
    record.No_Of_Data_Words = 5;
    record.ECEF_X = (std::int64_t{1} << 37) - 1;
    record.ECEF_Y = -(std::int64_t{1} << 37);
    record.ECEF_Z = -1;
    Packed message(21);
    ASSERT_GT(RTCM2_encode_Message_Type_24(message.data(), 21, &record), 0);
    const Document document = object(message);
    const Json& fields = document["fields"];
    EXPECT_EQ(fields["ECEF_X"].GetInt64(), 137438953471);
    EXPECT_EQ(fields["ECEF_Y"].GetInt64(), -137438953472);
    EXPECT_EQ(fields["ECEF_Z"].GetInt64(), -1);
    EXPECT_FALSE(fields.HasMember("Antenna_Height"));
}

TEST_F(ExportTest, TextsKeepEveryByte)
{
    std::string all;
    for (int code = 255; code >= 0; --code) {
        all += static_cast<char>(code);
    }
    const std::string texts[] = {
        all.substr(0, 90),
        all.substr(90, 90),
        all.substr(166),
        std::string("a\0b\0\0\0", 6),
        std::string("\"\\/\n\x7F\x80", 6),
        std::string(3, '\0'),
    };
    for (const std::string& text : texts) {
        JsonOptions options;
        options.withTexts = true;
        const Document document = object(textMessage(text), options);
        EXPECT_EQ(bytesOf(document["fields"]["Message"]), text);
        EXPECT_EQ(bytesOf(document["texts"]["Message"]), text.substr(0, text.find('\0')));
    }
}

TEST_F(ExportTest, TextsSayWhatCodedValuesMean)
{
    JsonOptions options;
    options.withTexts = true;
    const Document document = object(twoCorrections(), options);
    const Json& texts = document["texts"];
    EXPECT_STREQ(texts["Station_Health"].GetString(), "UDRE Scale Factor = 1");
    EXPECT_FALSE(texts.HasMember("Modified_Z_Count"));
    const Json& corrections = texts["Corrections"];
    ASSERT_EQ(corrections.Size(), 2U);
    EXPECT_STREQ(corrections[0]["UDRE"].GetString(), "GT 1 m and LE 4 m");
    EXPECT_FALSE(corrections[0].HasMember("RRC"));
    EXPECT_TRUE(corrections[1].HasMember("RRC"));

    // Rates of change: 0 and the value that stands for none; no field here is coded otherwise but
    // G.
    options.fields = {"Corrections.Rate Of Change"};
    const Document delays = object(packed(15, 3, {0, 0, 0, 0, 0, 0, 0, 0x20, 0}), options);
    const std::string text = "{\"Corrections\":[{},{\"Rate_Of_Change\":\"" +
                             Message::doNotUseString.toStdString() + "\"}]}";
    EXPECT_TRUE(delays["texts"] == parsed(text));

    options.fields = {"Data"};
    const Document data = object(packed(59, 1, {7, 65, 8}), options);
    EXPECT_TRUE(data["texts"] == parsed("{\"Data\":[null,\"FKP\",null]}"));
    EXPECT_TRUE(data["fields"] == parsed("{\"Data\":[7,65,8]}"));
}

TEST_F(ExportTest, OnlyUnusualFillIsShown)
{
    struct {
        Packed bytes;
        std::size_t begin;
        const char* fill;
    } const rows[] = {
        {{0xFF, 0xAA, 0xAA}, 8, ""},
        {{0xFF, 0x55}, 8, "01010101"},
        {{0xE5, 0x55}, 3, "0010101010101"},
        {{0xF5, 0x55}, 3, ""},
        {{0xF5, 0x54}, 3, "1010101010100"},
        {{0xFF, 0xAA}, 16, ""},
        {{0xFF, 0xFE}, 15, "0"},
        {{0xFF, 0xFF}, 15, ""},
    };
    for (const auto& row : rows) {
        std::string fill;
        appendUnusualFill(fill, row.bytes, row.begin);
        EXPECT_EQ(fill, row.fill);
    }
    EXPECT_FALSE(object(twoCorrections()).HasMember("fill"));
    Packed odd = twoCorrections();
    odd.back() = 0xAB;
    EXPECT_STREQ(object(odd)["fill"].GetString(), "1010101010101011");
}

TEST_F(ExportTest, ArraysAreWholeHoweverTheReadingEnds)
{
    JsonOptions options;
    options.asArray = true;
    EXPECT_EQ(parsed(json({}, options)).Size(), 0U);
    const std::vector<Packed> messages(5, twoCorrections());
    EXPECT_EQ(parsed(json(messages, options)).Size(), 5U);
    app.sessionOptions.max = 2;
    EXPECT_EQ(parsed(json(messages, options)).Size(), 2U);

    Packed stream = AppSession::streamOf(messages);
    stream[stream.size() / 2] ^= 0x04;
    app.writeFile("damaged", stream);
    app.sessionOptions = {.max = 0, .onError = OnError::stop, .quiet = true};
    const Document stopped = parsed(app.run({"damaged"}, [&](Output& output) {
        return std::make_unique<JsonExport>(output, options, app.kinds({}));
    }));
    EXPECT_EQ(stopped.Size(), 2U);
}

TEST_F(ExportTest, SeveralInputsAreNamedWhateverTheirNames)
{
    const std::string odd = "odd\xFF\"name";
    app.writeFile("a", AppSession::streamOf({twoCorrections()}));
    app.writeFile(odd, AppSession::streamOf({twoCorrections()}));
    JsonOptions options;
    options.withInput = true;
    options.fields = {"ns", "corrections.prc"};
    const std::vector<std::string> lines = linesOf(app.run({"a", odd}, [&](Output& output) {
        return std::make_unique<JsonExport>(output, options, app.kinds({}));
    }));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(parsed(lines[0])["input"].GetString(), app.pathOf("a"));
    EXPECT_EQ(parsed(lines[1])["input"].GetString(), app.pathOf("odd\xEF\xBF\xBD\"name"));
    EXPECT_TRUE(parsed(lines[0])["fields"] ==
                parsed("{\"Ns\":2,\"Corrections\":[{\"PRC\":-300},{\"PRC\":32767}]}"));
}

TEST(JsonTextTest, WhatIsNoNumberBecomesNull)
{
    JsonText text;
    for (const double value :
         {0.5, -1e300, std::nan(""), std::numeric_limits<double>::infinity()}) {
        text.comma();
        text.real(value);
    }
    text.end(0, '[', ']');
    EXPECT_EQ(text.view(), "[0.5,-1e300,null,null]");
}

TEST(JsonTextTest, KeysAndNumbersOfAnyLength)
{
    JsonText text;
    const std::string odd = "a \"quoted\" name that is longer than most";
    for (const std::string& name : {std::string(28, 'x'), std::string(29, 'y'), odd}) {
        text.key(JsonKey(name));
        text.number(std::numeric_limits<std::int64_t>::min());
    }
    text.key(JsonKey("z"));
    text.number(std::numeric_limits<std::uint64_t>::max());
    text.end(0, '{', '}');
    const Document document = parsed(std::string(text.view()));
    EXPECT_EQ(document.MemberCount(), 4U);
    EXPECT_EQ(document[odd.c_str()].GetInt64(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(document["z"].GetUint64(), std::numeric_limits<std::uint64_t>::max());
}

TEST_F(ExportTest, WrongChoicesAreRefused)
{
    const auto kinds = app.kinds({"1", "3"});
    EXPECT_THROW(checkNames(kinds, {"Antenna Height"}), FieldChoiceError);
    EXPECT_THROW(checkNames(kinds, {"Corrections.ECEF X"}), FieldChoiceError);
    EXPECT_NO_THROW(checkNames(kinds, {"ECEF X", "Sequence No.", "Corrections.PRC"}));
    CsvOptions options;
    options.fields = {"Corrections.PRC"};
    EXPECT_THROW(CsvExport::tablesFor(kinds, options), FieldChoiceError);
    options.fields.clear();
    options.rows = "Corrections";
    EXPECT_THROW(CsvExport::tablesFor(kinds, options), FieldChoiceError);
}

TEST_F(ExportTest, CsvQuotesWhatNeedsIt)
{
    CsvOptions options;
    options.fields = {"Message", "Station Health"};
    options.withTexts = true;
    EXPECT_EQ(
        csv({textMessage("plain "), textMessage("a,b"), textMessage("say \"hi\"!\r\n"),
             textMessage(std::string("\xE9\0x\0", 4))},
            {"16"}, options),
        "No.,Byte,Message,Station Health,Station Health text\n"
        "1,0,plain ,0,UDRE Scale Factor = 1\n"
        "2,20,\"a,b\",0,UDRE Scale Factor = 1\n"
        "3,35,\"say \"\"hi\"\"!\r\n\xE2\x90\x80\",0,UDRE Scale Factor = 1\n"
        "4,65,\xC3\xA9\xE2\x90\x80x\xE2\x90\x80\xE2\x90\x80\xE2\x90\x80,0,UDRE Scale Factor = 1\n");
}

TEST_F(ExportTest, CsvRowsRepeatTheFieldsOfTheMessage)
{
    CsvOptions options;
    options.fields = {"Corrections.PRC", "Modified_Z_Count", "Corrections.RRC"};
    options.rows = "corrections";
    EXPECT_EQ(csv({twoCorrections(), packed(1, 0), twoCorrections()}, {"1"}, options),
              "No.,Byte,Corrections.PRC,Modified Z-Count,Corrections.RRC\n"
              "1,0,-300,4500,5\n"
              "1,0,32767,4500,-128\n"
              "3,40,-300,4500,5\n"
              "3,40,32767,4500,-128\n");

    options = {.rows = "Corrections"};
    const std::string header = linesOf(csv({}, {"1"}, options)).at(0);
    EXPECT_EQ(header, "No.,Byte,Preamble,Message Type,Reference Station Id,Modified Z-Count,"
                      "Sequence No.,No. Of Data Words,Station Health,Ns,Corrections.Scale Factor,"
                      "Corrections.UDRE,Corrections.Satellite Id,Corrections.PRC,Corrections.RRC,"
                      "Corrections.Issue Of Data,Corrections.Change Bit,Corrections.Time Of Day");

    options = {.withHex = true, .fields = {"Ns", "Corrections"}};
    EXPECT_EQ(linesOf(csv({twoCorrections()}, {"1"}, options)).at(1),
              "1,0,2,2,6604058ca32023fed40581ff7fff807faaaa");
}

TEST_F(ExportTest, CsvLeavesAbsentFieldsEmpty)
{
    CsvOptions options;
    options.fields = {"L1 ECEF Delta-X", "Constellation", "Phase Center Height"};
    options.withTexts = true;
    EXPECT_EQ(
        csv({packed(22, 1, {0xFF, 0, 0}), packed(22, 2, {1, 0, 0, 0x20, 0, 7})}, {"22"}, options),
        "No.,Byte,L1 ECEF Delta-X,Constellation,Constellation text,Phase Center Height,"
        "Phase Center Height text\n"
        "1,0,-1,,,,\n"
        "2,15,1,1,GLONASS,7,\n");
}

TEST_F(ExportTest, CsvOfSeveralKindsIsMixedOrInFiles)
{
    const std::vector<Packed> messages = {twoCorrections(), twoCorrections(), textMessage("abc"),
                                          twoCorrections()};
    CsvOptions options;
    options.fields = {"Ns", "Message"};
    EXPECT_EQ(csv(messages, {"1", "16", "3"}, options),
              "# Message Type 1\nNo.,Byte,Ns\n1,0,2\n2,30,2\n"
              "\n# Message Type 16\nNo.,Byte,Message\n3,60,abc\n"
              "\n# Message Type 1\nNo.,Byte,Ns\n4,75,2\n");

    CsvFiles files(app.pathOf("new/tables"));
    app.run(messages, [&](Output&) {
        return std::make_unique<CsvExport>(
            files, CsvExport::tablesFor(app.kinds({"1", "16", "3"}), options));
    });
    std::string problem;
    EXPECT_TRUE(files.close(problem)) << problem;
    EXPECT_EQ(app.readFile("new/tables/Message_Type_1.csv"),
              "No.,Byte,Ns\n1,0,2\n2,30,2\n4,75,2\n");
    EXPECT_EQ(app.readFile("new/tables/Message_Type_16.csv"), "No.,Byte,Message\n3,60,abc\n");
    EXPECT_FALSE(std::filesystem::exists(app.pathOf("new/tables/Message_Type_3.csv")));

    CsvFiles nowhere(app.pathOf("input/tables"));    // below a file
    app.run(messages, [&](Output&) {
        return std::make_unique<CsvExport>(
            nowhere, CsvExport::tablesFor(app.kinds({"1", "16", "3"}), options));
    });
    EXPECT_FALSE(nowhere.close(problem));
    EXPECT_NE(problem.find("Message_Type_1.csv"), std::string::npos) << problem;
}

}    // namespace
