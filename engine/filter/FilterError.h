// A filter that makes no sense.
#pragma once

#include <string>

// A filter that cannot be understood; the text is for people and points at the place.
struct FilterError {
    std::string text;
};
