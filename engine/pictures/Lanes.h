// What came when, a lane for each sort of it.
#pragma once

#include "pictures/Density.h"
#include "pictures/Frame.h"
#include "pictures/Legend.h"

#include <string>
#include <vector>

// Times from one to another.
struct Stretch {
    double from = 0;
    double to = 0;
};

// Something at a time, and what it is.
struct Mark {
    double at = 0;
    std::string text;
};

struct Lane {
    std::string label;
    const Density* messages = nullptr;    // null: none
    const Density* faulty = nullptr;      // null: none
    std::vector<Stretch> gaps{};
    std::vector<Mark> losses{};
    Role role = Role::series;    // of the messages
};

struct Lanes {
    std::string title;
    const TimeScale* times = nullptr;
    std::vector<Lane> lanes{};
};

// The height of the picture in so much width.
double heightOf(Canvas& canvas, const Lanes& lanes, double width);
void drawLanes(Canvas& canvas, const Box& box, const Lanes& lanes);
