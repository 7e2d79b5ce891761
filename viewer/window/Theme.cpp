#include "viewer/window/Theme.h"

#include <QApplication>
#include <QPalette>
#include <QSettings>
#include <QStyle>
#include <QStyleFactory>

#include <array>

namespace {

constexpr auto themeKey = "theme";
constexpr std::array<const char*, 3> themeNames = {"Theme of the &Desktop", "&Light Theme",
                                                   "&Dark Theme"};

QPalette paletteOf(QRgb ground, QRgb raised, QRgb text, QRgb highlight, QRgb link)
{
    const QColor button{raised};
    const QColor writing{text};
    QPalette palette{writing, button,    button.lighter(), button.darker(), button.darker(120),
                     writing, Qt::white, QColor{ground},   button};
    palette.setColor(QPalette::AlternateBase, raised);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, link);
    palette.setColor(QPalette::ToolTipBase, raised);
    palette.setColor(QPalette::ToolTipText, text);
    QColor faint(text);
    faint.setAlpha(128);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role :
         {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faint);
    }
    return palette;
}

void apply(Theme theme)
{
    // What the desktop had before anything was chosen.
    static const QString style = QApplication::style()->objectName();
    static const QPalette palette = QApplication::palette();
    if (theme == Theme::system) {
        QApplication::setStyle(style);
        QApplication::setPalette(palette);
    } else {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::setPalette(
            theme == Theme::dark
                ? paletteOf(0xff1b1d21, 0xff2a2d33, 0xffe6e6e6, 0xff2f65ca, 0xff7ab0ff)
                : paletteOf(0xffffffff, 0xfff0f0f0, 0xff1a1a1a, 0xff2f65ca, 0xff1a5fb4));
    }
}

}    // namespace

QString themeName(Theme theme)
{
    return QString::fromLatin1(themeNames[static_cast<std::size_t>(theme)]);
}

Theme chosenTheme()
{
    const int number = QSettings().value(QLatin1String(themeKey)).toInt();
    return number >= 0 && number <= static_cast<int>(Theme::dark) ? static_cast<Theme>(number)
                                                                  : Theme::system;
}

void chooseTheme(Theme theme)
{
    QSettings().setValue(QLatin1String(themeKey), static_cast<int>(theme));
    apply(theme);
}

void applyChosenTheme()
{
    if (chosenTheme() != Theme::system) {
        apply(Theme::system);    // to know how the desktop is
        apply(chosenTheme());
    }
}
