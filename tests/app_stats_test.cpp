#include "commands/stats/StatsJson.h"
#include "commands/stats/StatsTable.h"
#include "support/AppSession.h"
#include "support/MessageHelpers.h"

#include <rapidjson/document.h>

namespace {

using Packed = AppSession::Packed;

struct Header {
    unsigned station;
    unsigned time;
};

// A message of zeros but for its header and what is given.
Packed message(unsigned type, Header header, Packed payload = {})
{
    Packed bytes = packed(type, static_cast<unsigned>(payload.size() / 3), payload);
    bytes[1] = static_cast<std::uint8_t>(type << 2 | header.station >> 8);
    bytes[2] = static_cast<std::uint8_t>(header.station);
    bytes[3] = static_cast<std::uint8_t>(header.time >> 5);
    bytes[4] = static_cast<std::uint8_t>(header.time << 3);
    return bytes;
}

// Corrections for satellites 1 and, as 0 says, 32.
Packed corrections(unsigned type, Header header)
{
    return message(type, header, {0x01, 0, 0, 0, 0, 0x00, 0, 0, 0, 0, 0xAA, 0xAA});
}

// Phases of satellites 2 of the first system and 7 of the second.
Packed phases(Header header)
{
    return message(18, header, {0, 0, 0, 0x02, 0, 0, 0, 0, 0, 0x27, 0, 0, 0, 0, 0});
}

Packed text(Header header, const char (&nine)[10])
{
    return message(16, header, Packed(nine, nine + 9));
}

class StatsTest : public testing::Test {
protected:
    template <class View>
    std::string run(const std::vector<std::string>& names)
    {
        return app.run(
            names, [&](Output& output) { return std::make_unique<View>(output, app.kinds({})); });
    }

    // One damaged message of type 1 (at byte 160), one of an unknown type, one that is decoded but
    // not reported, one with content that does not fit; text before them and half a message behind.
    void writeCapture()
    {
        std::vector<Packed> messages;
        for (unsigned i = 0; i < 5; ++i) {
            messages.push_back(corrections(1, {5, (5998 + i) % 6000}));
        }
        messages.push_back(corrections(31, {700, 10}));
        messages.push_back(phases({5, 20}));
        messages.push_back(text({5, 30}, "HELLO\0\0\0\0"));
        messages.push_back(text({5, 130}, "HELLO\0abc"));
        messages.push_back(text({5, 80}, "\x1B\xE9\"abcdef"));
        messages.push_back(message(14, {5, 40}, {0, 0, 0}));
        messages.push_back(message(38, {5, 40}, Packed(93)));
        messages.push_back(message(16, {5, 40}, Packed(93)));
        messages.push_back(corrections(1, {5, 7000}));
        Packed stream = AppSession::streamOf(messages);
        stream[2 * 30 + 12] ^= 0x01;    // in the third message
        stream.insert(stream.begin(), {'#', ' ', '1', '\n'});
        const Packed cut(stream.begin() + 4, stream.begin() + 24);
        stream.insert(stream.end(), cut.begin(), cut.end());
        app.writeFile("capture", stream);
        size = stream.size();
    }

    AppSession app;
    std::size_t size = 0;
};

const char* const captureTable =
    R"(            10 messages
             1 decoded, but of kinds that are not reported
             1 of unknown type
             1 with content that does not fit their type
             0 shorter than they say
             1 damaged
             1 truncated
           689 bytes read
            54 bytes skipped

Type  Message                        Station  System     Count   First    Last   Seconds  Per second
   1  Differential GPS Corrections         5  GPS            5  3598.8     1.2       2.4       1.250
  16  GPS Special Message                  5  GPS            3    18.0    48.0      30.0       0.067
  18  RTK Uncorrected Carrier Phases       5  GPS            1    12.0    12.0       0.0
  31  Differential GLONASS Correc...     700  GLONASS        1     6.0     6.0       0.0
First and Last are seconds of the hour, in the time of GPS for GPS, UTC for GLONASS.

Satellites and how often they were seen
   1  GPS       G01: 5  G32: 5
  18  GPS       G02: 1
  18  GLONASS   R07: 1
  31  GLONASS   R01: 1  R32: 1

Text messages
         2  "HELLO"
         1  "\x1Bé"abcdef"

Types that are decoded but not reported
         1  type 38

Unknown types
         1  type 14

Events
         1  RTCM2: Message type 14 unknown to PC software
         1  RTCM2: RTCM2_ERR_MESSAGE_TYPE_16_MESSAGE_INT_BUFFER_OVERFLOW
)";

TEST_F(StatsTest, TableOfACaptureWithDamage)
{
    writeCapture();
    EXPECT_EQ(run<StatsTable>({"capture"}),
              app.pathOf("capture") + " (form: stream)\n" + captureTable);
}

