// What held from when to when, a band for each of several things.
#pragma once

#include "pictures/Frame.h"
#include "pictures/Lanes.h"
#include "pictures/Legend.h"

#include <string>
#include <vector>

struct Span {
    Stretch time;
    Ink ink{};
    double height = 1;     // share of the band's
    std::string text{};    // in it, where there is room
};

struct Band {
    std::string label;
    std::vector<Span> spans{};
    std::vector<double> marks{};    // times at which something changed
};

struct Bands {
    std::string title;
    const TimeScale* times = nullptr;
    std::vector<Band> bands{};
    std::vector<LegendEntry> legend{};
};

double heightOf(const Canvas& canvas, const Bands& bands, double width);
void drawBands(Canvas& canvas, const Box& box, const Bands& bands);
