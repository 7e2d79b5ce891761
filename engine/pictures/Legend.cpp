#include "pictures/Legend.h"

namespace {

constexpr double lineHeight = 18;
constexpr double signWidth = 22;
constexpr double textSize = 11;
constexpr double between = 18;

// Calls back with each entry and the box of its sign; the height of all.
template <class Function>
double eachEntry(const Canvas& canvas, const std::vector<LegendEntry>& entries, const Box& box,
                 Function function)
{
    double x = box.left;
    double y = box.top;
    for (const LegendEntry& entry : entries) {
        const double width = signWidth + 6 + canvas.widthOf(entry.text, textSize);
        if (x > box.left && x + width > box.right()) {
            x = box.left;
            y += lineHeight;
        }
        function(entry, Box{x, y + 3, signWidth, lineHeight - 6});
        x += width + between;
    }
    return entries.empty() ? 0 : y + lineHeight - box.top;
}

}    // namespace

double heightOfLegend(const Canvas& canvas, const std::vector<LegendEntry>& entries, double width)
{
    return eachEntry(canvas, entries, {0, 0, width, 0}, [](const auto&, const Box&) {});
}

void drawLegend(Canvas& canvas, const Box& box, const std::vector<LegendEntry>& entries)
{
    eachEntry(canvas, entries, box, [&](const LegendEntry& entry, const Box& sign) {
        entry.draw(canvas, sign);
        canvas.text({sign.right() + 6, sign.bottom() - 2}, entry.text,
                    {.ink = {Role::text}, .size = textSize});
    });
}
