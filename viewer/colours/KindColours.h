// Colours that tell kinds of messages apart, on light and dark ground.
#pragma once

#include <QColor>
#include <QPalette>

// Behind the name of a kind of this number; the palette's text is legible on it.
QColor kindColour(std::size_t kind, const QPalette& palette);
// Of the text of what is wrong.
QColor troubleColour(const QPalette& palette);
