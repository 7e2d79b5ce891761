#include "commands/compare/Alignment.h"
#include "commands/compare/CompareSink.h"
#include "support/AppSession.h"
#include "support/MessageHelpers.h"

#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include <sstream>

namespace {

using Packed = AppSession::Packed;

// Of station 5.
Packed message(unsigned type, unsigned time, unsigned sequence, const Packed& payload)
{
    Packed bytes = packed(type, static_cast<unsigned>(payload.size() / 3), payload);
    bytes[3] = static_cast<std::uint8_t>(time >> 5);
    bytes[4] = static_cast<std::uint8_t>(time << 3 | sequence);
    return bytes;
}

// Messages of the form "station:time.sequence content".
MessageStore storeOf(const std::string& messages)
{
    MessageStore store;
    std::istringstream words(messages);
    Found found;
    found.what = Found::What::misfit;
    for (std::string word; words >> word;) {
        unsigned time = 0;
        unsigned sequence = 0;
        unsigned station = 0;
        char content = 0;
        std::sscanf(word.c_str(), "%u:%u.%u%c", &station, &time, &sequence, &content);
        Packed bytes = message(14, time, sequence, {static_cast<std::uint8_t>(content), 0, 0});
        bytes[2] = static_cast<std::uint8_t>(station);
        found.bytes = bytes;
        store.add(found);
    }
    return store;
}

std::string alignmentText(const std::string& a, const std::string& b)
{
    const MessageStore first = storeOf(a);
    const MessageStore second = storeOf(b);
    const Alignment alignment(first, second);
    std::string text;
    for (const MessagePair& pair : alignment.pairs()) {
        const bool isEqual = first.textOf(pair.a) == second.textOf(pair.b);
        text += std::to_string(pair.a) +
                (!pair.isSame ? "~"
                 : isEqual    ? "="
                              : "/") +
                std::to_string(pair.b) + " ";
    }
    for (const std::uint32_t index : alignment.onlyA()) {
        text += "-" + std::to_string(index) + " ";
    }
    for (const std::uint32_t index : alignment.onlyB()) {
        text += "+" + std::to_string(index) + " ";
    }
    return text;
}

TEST(Alignment, FindsTheSameMessagesInStreamsThatWereCutDifferently)
{
    const struct {
        const char* a;
        const char* b;
        const char* wanted;
    } cases[] = {
        {"", "5:10.1a", "+0 "},
        {"5:10.1a 5:20.2b 5:30.3c", "5:20.2b 5:30.3x", "1=0 2/1 -0 "},
        // an hour later the same times and numbers, of which one input lacks the first or the last
        {"5:10.1a 5:20.2b 5:10.1c 5:20.2d", "5:10.1c 5:20.2d", "2=0 3=1 -0 -1 "},
        {"5:10.1a 5:20.2b 5:10.1c 5:20.2d", "5:20.2b 5:10.1x", "1=0 2/1 -0 -3 "},
        {"5:10.1s 5:20.2b 5:10.1s 5:20.2d 5:10.1s", "5:20.2d 5:10.1s", "3=0 4=1 -0 -1 -2 "},
        // what was sent twice
        {"5:10.1a 5:10.1a 5:20.2b", "5:10.1a 5:20.2b", "0=0 2=1 -1 "},
        {"5:10.1x 5:10.1a 5:20.2b", "5:10.1a 5:20.2c", "1=0 2/1 -0 "},
        // stations mixed in another order
        {"5:10.1a 6:11.1a 5:20.2b", "6:11.1a 5:10.1a 5:20.2b", "0=1 2=2 1=0 "},
        // another number at the same time is another message, but of satellites at the same time
        {"5:10.1a 5:20.2b", "5:10.3a 5:20.2b", "0~0 1=1 -0 +0 "},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(alignmentText(test.a, test.b), test.wanted) << test.a << " | " << test.b;
    }
}

struct Correction {
    std::uint8_t satellite;
    std::uint8_t value;
    std::uint8_t issue = 7;
};

// Corrections in units of 0.02 m, or of 0.32 m.
Packed corrections(unsigned time, bool isCoarse, const std::vector<Correction>& all)
{
    Packed payload;
    for (const Correction& one : all) {
        payload.insert(payload.end(), {static_cast<std::uint8_t>(isCoarse << 7 | one.satellite), 0,
                                       one.value, 0, one.issue});
    }
    payload.resize((payload.size() + 2) / 3 * 3, 0xAA);
    return message(1, time, 0, payload);
}

class CompareTest : public testing::Test {
protected:
    rapidjson::Document compare(const std::vector<Packed>& a, const std::vector<Packed>& b)
    {
        app.writeFile("a", AppSession::streamOf(a));
        app.writeFile("b", AppSession::streamOf(b));
        const std::string json = app.run(std::vector<std::string>{"a", "b"}, [&](Output& output) {
            return std::make_unique<CompareSink>(app.host.model, output, writeCompareJson, options,
                                                 result);
        });
        rapidjson::Document document;
        document.Parse(json.c_str());
        return document;
    }

