#include "pictures/Bands.h"

#include <algorithm>

namespace {

constexpr double bandHeight = 18;
constexpr double bandSpace = 2;

Box frameOf(const Canvas& canvas, const Box& box, const Bands& bands)
{
    const double left = labelRoomOf(canvas, bands.bands);
    return {box.left + left, box.top + titleHeight, box.width - left - rightRoom,
            bandHeight * static_cast<double>(bands.bands.size())};
}

void drawBand(Canvas& canvas, const Box& place, const Band& band, const TimeScale& times)
{
    const double room = place.height - 2 * bandSpace;
    for (const Span& span : band.spans) {
        const double left = xOf(place, times, span.time.from);
        const double width = std::max(1.0, xOf(place, times, span.time.to) - left);
        const double height = room * span.height;
        canvas.rectangle({left, place.bottom() - bandSpace - height, width, height}, span.ink);
        // Beneath the band's own colour a text would be hard to read.
        if (!span.text.empty() && canvas.widthOf(span.text, 10) + 8 < width) {
            canvas.text({left + 4, place.bottom() - 5 - height}, span.text, {.size = 10});
        }
    }
    std::vector<Bar> marks;
    for (const double at : band.marks) {
        const double x = xOf(place, times, at);
        marks.push_back({x, place.top + 1, place.bottom() - 1});
    }
    canvas.bars(marks, {.ink = {Role::text}, .width = 2});
}

}    // namespace

double heightOf(const Canvas& canvas, const Bands& bands, double width)
{
    const Box frame = frameOf(canvas, {0, 0, width, 0}, bands);
    return titleHeight + frame.height + timeAxisHeight + 6 +
           heightOfLegend(canvas, bands.legend, frame.width);
}

void drawBands(Canvas& canvas, const Box& box, const Bands& bands)
{
    drawTitle(canvas, box, bands.title);
    const Box frame = frameOf(canvas, box, bands);
    drawTimeAxis(canvas, frame, *bands.times, true);
    Box place{frame.left, frame.top, frame.width, bandHeight};
    for (const Band& band : bands.bands) {
        canvas.line({place.left, place.bottom()}, {place.right(), place.bottom()},
                    {.ink = {Role::grid}});
        drawLabel(canvas, place, band.label);
        drawBand(canvas, place, band, *bands.times);
        place.top += bandHeight;
    }
    drawFrame(canvas, frame);
    drawLegend(canvas, {frame.left, frame.bottom() + timeAxisHeight + 4, frame.width, 0},
               bands.legend);
}
