#include "commands/check/CheckSink.h"
#include "forms/InputForm.h"
#include "support/AppSession.h"
#include "support/MessageHelpers.h"

#include <rapidjson/document.h>

namespace {

using Packed = AppSession::Packed;

// A station's messages of one system, with the counter that they share and what they hold.
struct Part {
    unsigned type;
    unsigned station;
    unsigned counter = 0;
    unsigned late = 0;    // its clock against the others', in units
    Packed payload{};
};

const Packed gpsPhase{0, 0, 0, 0x02, 0, 0, 0, 0, 0};
const Packed glonassPhase{0, 0, 0, 0x22, 0, 0, 0, 0, 0};
const Packed noPhase{0, 0, 0};

Packed message(const Part& part, unsigned time, unsigned sequence, unsigned health = 0)
{
    Packed bytes = packed(part.type, static_cast<unsigned>(part.payload.size() / 3), part.payload);
    time = (time + 6000 - part.late) % 6000;
    bytes[1] = static_cast<std::uint8_t>(part.type << 2 | part.station >> 8);
    bytes[2] = static_cast<std::uint8_t>(part.station);
    bytes[3] = static_cast<std::uint8_t>(time >> 5);
    bytes[4] = static_cast<std::uint8_t>(time << 3 | sequence % 8);
    bytes[5] = static_cast<std::uint8_t>(bytes[5] | health);
    return bytes;
}

// The parts by turns, a message each every two units, from a minute before the hour's end.
std::vector<Packed> stream(const std::vector<Part>& parts, unsigned rounds, unsigned step = 1)
{
    std::vector<Packed> messages;
    std::map<unsigned, unsigned> counters{{1, 5}};
    for (unsigned round = 0; round < rounds; ++round) {
        for (const Part& part : parts) {
            messages.push_back(message(part, (5900 + 2 * round) % 6000, counters[part.counter]));
            counters[part.counter] += step;
        }
    }
    return messages;
}

std::vector<Packed> without(std::vector<Packed> messages, std::size_t at, std::size_t count)
{
    const auto first = messages.begin() + static_cast<std::ptrdiff_t>(at);
    messages.erase(first, first + static_cast<std::ptrdiff_t>(count));
    return messages;
}

std::vector<Packed> with(std::vector<Packed> messages, std::size_t at, const Packed& another)
{
    messages.insert(messages.begin() + static_cast<std::ptrdiff_t>(at), another);
    return messages;
}

class CheckTest : public testing::Test {
protected:
    const rapidjson::Value& check(const Packed& bytes, const Wanted& wanted = {})
    {
        app.writeFile("input", bytes);
        CheckReport report{.isJson = true};
        document.Parse(app.run(std::vector<std::string>{"input"},
                               [&](Output& output) {
                                   return std::make_unique<CheckSink>(output, app.host.model,
                                                                      wanted, report);
                               })
                           .c_str());
        return document["inputs"][0];
    }

    static std::string textsOf(const rapidjson::Value& result)
    {
        std::string texts;
        for (const auto& problem : result["problems"].GetArray()) {
            texts += std::string(problem["severity"].GetString()) + ": " +
                     problem["text"].GetString() + "\n";
        }
        return texts;
    }

