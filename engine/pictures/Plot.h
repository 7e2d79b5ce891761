// Curves over time in one frame.
#pragma once

#include "pictures/Curve.h"
#include "pictures/Frame.h"

#include <optional>
#include <string>
#include <vector>

struct PlotCurve {
    const Curve* curve = nullptr;    // never null
    Pen pen{};
    std::string label{};    // at its end; empty for none
};

struct Plot {
    std::string title{};
    std::string note{};    // at the other end of the title's line, where there is room
    std::string unit{};    // above the axis
    const TimeScale* times = nullptr;
    Range values{};    // of the axis
    bool hasTimeTitle = false;
    bool showsBreaks = false;    // ticks at the upper edge where curves were broken
    std::vector<PlotCurve> curves{};
};

// Everything, within the box.
void drawPlot(Canvas& canvas, const Box& box, const Plot& plot);
