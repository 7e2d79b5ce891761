// Positions on the earth, on the ellipsoid of WGS 84.
#pragma once

#include <array>

// X, Y and Z in metres, earth-centred and earth-fixed.
using Cartesian = std::array<double, 3>;

struct Geodetic {
    double latitude = 0;     // degrees, north
    double longitude = 0;    // degrees, east
    double height = 0;       // metres above the ellipsoid
};

inline constexpr const char* ellipsoidName = "WGS 84";

Geodetic geodeticOf(const Cartesian& position);
Cartesian cartesianOf(const Geodetic& position);

// Straight through the earth, in metres.
double distanceBetween(const Cartesian& a, const Cartesian& b);
