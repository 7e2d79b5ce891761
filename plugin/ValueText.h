// Texts of single values, shared by raw lines and interpreted strings.
#pragma once

#include <QChar>
#include <QString>

namespace ValueText {

// Lower-case hexadecimal, at least two digits.
inline QString hex(unsigned value)
{
    return QString::number(value, 16).rightJustified(2, QLatin1Char('0'));
}

// One 8-bit character.
inline QString character(char value)
{
    return QString(QChar(static_cast<uchar>(value)));
}

// Up to the first NUL, at most `count` characters.
inline QString text(const char* characters, unsigned count)
{
    return QString::fromLatin1(characters, static_cast<int>(qstrnlen(characters, count)));
}

}    // namespace ValueText
