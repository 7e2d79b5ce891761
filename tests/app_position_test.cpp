#include "base/Geodesy.h"
#include "commands/position/PositionSink.h"
#include "support/AppSession.h"
#include "support/MessageHelpers.h"

#include <rapidjson/document.h>

namespace {

using Packed = AppSession::Packed;

TEST(Geodesy, LeadsThereAndBack)
{
    const struct {
        Geodetic geodetic;
        Cartesian cartesian;
    } places[] = {
        {{0, 0, 0}, {6378137, 0, 0}},
        {{90, 0, 10}, {0, 0, 6356762.314245179}},
        {{-45, 90, 0}, {0, 4517590.878849, -4487348.408866}},
        {{54.1834, 7.8912, 61.37}, {3705294.333899, 513572.039117, 5148765.986554}},
    };
    for (const auto& place : places) {
        EXPECT_LT(distanceBetween(cartesianOf(place.geodetic), place.cartesian), 1e-5);
        const Geodetic back = geodeticOf(place.cartesian);
        EXPECT_NEAR(back.latitude, place.geodetic.latitude, 1e-10);
        EXPECT_NEAR(back.longitude, place.geodetic.longitude, 1e-10);
        EXPECT_NEAR(back.height, place.geodetic.height, 1e-5);
    }
}

void append(Packed& bytes, std::uint32_t word)
{
    for (unsigned shift = 32; shift > 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(word >> (shift - 8)));
    }
}

// Of station 5, at 2700 s of the hour.
Packed message(unsigned type, const Packed& payload)
{
    return packed(type, static_cast<unsigned>(payload.size() / 3), payload);
}

Packed reference(unsigned type, std::int32_t x, std::int32_t y, std::int32_t z)
{
    Packed payload;
    for (const std::int32_t centimetres : {x, y, z}) {
        append(payload, static_cast<std::uint32_t>(centimetres));
    }
    return message(type, payload);
}

// Distances in units of 1/256 cm and, of system 0 or 1, an antenna 2.5 mm high.
Packed distances(std::uint8_t x, std::uint8_t y, std::uint8_t z, std::uint8_t system)
{
    return message(22, {x, y, z, static_cast<std::uint8_t>(system << 5), 0, 64});
}

// What is told of a point, in short: its positions as "number x y z antenna moved".
std::string shortText(const rapidjson::Value& point)
{
    const auto text = [](const rapidjson::Value& object, const char* name) {
        char digits[40] = " -";
        if (object.HasMember(name)) {
            std::snprintf(digits, sizeof digits, " %.15g", object[name].GetDouble());
        }
        return std::string(digits);
    };
    std::string all = std::string(point["system"].GetString()) + " " + point["point"].GetString() +
                      text(point, "told");
    const auto add = [&](const rapidjson::Value& telling) {
        all += ":";
        for (const char* name : {"number", "x", "y", "z", "antenna_height", "moved"}) {
            all += text(telling, name);
        }
    };
    for (const auto& position : point["positions"].GetArray()) {
        add(position);
    }
    if (point.HasMember("distance")) {
        all += "?";
        add(point["distance"]);
    }
    return all;
}

TEST(Position, FollowsEveryPointOfEverySystem)
{
    AppSession app;
    Positions positions;
    const std::string json = app.run(
        {
            distances(1, 0, 0xFF, 0),    // before its reference point
            reference(3, 100000000, 200000000, 300000000),
            reference(32, 7, 8, 9),
            distances(1, 0, 0xFF, 0),
            distances(1, 0, 0xFF, 0),
            reference(3, 100000000, 200000300, 299999600),
            distances(2, 0, 0, 0),
            message(22, {5, 6, 7}),    // which names no system
            reference(32, 7, 8, 9),
        },
        [&](Output& output) {
            return std::make_unique<PositionSink>(output, positions, positionJson);
        });
    const std::vector<std::string> wanted = {
        "GLONASS Reference point 2: 3 0.07 0.08 0.09 - 0",
        "GPS Reference point 2: 2 1000000 2000000 3000000 - 0: 6 1000000 2000003 2999996 - 5",
        "GPS L1 phase centre 5: 1 1000000.00003906 2000000 2999999.99996094 0.0025 0"
        ": 7 1000000.00007813 2000003 2999996 0.0025 5"
        ": 8 1000000.00019531 2000003.00023438 2999996.00027344 0.0025 0.0004",
    };
    rapidjson::Document document;
    document.Parse(json.c_str());
    std::vector<std::string> told;
    for (const auto& point : document["points"].GetArray()) {
        told.push_back(shortText(point));
    }
    EXPECT_EQ(told, wanted);
    EXPECT_NE(json.find("\"x\": 1000000.0000390625"), json.npos);
    EXPECT_NE(json.find("\"time_s\": 2700"), json.npos);
    EXPECT_NE(json.find("\"frame\": \"PZ-90\""), json.npos);
}

TEST(Position, InventsNoPointToMeasureFrom)
{
    Positions positions;
    AppSession().run({message(22, {5, 6, 7})}, [&](Output& output) {
        return std::make_unique<PositionSink>(output, positions, positionTable);
    });
    EXPECT_NE(positionTable(positions).find("from the point 'Reference point', which no message"),
              std::string::npos);
}

}    // namespace
