// What pictures over time have in common: the frame and the axis of time below it.
#pragma once

#include "pictures/Axis.h"
#include "pictures/Canvas.h"

#include <algorithm>
#include <string>
#include <string_view>

// The room below a frame that ticks of time and the title of the axis take.
inline constexpr double timeAxisHeight = 36;
inline constexpr double timeTicksHeight = 18;

// The room above a frame that the title of a picture takes.
inline constexpr double titleHeight = 22;
// The room on the right, for half of the last label of an axis.
inline constexpr double rightRoom = 12;

// Where a time stands in a frame.
inline double xOf(const Box& frame, const TimeScale& times, double seconds)
{
    return frame.left + frame.width * times.range.share(seconds);
}

// Lines of the grid through the frame, ticks with their times below it and, where there is room for
// it, what the times are.
void drawTimeAxis(Canvas& canvas, const Box& frame, const TimeScale& times, bool hasTitle);

// Lines of the grid with what they stand for on their left, "10 %" where the unit is " %".
void drawValueAxis(Canvas& canvas, const Box& frame, const Range& values,
                   std::string_view unit = {});

void drawFrame(Canvas& canvas, const Box& box);

void drawTitle(Canvas& canvas, const Box& box, std::string_view title);

// The room that names at the left of rows take, of which each is a `label`.
template <class Rows>
double labelRoomOf(const Canvas& canvas, const Rows& rows);

// The name of a row, at its left.
void drawLabel(Canvas& canvas, const Box& row, std::string_view label);

// As much of a text as the width has room for, with "..." where that is not all.
std::string fitting(const Canvas& canvas, std::string_view text, double size, double width);

inline constexpr double mostLabelWidth = 240;
inline constexpr double labelSize = 11;

template <class Rows>
double labelRoomOf(const Canvas& canvas, const Rows& rows)
{
    double width = 30;
    for (const auto& row : rows) {
        width = std::max(width, canvas.widthOf(row.label, labelSize));
    }
    return std::min(width, mostLabelWidth) + 10;
}
