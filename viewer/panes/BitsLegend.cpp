#include "viewer/panes/BitsLegend.h"

#include "viewer/panes/PaneColours.h"

#include <QPainter>
#include <QSizePolicy>

#include <array>

namespace {

struct LegendItem {
    const char* text;
    QColor PaneColours::Bits::*colour;
    QColor PaneColours::Bits::*secondColour;
};

constexpr std::array<LegendItem, 6> legend{{
    {QT_TRANSLATE_NOOP("BitsLegend", "data, field by field"), &PaneColours::Bits::field,
     &PaneColours::Bits::otherField},
    {QT_TRANSLATE_NOOP("BitsLegend", "no field"), &PaneColours::Bits::noField,
     &PaneColours::Bits::noField},
    {QT_TRANSLATE_NOOP("BitsLegend", "parity"), &PaneColours::Bits::parity,
     &PaneColours::Bits::parity},
    {QT_TRANSLATE_NOOP("BitsLegend", "sent inverted"), &PaneColours::Bits::inverted,
     &PaneColours::Bits::otherInverted},
    {QT_TRANSLATE_NOOP("BitsLegend", "wrong parity"), &PaneColours::Bits::bad,
     &PaneColours::Bits::bad},
    {QT_TRANSLATE_NOOP("BitsLegend", "chosen"), &PaneColours::Bits::selected,
     &PaneColours::Bits::selected},
}};

constexpr int gap = 6;

}    // namespace

BitsLegend::BitsLegend(QWidget* parent) : QWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int BitsLegend::heightForWidth(int width) const
{
    return layOut(width, [](const LegendItem&, const QRect&) {});
}

template <class Draw>
int BitsLegend::layOut(int width, Draw draw) const
{
    const int line = fontMetrics().height() + gap;
    int left = gap;
    int top = 0;
    for (const LegendItem& item : legend) {
        const int needed = line + gap + fontMetrics().horizontalAdvance(tr(item.text)) + 2 * gap;
        if (left > gap && left + needed > width) {
            left = gap;
            top += line;
        }
        draw(item, QRect(left, top, needed, line));
        left += needed;
    }
    return top + line;
}

void BitsLegend::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const PaneColours::Bits colours(palette());
    layOut(width(), [&](const LegendItem& item, const QRect& place) {
        const int size = place.height() - gap;
        const QRect swatch(place.left(), place.top() + gap / 2, size, size);
        painter.fillRect(swatch, colours.*item.colour);
        painter.fillRect(swatch.adjusted(size / 2, 0, 0, 0), colours.*item.secondColour);
        painter.setPen(colours.faintText);
        painter.drawRect(swatch.adjusted(0, 0, -1, -1));
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(place.adjusted(size + gap, 0, 0, 0), Qt::AlignVCenter, tr(item.text));
    });
}

// Compiled here instead of on its own.
#include "moc_BitsLegend.cpp"
