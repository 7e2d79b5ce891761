// Colours of the panes, mixed from those of the palette, so that they suit light and dark ones.
#pragma once

#include "viewer/panes/FieldPlace.h"

#include <QColor>
#include <QPalette>
#include <QVariant>

namespace PaneColours {

// The first colour with a share of the second one, 0 to 1.
QColor mixed(const QColor& first, const QColor& second, double share);

// Of a field's texts: faint where it means nothing in this message, a warning where its value is
// one, else nothing.
QVariant textOf(const FieldSpot& spot);

// Behind bits; texts on all of them are those of the palette.
struct Bits {
    explicit Bits(const QPalette& palette);

    QColor field;    // bits of fields in turn, so that one can be told from the next
    QColor otherField;
    QColor noField;    // fill, or what is not decoded
    QColor parity;
    QColor inverted;
    QColor otherInverted;
    QColor bad;    // parity that does not agree
    QColor selected;
    QColor selectedText;
    QColor text;
    QColor faintText;
};

}    // namespace PaneColours
