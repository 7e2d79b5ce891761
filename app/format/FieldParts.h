// Fields that play a part of their own.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// The fields that play a part of their own in views, by display name.
struct FieldParts {
    std::string station;
    std::string time;
    std::string satellite;
    std::string text;

    // How the time field counts: it starts again from 0 at `timeWrap`, and larger values are no
    // times.
    double secondsPerTimeUnit = 1;
    std::uint64_t timeWrap = 0;

    // What tells the system that a satellite belongs to: a field next to the satellite's whose
    // coded values name it, or else the kind of the message, by display name.
    std::vector<std::string> system{};
    std::map<std::string, std::string> systemOfKind{};
};
