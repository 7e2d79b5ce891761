// Thinning keeps what was there.
#include "pictures/Bands.h"
#include "pictures/Curve.h"
#include "pictures/Density.h"
#include "pictures/Lanes.h"
#include "pictures/Plot.h"
#include "pictures/SvgCanvas.h"

#include <gtest/gtest.h>

#include <QXmlStreamReader>

#include <random>

namespace {

// All columns of a range that holds everything, by what their points say themselves.
void expectHonest(const Curve& curve, const std::vector<Point>& all, const Range& range,
                  std::size_t columns)
{
    std::size_t next = 0;
    for (const Curve::Bin& bin : curve.columns(range, columns)) {
        ASSERT_LE(next + bin.count, all.size());
        const auto begin = all.begin() + static_cast<std::ptrdiff_t>(next);
        const auto end = begin + static_cast<std::ptrdiff_t>(bin.count);
        const auto [least, greatest] = std::minmax_element(
            begin, end, [](const Point& a, const Point& b) { return a.y < b.y; });
        EXPECT_EQ(bin.first, *begin);
        EXPECT_EQ(bin.last, *std::prev(end));
        EXPECT_EQ(bin.least.y, least->y);
        EXPECT_EQ(bin.greatest.y, greatest->y);
        next += bin.count;
    }
    EXPECT_EQ(next, all.size()) << "some values are in no column";
}

}    // namespace

TEST(CurveTest, EveryColumnHasItsExtremes)
{
    std::mt19937 random(7);
    std::normal_distribution<double> noise;
    std::exponential_distribution<double> pause(0.5);
    for (const std::size_t count : {1U, 2U, 500U, 40'000U}) {
        Curve curve(64);
        std::vector<Point> all;
        double x = -100;
        for (std::size_t i = 0; i < count; ++i) {
            x += pause(random);
            all.push_back({x, noise(random) + (i == count / 3 ? 1e4 : 0)});    // one spike
            curve.add(all.back().x, all.back().y);
        }
        EXPECT_EQ(curve.values(), count);
        const Range range{-100, x + 1};
        for (const std::size_t columns : {1U, 13U, 64U, 900U}) {
            EXPECT_LE(curve.columns(range, columns).size(), 64U);
            expectHonest(curve, all, range, columns);
        }
        EXPECT_GT(curve.valueRange().high, 5e3);
    }
}

TEST(CurveTest, BreaksAreKept)
{
    Curve curve(16);
    Density density;
    for (int i = 0; i < 1000; ++i) {
        if (i % 250 == 100) {
            curve.breakAt(i);
        }
        curve.add(i, 0);
        density.add(999 - i);    // whatever the order
    }
    std::uint32_t breaks = 0;
    for (const Curve::Bin& bin : curve.columns({0, 1000}, 500)) {
        breaks += bin.breaks;
    }
    EXPECT_EQ(breaks, 4U);
    std::uint64_t all = 0;
    for (const Density::Column& column : density.columns({0, 999}, 10)) {
        all += column.bin.count;
    }
    EXPECT_EQ(all, 1000U);
}

// Whatever is drawn and however it is called, a picture is well-formed, and nothing is left open.
TEST(SvgCanvasTest, StandsAlone)
{
    const std::string hostile = "<b>&\"'\x01\xff]]>";
    Curve curve;
    Density density;
    for (int i = 0; i < 100; ++i) {
        curve.add(i, i % 7);
        density.add(i);
    }
    curve.breakAt(40);
    const TimeScale times(0, false, {0, 100});
    SvgCanvas canvas({.width = 400, .height = 300, .title = hostile, .description = hostile}, true);
    drawPlot(
        canvas, {0, 0, 400, 100},
        {.title = hostile, .times = &times, .values = {0, 7}, .curves = {{&curve, {}, hostile}}});
    drawLanes(
        canvas, {0, 100, 400, 100},
        {hostile,
         &times,
         {{.label = hostile, .messages = &density, .gaps = {{3, 9}}, .losses = {{5, hostile}}}}});
    drawBands(canvas, {0, 200, 400, 100},
              {hostile, &times, {{hostile, {{.time = {0, 50}, .text = hostile}}, {20}}}});
    QXmlStreamReader reader(QString::fromStdString(canvas.take()));
    int texts = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        texts += reader.isStartElement() && reader.name() == QLatin1String("text") ? 1 : 0;
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_GT(texts, 20);
}

TEST(AxisTest, Ticks)
{
    struct {
        TimeScale times;
        std::size_t most;
        const char* labels;
    } const cases[] = {
        {{1800, false, {0, 175.8}}, 4, "30:00 31:00 32:00"},
        {{3590, false, {0, 20}}, 4, "0:59:50 0:59:55 1:00:00 1:00:05 1:00:10"},
        {{600, false, {0, 50'000}}, 8, "2:00 4:00 6:00 8:00 10:00 12:00 14:00"},
        {{600, false, {0, 400'000}}, 5, "day 1 day 2 day 3 day 4"},
        {{1'425'160'800, true, {0, 40'000}}, 3, "2015-03-01 4:00 8:00"},
    };
    for (const auto& [times, most, labels] : cases) {
        std::string text;
        for (const Tick& tick : times.ticks(most)) {
            text += (text.empty() ? "" : " ") + tick.label;
        }
        EXPECT_EQ(text, labels);
    }
    EXPECT_EQ(rangeText({-8.24, 7.5}, "m"), "-8.24 to 7.50 m");
    EXPECT_EQ(rangeText({0.002, 0.002}, "m/s"), "always 0.002 m/s");
}