TEST_F(StatsTest, JsonOfSeveralInputsAddsUp)
{
    writeCapture();
    app.writeFile("empty", {});
    rapidjson::Document document;
    document.Parse(run<StatsJson>({"capture", "empty", "capture"}).c_str());
    ASSERT_FALSE(document.HasParseError());
    const auto& inputs = document["inputs"];
    ASSERT_EQ(inputs.Size(), 3U);
    EXPECT_EQ(inputs[0]["input"].GetString(), app.pathOf("capture"));
    EXPECT_STREQ(inputs[0]["form"].GetString(), "stream");
    EXPECT_EQ(inputs[1]["messages"].GetUint(), 0U);
    EXPECT_EQ(inputs[1]["kinds"].Size(), 0U);
    EXPECT_EQ(inputs[2]["bytes_read"].GetUint64(), size);
    EXPECT_TRUE(inputs[2]["kinds"] == inputs[0]["kinds"]);

    const auto& total = document["total"];
    for (const char* key : {"messages", "unreported", "unknown_type", "misfit", "damaged",
                            "truncated", "bytes_read", "bytes_skipped"}) {
        EXPECT_EQ(total[key].GetUint64(), 2 * inputs[0][key].GetUint64()) << key;
        EXPECT_GT(total[key].GetUint64(), 0U) << key;
    }
    rapidjson::Document corrections;
    corrections.Parse(R"({"kind":"Message Type 1","type":1,"text":"Differential GPS Corrections",
        "count":10,"stations":[{"station":5,"system":"GPS","count":10,"first":5998,
        "last":2,"first_seconds":3598.8,"last_seconds":1.2,"seconds":4.8,"per_second":1.25}],
        "satellites":[{"system":"GPS","satellite":1,"name":"G01","count":10},
        {"system":"GPS","satellite":0,"name":"G32","count":10}],"other_satellites":0})");
    EXPECT_TRUE(total["kinds"][0] == corrections);
    EXPECT_STREQ(total["texts"][1]["text"].GetString(), "\x1B\xC3\xA9\"abcdef");
    EXPECT_EQ(total["unknown_types"][0]["type"].GetInt(), 14);
    EXPECT_EQ(total["unreported_types"][0]["count"].GetUint(), 2U);
    EXPECT_EQ(total["events"].Size(), 2U);
}

// GLONASS messages count in UTC, here 15 seconds behind GPS time, with the hour's end between them.
TEST_F(StatsTest, EachSystemHasItsOwnClock)
{
    std::vector<Packed> messages;
    for (unsigned i = 0; i < 4; ++i) {
        messages.push_back(message(18, {5, (10 + 2 * i)}, {0, 0, 0, 0x02, 0, 0, 0, 0, 0}));
        messages.push_back(message(18, {5, (5985 + 2 * i)}, {0, 0, 0, 0x22, 0, 0, 0, 0, 0}));
    }
    app.writeFile("mixed", AppSession::streamOf(messages));
    const std::string table = run<StatsTable>({"mixed"});
    for (const char* row : {"5  GPS            4     6.0     9.6       3.6       0.833\n",
                            "5  GLONASS        4  3591.0  3594.6       3.6       0.833\n"}) {
        EXPECT_NE(table.find(row), std::string::npos) << table;
    }
}

TEST(StationStatsTest, TimeRunsThroughWrapsAndDisorder)
{
    struct {
        std::vector<std::uint64_t> times;
        std::int64_t elapsed;
        std::uint64_t steps;
    } const rows[] = {
        {{}, 0, 0},
        {{5999}, 0, 0},
        {{5998, 1, 2}, 4, 2},
        {{10, 5, 12}, 2, 2},
        {{2, 5999, 4}, 2, 2},
        {{100, 6000, 8191, 101}, 1, 1},    // larger values are no times
        {{0, 2000, 4000, 0, 2000}, 8000, 4},
    };
    for (const auto& row : rows) {
        StationStats station;
        for (const std::uint64_t time : row.times) {
            station.addTime(time, 6000);
        }
        EXPECT_EQ(station.elapsed, row.elapsed);
        EXPECT_EQ(station.steps, row.steps);
    }
}

TEST(StatsLimitsTest, WhatThereIsNoRoomForIsCountedTogether)
{
    Counts<int, 2> counts;
    for (const int key : {1, 2, 3, 2, 4, 1, 1}) {
        ++counts.of(key);
    }
    using Entries = std::vector<std::pair<int, std::uint64_t>>;
    EXPECT_EQ(counts.sorted(), (Entries{{1, 3}, {2, 2}}));
    EXPECT_EQ(counts.others, 2U);
    Counts<int, 2> sum;
    ++sum.of(5);
    ++sum.of(2);
    sum += counts;
    EXPECT_EQ(sum.sorted(), (Entries{{2, 3}, {5, 1}}));
    EXPECT_EQ(sum.others, 5U);

    SatelliteCounts satellites;
    for (const SatelliteCounts::Seen& seen :
         {SatelliteCounts::Seen{0, 255, 1}, {3, 0, 1}, {4, 0, 1}, {0, 256, 1}}) {
        satellites.add(seen);
    }
    EXPECT_EQ(satellites.sorted().size(), 2U);
    EXPECT_EQ(satellites.others(), 2U);
}

}    // namespace
