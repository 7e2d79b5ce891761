// Text form of floating-point values.
#pragma once

#include "HostExport.h"

#include <QString>

class HOST_FRAMEWORK_EXPORT FloatRepresentation {
public:
    // The value in the given printf-style format ('e', 'f' or 'g') and precision: in the default
    // locale when localized, else with a point and no grouping.
    static QString getString(double value, char format, int precision, bool localized);
};
