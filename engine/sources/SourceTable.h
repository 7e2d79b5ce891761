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

// What streams a caster has, or why that cannot be told.
struct CasterAnswer {
    std::vector<CasterStream> streams;
    std::string problem;    // empty also when the program is asked to end
};

std::vector<CasterStream> casterStreams(std::string_view table);
