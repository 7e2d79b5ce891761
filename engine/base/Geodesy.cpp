#include "base/Geodesy.h"

#include <GeographicLib/Geocentric.hpp>

#include <cmath>

using GeographicLib::Geocentric;

Geodetic geodeticOf(const Cartesian& position)
{
    Geodetic found;
    Geocentric::WGS84().Reverse(position[0], position[1], position[2], found.latitude,
                                found.longitude, found.height);
    return found;
}

Cartesian cartesianOf(const Geodetic& position)
{
    Cartesian found{};
    Geocentric::WGS84().Forward(position.latitude, position.longitude, position.height, found[0],
                                found[1], found[2]);
    return found;
}

double distanceBetween(const Cartesian& a, const Cartesian& b)
{
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}
