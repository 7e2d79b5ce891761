#include "pictures/Colours.h"

#include <array>
#include <cstdio>

// The rules of the stylesheet, without the colours.
std::string_view pictureRules();

namespace {

struct Colour {
    const char* name;    // in the stylesheet
    Rgb light;
    Rgb dark;
};

constexpr Colour paper{"paper", 0xffffff, 0x14181d};

// In the order of the roles; the series have colours of their own.
constexpr std::array roleColours{
    Colour{"text", 0x1b1f24, 0xe6e9ed}, Colour{"faint", 0x57606a, 0xa4adb8},
    Colour{"grid", 0xdfe3e8, 0x2b323a}, Colour{"frame", 0xa3adb8, 0x5b6672},
    Colour{"good", 0x1a7f37, 0x4ac26b}, Colour{"warn", 0x8f5f00, 0xe0b03a},
    Colour{"bad", 0xc4122f, 0xff8078},
};
static_assert(roleColours.size() == static_cast<std::size_t>(Role::series));

constexpr std::array seriesColours{
    Colour{"c0", 0x0068a8, 0x5db4f0}, Colour{"c1", 0xc25100, 0xff9a52},
    Colour{"c2", 0x007a5a, 0x3fcf9f}, Colour{"c3", 0xa8468a, 0xe592c8},
    Colour{"c4", 0x8a6500, 0xe3c04d}, Colour{"c5", 0x3a7ca5, 0x8fc6e8},
    Colour{"c6", 0x6b4fb3, 0xb7a2f2}, Colour{"c7", 0x5f6670, 0xb4bcc6},
};
static_assert(seriesColours.size() == Ink::seriesColours);

const Colour& entryOf(const Ink& ink)
{
    return ink.role == Role::series ? seriesColours[ink.number % Ink::seriesColours]
                                    : roleColours[static_cast<std::size_t>(ink.role)];
}

template <class Function>
void eachColour(Function function)
{
    function(paper);
    for (const Colour& colour : roleColours) {
        function(colour);
    }
    for (const Colour& colour : seriesColours) {
        function(colour);
    }
}

// The variables that the rules use.
std::string variables(bool isDark)
{
    std::string text;
    eachColour([&](const Colour& colour) {
        char value[16];
        std::snprintf(value, sizeof value, "#%06x", isDark ? colour.dark : colour.light);
        text += std::string("  --") + colour.name + ": " + value + ";\n";
    });
    return text;
}

std::string wholeStyle()
{
    std::string style = ":root {\n" + variables(false) + "}\n" +
                        "@media screen and (prefers-color-scheme: dark) {\n"
                        ":root:not([data-theme=\"light\"]) {\n" +
                        variables(true) + "}\n}\n@media screen {\n:root[data-theme=\"dark\"] {\n" +
                        variables(true) + "}\n}\n" + std::string(pictureRules());
    eachColour([&](const Colour& colour) {
        const std::string name = colour.name;
        style += name == paper.name ? "" : "." + name + " { --ink: var(--" + name + "); }\n";
    });
    return style;
}

}    // namespace

Rgb colourOf(const Ink& ink, bool isDark)
{
    return isDark ? entryOf(ink).dark : entryOf(ink).light;
}

Rgb paperColour(bool isDark)
{
    return isDark ? paper.dark : paper.light;
}

std::string styleNameOf(const Ink& ink)
{
    return entryOf(ink).name;
}

std::string_view pictureStyle()
{
    static const std::string style = wholeStyle();
    return style;
}
