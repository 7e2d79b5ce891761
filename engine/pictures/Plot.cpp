#include "pictures/Plot.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double valuesRoom = 44;
constexpr double breakHeight = 5;

class PlotDrawing {
public:
    PlotDrawing(Canvas& target, const Box& whole, const Plot& what)
        : canvas(target),
          plot(what), frame{whole.left + valuesRoom, whole.top + titleHeight,
                            whole.width - valuesRoom - rightRoom - labelRoom(),
                            whole.height - titleHeight -
                                (what.hasTimeTitle ? timeAxisHeight : timeTicksHeight)},
          box(whole)
    {
    }

    void draw()
    {
        drawHead();
        drawTimeAxis(canvas, frame, *plot.times, plot.hasTimeTitle);
        drawValueAxis(canvas, frame, plot.values);
        canvas.beginClip(frame);
        for (const PlotCurve& curve : plot.curves) {
            drawCurve(curve);
        }
        canvas.endClip();
        drawFrame(canvas, frame);
        drawLabels();
    }

private:
    double labelRoom() const
    {
        double room = 0;
        for (const PlotCurve& curve : plot.curves) {
            room = std::max(room, curve.label.empty() ? 0 : canvas.widthOf(curve.label, 10) + 4);
        }
        return room;
    }

    double yOf(double value) const
    {
        return frame.bottom() - frame.height * plot.values.share(value);
    }
    Point at(const Point& point) const { return {xOf(frame, *plot.times, point.x), yOf(point.y)}; }

    // The unit stands above the axis, then the title, and the note at the other end.
    void drawHead()
    {
        const double y = box.top + 14;
        canvas.text({frame.left - 6, y}, plot.unit,
                    {.ink = {Role::faint}, .size = 10, .anchor = Anchor::end});
        const std::string title = fitting(canvas, plot.title, 12, frame.width);
        canvas.text({frame.left, y}, title, {.size = 12, .isBold = true});
        const double room = frame.width - canvas.widthOf(title, 13) - 8;
        if (canvas.widthOf(plot.note, 10) <= room) {
            canvas.text({frame.right(), y}, plot.note,
                        {.ink = {Role::faint}, .size = 10, .anchor = Anchor::end});
        }
    }

    // The line through a column: all its values where they are few, else the least and the
    // greatest.
    static void append(std::vector<Point>& line, const Curve::Bin& bin)
    {
        std::vector<Point> points{bin.least, bin.greatest, bin.last};
        if (bin.count <= 4) {
            points.push_back(bin.first);
        }
        std::sort(points.begin(), points.end(), [](const Point& a, const Point& b) {
            return a.x != b.x ? a.x < b.x : a.y < b.y;
        });
        points.erase(std::unique(points.begin(), points.end()), points.end());
        line.insert(line.end(), points.begin(), points.end());
    }

    void drawLine(const std::vector<Point>& line, const PlotCurve& curve)
    {
        if (line.empty()) {
            return;
        }
        std::vector<Point> pixels;
        for (const Point& point : line) {
            pixels.push_back(at(point));
        }
        if (pixels.size() == 1 || curve.curve->isScattered()) {
            canvas.dots(pixels, {.ink = curve.pen.ink, .width = curve.pen.width + 1.5});
        } else {
            canvas.polyline(pixels, curve.pen);
        }
    }

    void drawCurve(const PlotCurve& curve)
    {
        const auto columns =
            curve.curve->columns(plot.times->range, static_cast<std::size_t>(frame.width));
        std::vector<Point> line;
        std::vector<Bar> breaks;
        double end = 0;    // when the line ends so far
        for (const Curve::Bin& bin : columns) {
            if (bin.breaks > 0) {
                const double x = xOf(frame, *plot.times, bin.brokenAt);
                breaks.push_back({x, frame.top, frame.top + breakHeight});
            }
            if (bin.count == 0) {
                continue;
            }
            if (bin.isApart || bin.first.x - end > curve.curve->longestJoin()) {
                drawLine(line, curve);
                line.clear();
            }
            append(line, bin);
            end = bin.last.x;
        }
        drawLine(line, curve);
        if (plot.showsBreaks) {
            canvas.bars(breaks, {.ink = {Role::text}, .width = 2});
        }
    }

    // At the ends of the curves, none over another.
    void drawLabels()
    {
        std::vector<std::pair<double, const PlotCurve*>> ends;
        for (const PlotCurve& curve : plot.curves) {
            const auto columns = curve.curve->columns(plot.times->range, 1);
            if (!curve.label.empty() && !columns.empty()) {
                ends.emplace_back(yOf(columns.back().last.y), &curve);
            }
        }
        std::sort(ends.begin(), ends.end(),
                  [](const auto& a, const auto& b) { return a.first < b.first; });
        double free = frame.top;
        for (const auto& [y, curve] : ends) {
            const double place = std::max(y, free);
            canvas.text({frame.right() + 4, place + 3}, curve->label,
                        {.ink = curve->pen.ink, .size = 10});
            free = place + 11;
        }
    }

    Canvas& canvas;
    const Plot& plot;
    Box frame;
    Box box;
};

}    // namespace

void drawPlot(Canvas& canvas, const Box& box, const Plot& plot)
{
    PlotDrawing(canvas, box, plot).draw();
}