    AppSession app;
    rapidjson::Document document;
};

TEST_F(CheckTest, LossesAreFoundAndNoneIsInvented)
{
    const Part gps{1, 5};
    const auto one = stream({gps}, 80);
    const auto mixed = stream({{18, 5, 0, 0, gpsPhase}, {18, 5, 0, 25, glonassPhase}}, 40);
    const auto twoCounters = stream({{18, 5, 0, 0, gpsPhase}, {18, 5, 1, 25, glonassPhase}}, 40);
    const auto stations = stream({{1, 5, 0}, {1, 6, 1}}, 40);
    const auto oneForBoth = stream({{1, 5, 0}, {1, 6, 0}}, 40);
    const auto uncounted = stream({gps}, 80, 0);
    auto doubled = one;
    for (std::size_t i = one.size(); i-- > 0;) {
        doubled = with(doubled, i, one[i]);
    }
    auto late = one;
    std::swap(late[30], late[31]);
    struct {
        const char* what;
        std::vector<Packed> messages;
        unsigned lost;
        bool isExact = true;
        unsigned misplaced = 0;
        unsigned repeated = 0;
    } const rows[] = {
        {"through the hour's end", one, 0},
        {"one", without(one, 20, 1), 1},
        {"over the hour's end", without(one, 47, 6), 6},
        {"all numbers but one", without(one, 20, 7), 7},
        {"a round of the numbers", without(one, 20, 8), 8, false},
        {"over the hour's end and more than a round", without(one, 45, 19), 19, false},
        {"soon after the start", without(one, 2, 3), 3},
        {"right before the end", without(one, 77, 2), 2},
        {"every second one", stream({gps}, 80, 2), 79},
        {"sent twice", doubled, 0, true, 0, 80},
        {"in another order", late, 0},
        {"no numbers", uncounted, 0, false},
        {"no numbers, by the time", without(uncounted, 20, 10), 10, false},
        {"two systems, one counter", mixed, 0},
        {"of these", without(without(mixed, 50, 1), 20, 3), 4},
        {"more than two rounds of these", without(mixed, 20, 18), 18, false},
        {"two systems, two counters", twoCounters, 0},
        {"of these", without(without(twoCounters, 50, 1), 20, 3), 4},
        {"two stations", stations, 0},
        {"of these", without(without(stations, 50, 1), 20, 3), 4},
        {"two stations, one counter", oneForBoth, 0},
        {"of these", without(without(oneForBoth, 50, 1), 20, 3), 4},
        {"unknown types count", stream({gps, {14, 5, 0, 0, {0, 0, 0}}}, 40), 0},
        {"so do systems that are unknown",
         stream({{18, 5, 0, 25, glonassPhase}, {18, 5, 0, 25, noPhase}, gps}, 30), 0},
        {"of another time", with(one, 30, message(gps, 5000, 3)), 0, true, 1},
    };
    for (const auto& row : rows) {
        const auto& result = check(AppSession::streamOf(row.messages));
        EXPECT_EQ(result["lost"].GetUint(), row.lost) << row.what << "\n" << textsOf(result);
        EXPECT_EQ(result["lost_is_exact"].GetBool(), row.isExact) << row.what;
        EXPECT_EQ(result["misplaced"].GetUint(), row.misplaced) << row.what;
        EXPECT_EQ(result["repeated"].GetUint(), row.repeated) << row.what;
    }
}

TEST_F(CheckTest, DamageExplainsAGapOnce)
{
    const auto messages = without(stream({{1, 5, 0, 0, Packed(15)}}, 40), 21, 1);
    Packed bytes = AppSession::streamOf(messages);
    bytes[20 * bytes.size() / messages.size() + 20] ^= 0x01;
    const auto& result = check(bytes);
    EXPECT_EQ(result["damaged"].GetUint(), 1U);
    EXPECT_EQ(result["lost"].GetUint(), 1U);
    ASSERT_EQ(result["gaps"].Size(), 1U);
    EXPECT_EQ(result["gaps"][0]["missing"].GetUint(), 2U);
    EXPECT_EQ(result["gaps"][0]["damaged"].GetUint(), 1U);
    EXPECT_STREQ(result["verdict"].GetString(), "WARNING");
}

// On the equator, 6378136.32 m from the centre of the earth with 128 of these, or near it.
Packed point(std::uint8_t centimetres)
{
    return {0x26, 0x04, 0x43, centimetres, 0, 0, 0, 0, 0, 0, 0, 0};
}

// They number their messages by themselves, and one is at times heard much later.
TEST_F(CheckTest, SendersOfAisAreKeptApart)
{
    app.form = InputForm::aivdm;
    const auto writer = makeWriter(app.form);
    Packed sentences;
    for (unsigned i = 0; i < 20; ++i) {
        for (const bool isLate : {false, true}) {
            writer->setEnvelope({.sender = AisSender{.mmsi = isLate ? 2000723U : 2000417U}});
            const Part part{.type = 1, .station = 5, .late = isLate ? i % 2 * 14U : 0U};
            const unsigned missing = isLate && i > 9 ? 2 : 0;
            ASSERT_TRUE(
                writer->append(message(part, 3000 + 15 * i, i + 3 * isLate + missing), sentences));
        }
    }
    const rapidjson::Value& result = check(sentences);
    EXPECT_EQ(textsOf(result),
              "warning: station 5 of MMSI 2000723: 2 messages missing in 17.4 s\n");
    EXPECT_EQ(result["stations"].Size(), 2U);
}

TEST_F(CheckTest, WhatAStreamSaysAndHowOften)
{
    const Part gps{1, 5};
    auto one = stream({gps}, 80);
    auto sick = one;
    sick[30] = message(gps, 5960, 30, 6);
    auto broken = sick;
    broken[31] = message(gps, 5962, 31, 7);
    auto slower = one;
    for (unsigned i = 40; i < 80; ++i) {
        slower[i] = message(gps, (5980 + 8 * (i - 40)) % 6000, i);
    }
    auto moved = one;
    moved[10] = message({3, 5, 0, 0, point(128)}, 5920, 10);
    const auto still = moved;
    moved[60] = message({3, 5, 0, 0, point(130)}, 20, 60);
    const auto expect = [&](const char* text) {
        return Wanted{.types = {expectedType(app.host.model, text)}};
    };
    struct {
        std::vector<Packed> messages;
        Wanted wanted;
        const char* verdict;
        const char* problems;
    } const rows[] = {
        {one, {}, "OK", ""},
        {sick, {}, "WARNING", "warning: station 5: Transmission Not Monitored\n"},
        {broken, {}, "CRITICAL", "critical: station 5: Not Working\n"},
        {slower, {}, "WARNING", "type 1 now comes every 4.8 s instead of 1.2 s\n"},
        {moved, {}, "WARNING", "Reference point of Message Type 3 moved by 0.020 m\n"},
        {moved, {.position = positionOf("0,0,-0.68")}, "WARNING", "moved by 0.020 m\n"},
        {still, {.position = positionOf("6378136.32,0,1.01")}, "CRITICAL", "is 1.010 m from the"},
        {still, {.position = positionOf("6378136.32,0,1.01"), .tolerance = 2}, "OK", ""},
        {one, expect("1:0.9s"), "OK", ""},
        {one, expect("1:0.7s"), "WARNING", "type 1 comes every 1.2 s instead of every 0.7 s\n"},
        {one, expect("1:0.3s"), "CRITICAL", "type 1 comes every 1.2 s"},
        {one, expect("31:1min"), "CRITICAL", "critical: type 31 never came\n"},
        {one, expect("31:2min"), "OK", ""},
        {still, expect("3:5s"), "CRITICAL", "type 3 has not come for 82.8 s"},
        {one, {.stations = {6}}, "UNKNOWN", ""},
    };
    for (const auto& row : rows) {
        const auto& result = check(AppSession::streamOf(row.messages), row.wanted);
        EXPECT_STREQ(result["verdict"].GetString(), row.verdict) << row.problems;
        EXPECT_NE(textsOf(result).find(row.problems), std::string::npos) << textsOf(result);
        EXPECT_EQ(textsOf(result).empty(), *row.problems == '\0') << textsOf(result);
    }
    for (const char* text : {"1", "1:", "1:s", "1:0s", "1:-1s", "1:infs", "1:5", "x:1s", "64:1s"}) {
        EXPECT_THROW(expectedType(app.host.model, text), WantedError) << text;
    }
    for (const char* text : {"", "1,2", "1,2,3,4", "1,2,nan", "1,,3"}) {
        EXPECT_THROW(positionOf(text), WantedError) << text;
    }
}

TEST_F(CheckTest, SatellitesComeAndGoWithTheirData)
{
    // Satellite 1 all the time with one change of data; satellite 2 later, and not to the end.
    std::vector<Packed> messages;
    for (unsigned i = 0; i < 80; ++i) {
        const auto issue = static_cast<std::uint8_t>(i < 40 ? 7 : 8);
        const auto second = static_cast<std::uint8_t>(i < 30 || i > 50 ? 1 : 2);
        messages.push_back(message(
            {1, 5, 0, 0, {1, 0, 0, 0, issue, second, 0, 0, 0, issue, 0xAA, 0xAA}}, 2 * i, i));
    }
    const auto& result = check(AppSession::streamOf(messages));
    const auto& satellites = result["stations"][0]["satellites"];
    ASSERT_EQ(satellites.Size(), 2U);
    EXPECT_STREQ(satellites[0]["name"].GetString(), "G01");
    EXPECT_EQ(satellites[0]["issue_changes"].GetUint(), 1U);
    EXPECT_FALSE(satellites[0]["is_gone"].GetBool());
    EXPECT_EQ(satellites[1]["count"].GetUint(), 21U);
    EXPECT_DOUBLE_EQ(satellites[1]["first"].GetDouble(), 36.0);
    EXPECT_DOUBLE_EQ(satellites[1]["last_issue_change"].GetDouble(), 48.0);
    EXPECT_TRUE(satellites[1]["is_gone"].GetBool());
}

}    // namespace
