#include "pictures/Lanes.h"

#include <algorithm>

namespace {

constexpr double laneHeight = 22;
constexpr double laneGap = 4;
constexpr double laneColumn = 2;    // pixels

class LanesDrawing {
public:
    LanesDrawing(Canvas& target, const Box& whole, const Lanes& what)
        : canvas(target), lanes(what),
          box(whole), frame{whole.left + labelRoomOf(target, what.lanes), whole.top + titleHeight,
                            whole.width - labelRoomOf(target, what.lanes) - rightRoom,
                            laneHeight * static_cast<double>(what.lanes.size())}
    {
    }

    void draw()
    {
        drawTitle(canvas, box, lanes.title);
        drawTimeAxis(canvas, frame, *lanes.times, true);
        double top = frame.top;
        for (const Lane& lane : lanes.lanes) {
            drawLane(lane, {frame.left, top, frame.width, laneHeight});
            top += laneHeight;
        }
        drawFrame(canvas, frame);
        drawLegend(canvas, {frame.left, frame.bottom() + timeAxisHeight + 4, frame.width, 0},
                   legend());
    }

    double height() const
    {
        return frame.bottom() + timeAxisHeight + 6 + heightOfLegend(canvas, legend(), frame.width);
    }

private:
    std::vector<LegendEntry> legend() const
    {
        std::vector<LegendEntry> entries;
        const bool hasTicks = std::any_of(lanes.lanes.begin(), lanes.lanes.end(),
                                          [&](const Lane& lane) { return isOfTicks(lane); });
        const bool hasBars = std::any_of(lanes.lanes.begin(), lanes.lanes.end(),
                                         [&](const Lane& lane) { return isOfBars(lane); });
        if (hasTicks) {
            entries.push_back({"one message", [](Canvas& on, const Box& sign) {
                                   on.line({sign.left + 11, sign.top},
                                           {sign.left + 11, sign.bottom()},
                                           {.ink = {Role::series}, .width = 2});
                               }});
        }
        if (hasBars) {
            entries.push_back(
                {"so many messages that they stand together: the higher, the more", drawBarsSign});
        }
        if (has(&Lane::gaps)) {
            entries.push_back(
                {"longer without message than usual", [](Canvas& on, const Box& sign) {
                     drawGap(on, sign.left, sign.right(), sign.top + 6);
                 }});
        }
        if (has(&Lane::losses)) {
            entries.push_back(
                {"messages missing by their numbers",
                 [](Canvas& on, const Box& sign) { drawLoss(on, sign.left + 11, sign.bottom()); }});
        }
        if (std::any_of(lanes.lanes.begin(), lanes.lanes.end(), hasFaulty)) {
            entries.push_back(
                {"damaged, or content that does not fit", [](Canvas& on, const Box& sign) {
                     on.line({sign.left + 11, sign.top}, {sign.left + 11, sign.bottom()},
                             {.ink = {Role::bad}, .width = 2});
                 }});
        }
        return entries;
    }

    static bool hasFaulty(const Lane& lane)
    {
        return lane.faulty != nullptr && lane.faulty->count() > 0;
    }

    template <class Member>
    bool has(Member Lane::*member) const
    {
        return std::any_of(lanes.lanes.begin(), lanes.lanes.end(),
                           [&](const Lane& lane) { return !(lane.*member).empty(); });
    }

    static void drawBarsSign(Canvas& on, const Box& sign)
    {
        const double heights[] = {5, 9, 12, 8};
        std::vector<Bar> bars;
        for (std::size_t i = 0; i < 4; ++i) {
            bars.push_back({sign.left + 6 + 3 * static_cast<double>(i), sign.bottom() - heights[i],
                            sign.bottom()});
        }
        on.bars(bars, {.ink = {Role::series}, .width = 3});
    }

    static void drawGap(Canvas& on, double from, double to, double y)
    {
        const double end = std::max(to, from + 2);
        on.line({from, y}, {end, y}, {.ink = {Role::bad}, .width = 2});
        const Bar ends[] = {{from, y - 4, y + 4}, {end, y - 4, y + 4}};
        on.bars(ends, {.ink = {Role::bad}});
    }

