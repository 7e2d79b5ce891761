#include "viewer/colours/KindColours.h"

#include "viewer/colours/Ground.h"

#include <cmath>

// Steps of the golden section go round the hues so that no two kinds are near each other.
QColor kindColour(std::size_t kind, const QPalette& palette)
{
    constexpr double goldenSection = 0.618033988749895;
    double whole = 0;
    const double hue = std::modf(static_cast<double>(kind) * goldenSection, &whole);
    return isDark(palette) ? QColor::fromHslF(static_cast<float>(hue), 0.5F, 0.25F)
                           : QColor::fromHslF(static_cast<float>(hue), 0.7F, 0.88F);
}

QColor troubleColour(const QPalette& palette)
{
    return isDark(palette) ? QColor(0xff, 0x8a, 0x80) : QColor(0xb0, 0x00, 0x20);
}
