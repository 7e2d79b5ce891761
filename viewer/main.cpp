#include "viewer/window/MainWindow.h"
#include "viewer/window/Theme.h"

#include "base/Interrupt.h"
#include "base/LastWords.h"
#include "plugin/Plugin.h"
#include "sources/Passwords.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <string_view>

namespace {

constexpr int lookEvery = 200;    // milliseconds

#ifdef Q_OS_LINUX
constexpr bool asksForDisplay = true;
#else
constexpr bool asksForDisplay = false;
#endif

struct Arguments {
    QCommandLineOption form{{QStringLiteral("f"), QStringLiteral("form")},
                            QStringLiteral("Form of the inputs, as rtcm2 --form has it."),
                            QStringLiteral("FORM"),
                            QStringLiteral("auto")};
    QCommandLineOption follow{QStringLiteral("follow"),
                              QStringLiteral("Wait at the ends of files for what is written.")};
    QCommandLineOption mode{QStringLiteral("mode"),
                            QStringLiteral("Mode byte of the receiver, for --form words."),
                            QStringLiteral("NUMBER"), QStringLiteral("0")};
    QCommandLineOption where{{QStringLiteral("w"), QStringLiteral("where")},
                             QStringLiteral("Filter to begin with."),
                             QStringLiteral("EXPRESSION")};
};

void declare(QCommandLineParser& parser, const Arguments& arguments)
{
    parser.setApplicationDescription(
        QStringLiteral("Shows what is in messages of differential GNSS reference stations."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({arguments.form, arguments.follow, arguments.mode, arguments.where});
    parser.addPositionalArgument(
        QStringLiteral("INPUT"),
        QStringLiteral("Files, - for standard input, tcp://HOST:PORT, ntrip://HOST/MOUNTPOINT, "
                       "udp://:PORT or serial:DEVICE."),
        QStringLiteral("[INPUT...]"));
}

// False where the arguments are wrong.
bool openAll(MainWindow& window, const QCommandLineParser& parser, const Arguments& arguments)
{
    const auto form = inputFormOf(parser.value(arguments.form).toStdString());
    bool isNumber = false;
    const unsigned mode = parser.value(arguments.mode).toUInt(&isNumber);
    if (!form || !isNumber || mode > UINT8_MAX) {
        std::fputs("rtcm2-view: --form takes a form of input, --mode a number up to 255\n", stderr);
        return false;
    }
    for (const QString& name : parser.positionalArguments()) {
        DocumentView* const view = window.open({.name = name.toStdString(),
                                                .form = *form,
                                                .follows = parser.isSet(arguments.follow),
                                                .mode = static_cast<unsigned char>(mode)});
        if (view != nullptr) {
            view->filter().setText(parser.value(arguments.where));
        }
    }
    return true;
}

bool anyOf(int argc, char** argv, std::initializer_list<std::string_view> names)
{
    return std::any_of(argv + 1, argv + argc, [&](const char* given) {
        return std::find(names.begin(), names.end(), given) != names.end();
    });
}

// Help and version are told without a window, too, as on a machine without a display.
void answerWithoutWindow(int argc, char** argv)
{
    if (anyOf(argc, argv, {"-h", "--help", "-v", "--version"})) {
        const QCoreApplication application(argc, argv);
        const Arguments arguments;
        QCommandLineParser parser;
        declare(parser, arguments);
        parser.process(application);
    }
}

// Where there is none, Qt would end the process with a signal.
bool hasDisplay(int argc, char** argv)
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ||
           anyOf(argc, argv, {"-platform", "--platform"});
}

}    // namespace

int main(int argc, char** argv)
{
    takePasswords(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("rtcm2-view"));
    QCoreApplication::setApplicationVersion(QStringLiteral(RTCM2_VERSION));
    answerWithoutWindow(argc, argv);
    if (asksForDisplay && !hasDisplay(argc, argv)) {
        std::fputs("rtcm2-view: no display to open a window on: neither DISPLAY nor "
                   "WAYLAND_DISPLAY is set\n",
                   stderr);
        return 1;
    }
    lastWords::install();
    interrupt::install();
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());    // numbers look the same everywhere
    QApplication::setOrganizationName(QStringLiteral("rtcm2"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/rtcm2-view.png")));
    QApplication::setDesktopFileName(QStringLiteral("rtcm2-view"));
    const Arguments arguments;
    QCommandLineParser parser;
    declare(parser, arguments);
    parser.process(application);
    applyChosenTheme();

    const FormatModel format(plugin::format());
    MainWindow window(format);
    if (!openAll(window, parser, arguments)) {
        return 2;
    }
    QTimer signalTimer;
    QObject::connect(&signalTimer, &QTimer::timeout, &window, [] {
        if (interrupt::requested()) {
            QApplication::quit();
        }
    });
    signalTimer.start(lookEvery);
    window.show();
    return QApplication::exec();
}
