#include "FloatRepresentation.h"

#include <QLocale>

QString FloatRepresentation::getString(double value, char format, int precision, bool localized)
{
    return localized ? QLocale().toString(value, format, precision)
                     : QString::number(value, format, precision);
}
