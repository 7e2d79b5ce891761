#include "viewer/panes/PaneColours.h"

#include "viewer/colours/Ground.h"
#include "viewer/panes/FieldCells.h"

#include <QGuiApplication>

namespace {

constexpr double quarter = 0.25;
constexpr double third = 0.35;

}    // namespace

QColor PaneColours::mixed(const QColor& first, const QColor& second, double share)
{
    const auto mix = [share](int a, int b) { return qRound(a + (b - a) * share); };
    return {mix(first.red(), second.red()), mix(first.green(), second.green()),
            mix(first.blue(), second.blue())};
}

QVariant PaneColours::textOf(const FieldSpot& spot)
{
    const QPalette palette = QGuiApplication::palette();
    const QColor text = palette.color(QPalette::Text);
    if (!concernsMessage(spot)) {
        return mixed(text, palette.color(QPalette::Base), 0.5);
    }
    const int alarm = alarmOf(spot);
    if (alarm == 0) {
        return {};
    }
    const QColor hue =
        alarm == RTCM2_ALARM_FAILURE ? QColor(0xE0, 0x20, 0x20) : QColor(0xC0, 0x78, 0);
    return isDark(palette) ? hue.lighter(140) : hue.darker(115);
}

PaneColours::Bits::Bits(const QPalette& palette)
    : selected(palette.color(QPalette::Highlight)),
      selectedText(palette.color(QPalette::HighlightedText)), text(palette.color(QPalette::Text))
{
    const QColor base = palette.color(QPalette::Base);
    field = mixed(base, text, 0.06);
    otherField = mixed(base, text, isDark(palette) ? 0.22 : 0.16);
    noField = base;
    parity = mixed(base, QColor(0x80, 0x50, 0xE0), quarter);
    inverted = mixed(field, QColor(0xF0, 0xA0, 0x00), quarter);
    otherInverted = mixed(otherField, QColor(0xF0, 0xA0, 0x00), third);
    bad = mixed(base, QColor(0xF0, 0x20, 0x20), third + quarter);
    faintText = mixed(text, base, 0.4);
}
