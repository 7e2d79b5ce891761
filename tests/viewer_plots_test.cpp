// Lanes and plots show what is in the messages, and lead to the message that is meant.
#include "plugin/Plugin.h"
#include "viewer/plots/LanesPane.h"
#include "viewer/plots/PlotPane.h"

#include "pictures/Colours.h"
#include "pictures/Plot.h"

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

namespace {

const std::string samples = RTCM2_TEST_SAMPLES;

const FormatModel& format()
{
    static const FormatModel model(plugin::format());
    return model;
}

// A document with its pictures, as a window has them.
struct Shown {
    explicit Shown(const std::string& file)
        : document(format(), {.name = file}), timeline(document), lanes(timeline), plot(timeline)
    {
        for (QWidget* pane : {static_cast<QWidget*>(&lanes), static_cast<QWidget*>(&plot)}) {
            pane->resize(1200, 500);
            pane->show();
        }
        QObject::connect(&lanes, &LanesPane::entryChosen,
                         [this](quint64 place) { chosen.push_back(place); });
        QObject::connect(&plot, &PlotPane::entryChosen,
                         [this](quint64 place, const FieldPlace& field) {
                             chosen.push_back(place);
                             chosenField = field;
                         });
        document.start();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !document.isReading(); }));
        EXPECT_TRUE(wait());
    }

    // What was collected has come, and is painted.
    bool wait()
    {
        const bool isDone = QTest::qWaitFor(
            [this] { return !plot.isBusy() && !lanes.isBusy() && !plot.plot().lines().empty(); });
        QTest::qWait(50);
        return isDone;
    }
    std::optional<double> value(const QString& name)
    {
        for (const PlotView::Line& line : plot.plot().lines()) {
            if (line.name == name.toStdString()) {
                const auto point = plot.plot().valueAtCursor(line);
                return point ? std::optional(point->y) : std::nullopt;
            }
        }
        return std::nullopt;
    }

    Document document;
    Timeline timeline;
    LanesPane lanes;
    PlotPane plot;
    std::vector<std::size_t> chosen;
    FieldPlace chosenField;
};

// Number of the message, byte, satellite and correction of all of a type, as the program has them.
std::vector<QStringList> corrections(const std::string& file, const char* type)
{
    QProcess process;
    process.start(QStringLiteral(RTCM2_TEST_PROGRAM),
                  {"export", "--format", "csv", "--type", type, "--rows", "Corrections", "--fields",
                   "Corrections.Satellite,Corrections.PRC_m", QString::fromStdString(file)});
    process.waitForFinished();
    std::vector<QStringList> rows;
    for (const QString& row :
         QString::fromUtf8(process.readAllStandardOutput()).split('\n').mid(1)) {
        if (!row.isEmpty()) {
            rows.push_back(row.split(','));
        }
    }
    return rows;
}

QStringList linesOf(const QString& file)
{
    QFile opened(file);
    EXPECT_TRUE(opened.open(QIODevice::ReadOnly));
    return QString::fromUtf8(opened.readAll()).split('\n', Qt::SkipEmptyParts);
}

}    // namespace

TEST(Lanes, EveryMessageIsChosenByAClickOnItsTick)
{
    Shown shown(samples + "/damaged.rtcm2");
    auto* const view = shown.lanes.findChild<LanesView*>();
    std::set<std::size_t> wanted;
    for (std::size_t place = 0; place < shown.document.index().size(); ++place) {
        wanted.insert(place);
    }
    for (int y = 30; y < view->height(); y += 22) {
        for (int x = 0; x < view->width(); x += 2) {
            QTest::mouseClick(view, Qt::LeftButton, {}, {x, y});
        }
    }
    const std::set<std::size_t> reached(shown.chosen.begin(), shown.chosen.end());
    // What came damaged at the same time as other damage shares its tick.
    std::set<std::size_t> missed;
    std::set_difference(wanted.begin(), wanted.end(), reached.begin(), reached.end(),
                        std::inserter(missed, missed.end()));
    for (const std::size_t place : missed) {
        EXPECT_FALSE(laneOf(shown.document.index()[place])) << "message " << place + 1;
    }
    EXPECT_LT(missed.size(), 3U);
}

TEST(Lanes, WheelAndKeysZoomAndMove)
{
    Shown shown(samples + "/demo.rtcm2");
    auto* const view = shown.lanes.findChild<LanesView*>();
    TimeWindow& window = shown.timeline.window();
    const Range whole = window.shown();
    const QPointF middle(700, 60);
    QWheelEvent turn(middle, view->mapToGlobal(middle), {}, {0, 240}, {}, {}, Qt::NoScrollPhase,
                     false);
    QApplication::sendEvent(view, &turn);
    EXPECT_NEAR(window.shown().length(), whole.length() * 0.64, 1e-6);
    QTest::keyClick(view, Qt::Key_Home);
    EXPECT_EQ(window.shown().low, whole.low);
    QTest::keyClick(view, Qt::Key_0);
    EXPECT_EQ(window.shown().length(), whole.length());
    QTest::keyClick(view, Qt::Key_Right, Qt::ControlModifier);
    ASSERT_EQ(shown.chosen.size(), 1U);
    EXPECT_EQ(shown.document.index()[shown.chosen[0]].type, 1);
}

