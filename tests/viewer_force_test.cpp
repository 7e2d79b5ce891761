// Random keys, clicks and filters on the viewer while its files grow, shrink and vanish. It has to
// go on. RTCM2_FORCE_SECONDS says for how long, each time in another way; RTCM2_FORCE_SEED begins
// as another time.
#include "plugin/Plugin.h"
#include "viewer/window/MainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

constexpr std::array samples = {"demo.rtcm2",       "damaged.rtcm2",   "all-types.hex",
                                "all-types.packed", "all-types.words", "broadcasts.nmea",
                                "wide-area.rtcm2"};
constexpr std::array keys = {
    Qt::Key_Up,  Qt::Key_Down,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,
    Qt::Key_End, Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Tab,      Qt::Key_Return,
    Qt::Key_F1,  Qt::Key_F3,     Qt::Key_F5,     Qt::Key_F6,       Qt::Key_F8,
    Qt::Key_F10, Qt::Key_Escape, Qt::Key_Escape, Qt::Key_Space,    Qt::Key_Slash,
    Qt::Key_A,   Qt::Key_C,      Qt::Key_E,      Qt::Key_F,        Qt::Key_G,
    Qt::Key_K,   Qt::Key_L,      Qt::Key_O,      Qt::Key_P,        Qt::Key_T,
    Qt::Key_W,   Qt::Key_Period, Qt::Key_1,      Qt::Key_Delete,   Qt::Key_Backspace};
constexpr std::array texts = {"Ns > 3",
                              "Corrections[PRC_m > 5]",
                              "x ==",
                              "",
                              "not present(Ns)",
                              "Reference",
                              "17",
                              "@100",
                              "30:15",
                              "PRC_m < -4.5 or MMSI == 2000417",
                              "(((",
                              "\xC3\xA4 == '"};
constexpr std::array modifiers = {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier,
                                  Qt::ControlModifier, Qt::AltModifier};

class Force {
public:
    // Ends when both are over.
    Force(unsigned seed, int leastSteps, qint64 milliseconds)
        : random(seed), wanted(leastSteps), limit(milliseconds)
    {
        clock.start();
        step();
        QApplication::exec();
    }

private:
    std::size_t below(std::size_t count) { return random() % count; }
    template <class Row>
    auto any(const Row& row)
    {
        return row[below(row.size())];
    }

    // The next step comes even where this one opens a dialog.
    void step()
    {
        if (steps >= wanted && clock.elapsed() > limit) {
            return closeAll();
        }
        QTimer::singleShot(static_cast<int>(below(4)), &context, [this] { step(); });
        ++steps;
        if (window == nullptr || !window->isVisible()) {
            window = std::make_unique<MainWindow>(format);
            window->show();
        }
        if (auto* const files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            return files->reject();    // they could do something to other files
        }
        const std::size_t choice = below(100);
        choice < 45 ? press() : choice < 75 ? click() : choice < 85 ? write() : changeFiles();
    }

    void closeAll()
    {
        if (QWidget* const dialog = QApplication::activeModalWidget()) {
            dialog->close();
            QTimer::singleShot(1, &context, [this] { closeAll(); });
        } else if (QWidget* const popup = QApplication::activePopupWidget()) {
            popup->close();
            QTimer::singleShot(1, &context, [this] { closeAll(); });
        } else {
            window.reset();
            QApplication::quit();
        }
    }

    QWidget* target()
    {
        QWidget* const popup = QApplication::activePopupWidget();
        QWidget* const dialog = QApplication::activeModalWidget();
        return popup != nullptr ? popup : dialog != nullptr ? dialog : window.get();
    }

    void press()
    {
        QWidget* const top = target();
        QWidget* const focus = top->focusWidget() != nullptr ? top->focusWidget() : top;
        QTest::keyClick(focus, any(keys), any(modifiers));
    }

    void click()
    {
        QWidget* const top = target();
        const QPoint place(static_cast<int>(below(static_cast<std::size_t>(top->width() + 1))),
                           static_cast<int>(below(static_cast<std::size_t>(top->height() + 1))));
        QWidget* const child = top->childAt(place) != nullptr ? top->childAt(place) : top;
        const QPoint inside = child->mapFrom(top, place);
        switch (below(4)) {
        case 0:
            return QTest::mouseDClick(child, Qt::LeftButton, any(modifiers), inside);
        case 1: {
            QTest::mousePress(child, Qt::LeftButton, {}, inside);
            QTest::mouseMove(child, inside + QPoint(40, 60));
            return QTest::mouseRelease(child, Qt::LeftButton, {}, inside + QPoint(40, 60));
        }
        case 2: {
            QWheelEvent wheel(inside, child->mapToGlobal(inside), {},
                              {0, below(2) == 0 ? 600 : -600}, {}, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(child, &wheel);
            return;
        }
        default:
            return QTest::mouseClick(child, Qt::LeftButton, any(modifiers), inside);
        }
    }

    void write()
    {
        if (auto* const line = qobject_cast<QLineEdit*>(target()->focusWidget())) {
            line->setText(QString::fromUtf8(any(texts)));
        } else if (DocumentView* const view = window->current()) {
            view->filter().setText(QString::fromUtf8(any(texts)));
        }
    }

    void changeFiles()
    {
        const std::string path = folder.filePath(QString::number(below(4))).toStdString();
        std::ifstream file(std::string(RTCM2_TEST_SAMPLES "/") + any(samples), std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(file), {}};
        for (std::size_t i = below(3); i > 0; --i) {
            bytes[below(bytes.size())] ^= static_cast<char>(1U << below(8));
        }
        switch (below(6)) {
        case 0:
            std::filesystem::remove(path);
            break;
        case 1:
            std::ofstream(path, std::ios::binary) << bytes.substr(0, below(bytes.size()));
            break;
        case 2:
        case 3:
            std::ofstream(path, std::ios::binary | std::ios::app) << bytes;
            break;
        default:
            if (window->findChildren<DocumentView*>().size() < 5 &&
                QApplication::activeModalWidget() == nullptr) {
                window->open({.name = path, .follows = below(2) == 0});
            }
        }
    }

    std::mt19937 random;
    int steps = 0;
    int wanted;
    qint64 limit;
    QElapsedTimer clock;
    QTemporaryDir folder;
    FormatModel format{plugin::format()};
    std::unique_ptr<MainWindow> window;
    QObject context;
};

}    // namespace

TEST(ViewerForce, GoesOn)
{
    const int seconds = qEnvironmentVariableIntValue("RTCM2_FORCE_SECONDS");
    const int given = qEnvironmentVariableIntValue("RTCM2_FORCE_SEED");
    const unsigned other = seconds > 0 ? std::random_device{}() : 1;
    const unsigned seed = given != 0 ? static_cast<unsigned>(given) : other;
    std::printf("RTCM2_FORCE_SEED=%u\n", seed);
    std::fflush(stdout);
    Force(seed, 300, qint64{1000} * seconds);
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
