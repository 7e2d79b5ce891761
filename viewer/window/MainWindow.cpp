#include "viewer/window/MainWindow.h"

MainWindow::MainWindow()
{
    setWindowTitle(QStringLiteral("rtcm2-view"));
}

// Compiled here instead of on its own.
#include "moc_MainWindow.cpp"