TEST(Plots, ValuesAtTheCursorAreThoseOfTheMessage)
{
    const std::string file = samples + "/demo.rtcm2";
    Shown shown(file);
    int compared = 0;
    for (const char* type : {"1", "31"}) {
        for (const QStringList& row : corrections(file, type)) {
            const std::size_t place = row[0].toULongLong() - 1;
            shown.plot.plot().setCursor(shown.timeline.times().timeAt(place));
            EXPECT_EQ(shown.value(row[2]), row[3].toDouble()) << row.join(',').toStdString();
            ++compared;
        }
    }
    EXPECT_EQ(compared, 45 * 7 + 45 * 4);
}

TEST(Plots, ValuesAreSavedAsTheProgramExportsThem)
{
    const std::string file = samples + "/demo.rtcm2";
    Shown shown(file);
    QTemporaryDir folder;
    const QString name = folder.filePath("values.csv");
    shown.plot.saveAs(name);
    EXPECT_TRUE(shown.wait());
    QStringList saved;
    for (const QString& line : linesOf(name).mid(1)) {
        const QStringList cells = line.split(',');
        saved.append(QStringList{cells[0], cells[1], cells[4], cells[5]}.join(','));
    }
    QStringList expected;
    for (const char* type : {"1", "31"}) {
        for (const QStringList& row : corrections(file, type)) {
            expected.append(row.join(','));
        }
    }
    std::sort(saved.begin(), saved.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(saved, expected);
}

TEST(Plots, TheGreatestStepIsFoundWithItsMessage)
{
    const std::string file = samples + "/demo.rtcm2";
    Shown shown(file);
    shown.plot.jump();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !shown.chosen.empty(); }));
    // By satellite: where the line was, and how it went on.
    struct Before {
        double time, value, slope;
    };
    std::map<QString, Before> lines;
    double greatest = 0;
    double found = 0;
    int element = -1;
    for (const char* type : {"1", "31"}) {
        for (const QStringList& row : corrections(file, type)) {
            const std::size_t place = row[0].toULongLong() - 1;
            const double time = *shown.timeline.times().timeAt(place);
            const double value = row[3].toDouble();
            const bool isChosen = place == shown.chosen[0];
            element += isChosen ? 1 : 0;
            double slope = 0;
            if (const auto line = lines.find(row[2]); line != lines.end()) {
                const Before& before = line->second;
                const double rise = value - before.value;
                const double seconds = time - before.time;
                const double step =
                    std::min(std::abs(rise), std::abs(rise - before.slope * seconds));
                slope = rise / seconds;
                greatest = std::max(greatest, step);
                found = isChosen && element == shown.chosenField.element ? step : found;
            }
            lines[row[2]] = {time, value, slope};
        }
    }
    EXPECT_EQ(found, greatest);
}

TEST(Plots, OneValueAmongAMillionIsSeen)
{
    Curve curve;
    for (int i = 0; i < 1'000'000; ++i) {
        curve.add(i, i == 654'321 ? 1000 : i % 2);
    }
    const TimeScale times(0, false, {0, 1e6});
    const Plot plot{.times = &times, .values = {0, 1000}, .curves = {{.curve = &curve}}};
    QImage image(800, 300, QImage::Format_RGB32);
    QPainter painter(&image);
    PainterCanvas canvas(painter, false);
    canvas.fill({0, 0, 800, 300});
    drawPlot(canvas, {0, 0, 800, 300}, plot);
    const Box frame = frameOf(canvas, {0, 0, 800, 300}, plot);
    painter.end();
    const int x = static_cast<int>(frame.left + frame.width * 0.654321);
    const int y = static_cast<int>(frame.top + frame.height / 2);
    int dark = 0;
    for (int near = x - 2; near <= x + 2; ++near) {
        dark += qGray(image.pixel(near, y)) < 128 ? 1 : 0;
    }
    EXPECT_GT(dark, 0);
}

TEST(Plots, AFileThatIsGoneIsTold)
{
    QTemporaryDir folder;
    const std::string file = folder.filePath("gone.rtcm2").toStdString();
    std::filesystem::copy_file(samples + "/demo.rtcm2", file);
    Shown shown(file);
    std::filesystem::remove(file);
    shown.timeline.window().show({1850, 1900});
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto labels = shown.plot.findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
            return label->text().contains("No such file");
        });
    }));
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
