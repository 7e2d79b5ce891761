// What streams a caster has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// A line "STR;..." of its table, as it stands there.
struct CasterStream {
    std::string mountpoint;
    std::string place;
    std::string format;
    std::string details;
    std::string systems;
    std::string latitude;
    std::string longitude;
    std::string authentication;    // "N" for none, "B" for user and password
    std::string fee;               // "N" or "Y"

    // Whether its format is that of the messages that this program is for.
    bool isReadable() const;
};

std::vector<CasterStream> casterStreams(std::string_view table);
