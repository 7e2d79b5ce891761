// Shares of equal stretches of something, as columns.
#pragma once

#include "pictures/Axis.h"
#include "pictures/Canvas.h"

#include <string>
#include <vector>

struct Shares {
    std::string title{};
    std::string axisTitle{};         // of what runs from left to right
    std::vector<double> shares{};    // from 0 to 1, of each stretch; below 0 where there is nothing
    std::vector<Tick> ticks{};       // with the whole from 0 to 1
};

void drawShares(Canvas& canvas, const Box& box, const Shares& shares);
