// What the stream should be, as the options of a check say it.
#pragma once

#include "base/Geodesy.h"
#include "format/FormatModel.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

// A type that has to come.
struct ExpectedType {
    unsigned type = 0;
    std::string name;      // "type 1"
    double seconds = 0;    // from one message to the next
};

struct Wanted {
    std::vector<ExpectedType> types{};
    std::optional<Cartesian> position{};
    double tolerance = 1;                // metres
    std::vector<unsigned> stations{};    // the only ones that are looked at
    std::vector<unsigned> senders{};     // likewise, by the MMSI of what came by AIS
    bool times = false;                  // places with the time at which they were received
};

// Wrong texts; `text` is for people.
struct WantedError {
    std::string text;
};

// "1:0.5s" or "3:1min": a type by number, or a kind by name, and a time. Throws WantedError.
ExpectedType expectedType(const FormatModel& model, const std::string& text);

// "x,y,z" in metres, or "latitude,longitude,height" in degrees and metres. Throws WantedError.
Cartesian positionOf(const std::string& text);
