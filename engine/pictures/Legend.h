// What colours and shapes of a picture stand for.
#pragma once

#include "pictures/Canvas.h"

#include <functional>
#include <string>
#include <vector>

struct LegendEntry {
    std::string text;
    std::function<void(Canvas&, const Box&)> draw;    // the sign, into its box
};

// The height that a legend takes in so much width.
double heightOfLegend(const Canvas& canvas, const std::vector<LegendEntry>& entries, double width);
// Entry by entry, in as many lines as they need.
void drawLegend(Canvas& canvas, const Box& box, const std::vector<LegendEntry>& entries);
