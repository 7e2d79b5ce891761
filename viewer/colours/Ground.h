// What colours stand on.
#pragma once

#include <QPalette>

inline bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}