    static void drawLoss(Canvas& on, double x, double bottom)
    {
        const Point triangle[] = {
            {x - 4, bottom}, {x, bottom - 8}, {x + 4, bottom}, {x - 4, bottom}};
        on.polyline(triangle, {.ink = {Role::bad}, .width = 1.5});
    }

    // As narrow as can be seen; wider ones where otherwise one or two messages in a column would
    // look like much or little.
    std::vector<Density::Column> columnsOf(const Density& density) const
    {
        constexpr std::uint64_t fewMessages = 8;
        constexpr double wideColumn = 8;
        const auto wanted = [&](double width) {
            return static_cast<std::size_t>(frame.width / width);
        };
        const auto columns = density.columns(lanes.times->range, wanted(laneColumn));
        const std::uint64_t most = highest(columns);
        return most > 1 && most < fewMessages
                   ? density.columns(lanes.times->range, wanted(wideColumn))
                   : columns;
    }

    static std::uint64_t highest(const std::vector<Density::Column>& columns)
    {
        std::uint64_t most = 0;
        for (const Density::Column& column : columns) {
            most = std::max(most, column.bin.count);
        }
        return most;
    }

    bool isOfTicks(const Lane& lane) const
    {
        return lane.messages != nullptr && highest(columnsOf(*lane.messages)) == 1;
    }
    bool isOfBars(const Lane& lane) const
    {
        return lane.messages != nullptr && highest(columnsOf(*lane.messages)) > 1;
    }

    // A tick each where none covers another, else columns with the height of what is in them.
    void drawDensity(const Density& density, const Box& lane, const Ink& ink)
    {
        const auto columns = columnsOf(density);
        const auto most = static_cast<double>(highest(columns));
        const double room = lane.height - 2 * laneGap;
        const double width = columns.empty() ? 0
                                             : xOf(lane, *lanes.times, columns.front().width) -
                                                   xOf(lane, *lanes.times, 0);
        std::vector<Bar> bars;
        for (const Density::Column& column : columns) {
            const double middle = column.begin + column.width / 2;
            const double x = xOf(lane, *lanes.times, most > 1 ? middle : column.bin.first);
            const double height =
                std::max(1.5, room * static_cast<double>(column.bin.count) / most);
            bars.push_back({x, lane.bottom() - laneGap - height, lane.bottom() - laneGap});
        }
        canvas.beginClip({lane.left - 1, lane.top, lane.width + 2, lane.height});
        canvas.bars(bars, {.ink = ink, .width = most > 1 ? std::max(1.5, width) : 1.5});
        canvas.endClip();
    }

    void drawLane(const Lane& lane, const Box& place)
    {
        canvas.line({place.left, place.bottom()}, {place.right(), place.bottom()},
                    {.ink = {Role::grid}});
        drawLabel(canvas, place, lane.label);
        if (lane.messages != nullptr) {
            drawDensity(*lane.messages, place, {lane.role, 0});
        }
        if (hasFaulty(lane)) {
            drawDensity(*lane.faulty, place, {Role::bad});
        }
        for (const Stretch& gap : lane.gaps) {
            canvas.beginGroup("nothing from " + lanes.times->text(gap.from) + " to " +
                              lanes.times->text(gap.to));
            drawGap(canvas, xOf(place, *lanes.times, gap.from), xOf(place, *lanes.times, gap.to),
                    place.top + place.height / 2);
            canvas.endGroup();
        }
        for (const Mark& loss : lane.losses) {
            canvas.beginGroup(loss.text);
            drawLoss(canvas, xOf(place, *lanes.times, loss.at), place.bottom() - laneGap);
            canvas.endGroup();
        }
    }

    Canvas& canvas;
    const Lanes& lanes;
    Box box;
    Box frame;
};

}    // namespace

double heightOf(Canvas& canvas, const Lanes& lanes, double width)
{
    return LanesDrawing(canvas, {0, 0, width, 0}, lanes).height();
}

void drawLanes(Canvas& canvas, const Box& box, const Lanes& lanes)
{
    LanesDrawing(canvas, box, lanes).draw();
}
