#include "pictures/Frame.h"

#include <algorithm>
#include <array>

namespace {

constexpr double tickSize = 10;
constexpr double pixelsPerTime = 44;
constexpr double pixelsPerValue = 17;

}    // namespace

void drawTimeAxis(Canvas& canvas, const Box& frame, const TimeScale& times, bool hasTitle)
{
    const auto most = static_cast<std::size_t>(std::max(2.0, frame.width / pixelsPerTime));
    double free = frame.left - tickSize;    // where the last label ends
    for (const Tick& tick : times.ticks(most)) {
        const double x = xOf(frame, times, tick.value);
        canvas.line({x, frame.top}, {x, frame.bottom() + 4}, {.ink = {Role::grid}});
        const double half = canvas.widthOf(tick.label, tickSize) / 2;
        if (x - half > free) {
            canvas.text({x, frame.bottom() + 15}, tick.label,
                        {.ink = {Role::faint}, .size = tickSize, .anchor = Anchor::middle});
            free = x + half + 4;
        }
    }
    if (hasTitle) {
        canvas.text({frame.left + frame.width / 2, frame.bottom() + 31}, times.title(),
                    {.ink = {Role::faint}, .anchor = Anchor::middle});
    }
}

void drawValueAxis(Canvas& canvas, const Box& frame, const Range& values, std::string_view unit)
{
    const auto most = static_cast<std::size_t>(std::max(2.0, frame.height / pixelsPerValue));
    for (const Tick& tick : numberTicks(values, most)) {
        const double y = frame.bottom() - frame.height * values.share(tick.value);
        canvas.line({frame.left - 4, y}, {frame.right(), y}, {.ink = {Role::grid}});
        canvas.text({frame.left - 6, y + 3.5}, tick.label + std::string(unit),
                    {.ink = {Role::faint}, .size = tickSize, .anchor = Anchor::end});
    }
}

void drawTitle(Canvas& canvas, const Box& box, std::string_view title)
{
    canvas.text({box.left + 2, box.top + 14}, fitting(canvas, title, 13, box.width),
                {.size = 13, .isBold = true});
}

void drawLabel(Canvas& canvas, const Box& row, std::string_view label)
{
    canvas.text({row.left - 8, row.top + row.height / 2 + 4},
                fitting(canvas, label, labelSize, mostLabelWidth),
                {.size = labelSize, .anchor = Anchor::end});
}

void drawFrame(Canvas& canvas, const Box& box)
{
    const std::array corners{Point{box.left, box.top}, Point{box.right(), box.top},
                             Point{box.right(), box.bottom()}, Point{box.left, box.bottom()},
                             Point{box.left, box.top}};
    canvas.polyline(corners, {.ink = {Role::frame}});
}

std::string fitting(const Canvas& canvas, std::string_view text, double size, double width)
{
    if (canvas.widthOf(text, size) <= width) {
        return std::string(text);
    }
    std::string cut(text);
    const auto endsInside = [](const std::string& part) {
        return !part.empty() && (static_cast<unsigned char>(part.back()) & 0x80U) != 0;
    };
    while (!cut.empty() && canvas.widthOf(cut + "...", size) > width) {
        cut.pop_back();
    }
    while (endsInside(cut)) {
        cut.pop_back();
    }
    return cut + "...";
}