    // What stands at a place in JSON.
    static std::string at(rapidjson::Document& document, const char* place)
    {
        const rapidjson::Value* const value = rapidjson::Pointer(place).Get(document);
        char digits[40] = "nothing";
        if (value != nullptr && value->IsNumber()) {
            std::snprintf(digits, sizeof digits, "%.4g", value->GetDouble());
        }
        return value != nullptr && value->IsString() ? value->GetString() : digits;
    }

    AppSession app;
    SessionOptions options;
    CompareSink::Result result = CompareSink::Result::none;
};

TEST_F(CompareTest, TellsWhatDiffersAndHowSatellitesDo)
{
    const Packed text = message(16, 100, 1, {'A', 'B', 'C'});
    rapidjson::Document json = compare(
        {corrections(10, false, {{1, 16}, {2, 32}, {3, 48}, {4, 64, 1}}), text,
         corrections(20, false, {{1, 16}, {2, 32}, {3, 48}}), corrections(30, false, {{1, 16}})},
        {corrections(10, true, {{1, 2}, {2, 3}, {3, 8}, {4, 5, 2}}), text,
         corrections(20, false, {{3, 48}, {2, 34}, {1, 16}}), corrections(30, false, {{1, 17}})});
    EXPECT_EQ(result, CompareSink::Result::different);
    const std::pair<const char*, const char*> wanted[] = {
        {"/equal", "1"},
        {"/differing", "3"},
        {"/first/field", "Corrections.Scale Factor"},
        {"/first/element", "1"},
        {"/first/b/raw", "01"},
        {"/fields/0/field", "Corrections.Scale Factor"},
        {"/fields/2/field", "Corrections.PRC"},
        {"/fields/2/messages", "3"},
        {"/corrections/0/alone", "2"},
        {"/corrections/0/quantities/0/quantity", "PRC_m"},
        // at first 0.32, 0.32 and 1.6 m, then 0, 0.04 and 0 m
        {"/corrections/0/quantities/0/common/count", "2"},
        {"/corrections/0/quantities/0/common/mean", "0.16"},
        {"/corrections/0/quantities/0/common/largest", "0.32"},
        {"/corrections/0/quantities/0/satellites/0/largest", "0"},
        {"/corrections/0/quantities/0/satellites/1/satellite", "G02"},
        {"/corrections/0/quantities/0/satellites/1/mean", "0.02"},
        {"/corrections/0/quantities/0/satellites/2/mean", "0.64"},
        {"/corrections/0/quantities/0/satellites/2/deviation", "0.9051"},
        {"/corrections/0/quantities/0/satellites/2/count", "2"},
        {"/corrections/0/quantities/0/satellites/3/count", "0"},
        {"/corrections/0/quantities/0/satellites/3/other_issues", "1"},
    };
    for (const auto& [place, value] : wanted) {
        EXPECT_EQ(at(json, place), value) << place;
    }
}

TEST_F(CompareTest, TellsInputsApartThatLackMessages)
{
    const std::vector<Packed> all = {corrections(10, false, {{1, 16}}),
                                     message(16, 100, 1, {'A', 'B', 'C'})};
    compare(all, all);
    EXPECT_EQ(result, CompareSink::Result::same);
    rapidjson::Document json = compare(all, {all.front()});
    EXPECT_EQ(result, CompareSink::Result::different);
    EXPECT_EQ(at(json, "/only_a/0/time_s"), "60");
    EXPECT_EQ(at(json, "/only_a/0/type"), "16");
    options.max = 1;
    compare(all, {all.front()});
    EXPECT_EQ(result, CompareSink::Result::same);
    app.filterOptions.stations = {"7"};
    result = CompareSink::Result::none;
    compare(all, all);
    EXPECT_EQ(result, CompareSink::Result::none);
}

}    // namespace
