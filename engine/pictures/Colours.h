// The colours of all roles: the one place where they are told, for pages and for windows.
#pragma once

#include "pictures/Canvas.h"

#include <cstdint>
#include <string>
#include <string_view>

// Red, green and blue, from the highest byte of 24 bits.
using Rgb = std::uint32_t;

Rgb colourOf(const Ink& ink, bool isDark);
// What pictures are drawn on.
Rgb paperColour(bool isDark);

// The name that the stylesheet has for a role, "warn" or "c3".
std::string styleNameOf(const Ink& ink);

// A stylesheet for the page that pictures stand in, or for a picture alone: on paper and on light
// and dark screens. The attribute data-theme of the root element, "light" or "dark", decides over
// what the screen prefers.
std::string_view pictureStyle();
