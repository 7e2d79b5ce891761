#include "viewer/window/MainWindow.h"

#include <QApplication>
#include <QLocale>

int main(int argc, char** argv)
{
    QLocale::setDefault(QLocale::c());    // numbers look the same everywhere
    QApplication application(argc, argv);
    MainWindow window;
    window.show();
    return QApplication::exec();
}
